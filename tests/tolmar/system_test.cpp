#include "tolmar/system.h"

#include "support/scratch_folder.h"
#include "tolmar/run_report.h"

#include <gtest/gtest.h>

namespace {

using namespace tolmar;
namespace fs = std::filesystem;

constexpr const char* options = "; options\r\n"
                                "[control]\r\n"
                                "outWeld = 1 ; no comment here\r\n"
                                "quoted=\" two \"\r\n"
                                ";off=1\r\n"
                                "OutWeld=2\r\n"
                                "text\r\n"
                                "\r\n"
                                "[Other]\r\n"
                                "n=-12abc\r\n"
                                "big=99999999999999999999\r\n"
                                "word=x1\r\n"
                                "blank=\r\n"
                                "last=end";

class Profile : public testing::Test {
protected:
    void SetUp() override { path = folder.put("O.ini", options); }
    std::string text(const char* section, const char* key, int limit = 255) const {
        return getPrivateProfileString(section, key, "fallback", limit, path);
    }
    int number(const char* key) const { return getPrivateProfileInt("OTHER", key, 7, path); }
    ScratchFolder folder;
    std::string path;
};

TEST_F(Profile, ReadsAsTheSystemDoes) {
    EXPECT_EQ(text("Control", "OUTWELD"), "1 ; no comment here");
    EXPECT_EQ(text("Control", "quoted"), " two ");
    EXPECT_EQ(text("Control", "off"), "fallback");
    EXPECT_EQ(text("Control", "n"), "fallback");
    EXPECT_EQ(text("Other", "last", 2), "en");
    EXPECT_EQ(text("Other", "blank"), "");
    EXPECT_EQ(number("n"), -12);
    EXPECT_EQ(number("big"), 2147483647);
    EXPECT_EQ(number("word"), 0);
    EXPECT_EQ(number("blank"), 0);
    EXPECT_EQ(number("missing"), 7);
    EXPECT_EQ(getPrivateProfileInt("Control", "outWeld", 0, path), 1);
    EXPECT_EQ(getPrivateProfileInt("Control", "outWeld", 5, folder.file("none.ini")), 5);
}

TEST_F(Profile, WritingKeepsTheRest) {
    std::string expected = options;
    EXPECT_TRUE(writePrivateProfileString("Control", "OUTWELD", "0", path));
    expected.replace(expected.find("outWeld = 1 ; no comment here"), 29, "outWeld=0");
    EXPECT_EQ(folder.get("O.ini"), expected);
    EXPECT_TRUE(writePrivateProfileString("Control", "new", "x", path));
    expected.replace(expected.find("text\r\n"), 6, "text\r\nnew=x\r\n");
    EXPECT_TRUE(writePrivateProfileString("other", "more", "1", path));
    EXPECT_TRUE(writePrivateProfileString("Third", "key", "1", path));
    EXPECT_EQ(folder.get("O.ini"), expected + "\r\nmore=1\r\n[Third]\r\nkey=1\r\n");
    EXPECT_TRUE(writePrivateProfileString("Third", "key", nullptr, path));
    EXPECT_EQ(text("Third", "key"), "fallback");
}

// What is written is read back, and the rest reads as before, also in files that no program wrote.
TEST_F(Profile, WritingAgreesWithReadingInOddFiles) {
    const std::string odd[] = {"[Prefix]\nSite=S\n[",
                               "[Control]\noutWeld" + std::string(2, '\0') + "=2\n[Prefix]\nSite=S",
                               "; a" + std::string(1, '\0') + "b\n[Prefix]\nSite=S\n",
                               "[Prefix]\nSite=S\r[Control]\routWeld=0", "=\n[Control\nx=1\n[Prefix]\nSite=S\n"};
    for (const std::string& text : odd) {
        const std::string file = folder.put("odd.ini", text);
        const std::string site = getPrivateProfileString("Prefix", "Site", "none", 100, file);
        EXPECT_TRUE(writePrivateProfileString("Control", "outWeld", "1", file));
        EXPECT_EQ(getPrivateProfileInt("Control", "outWeld", 7, file), 1) << text;
        EXPECT_EQ(getPrivateProfileString("Prefix", "Site", "none", 100, file), site) << text;
        EXPECT_NE(site, "none") << text;
    }
}

TEST_F(Profile, EveryChangeIsSeenAtOnce) {
    for (int i = 0; i < 50; ++i) {
        folder.put("O.ini", "[Other]\nn=" + std::to_string(i % 10) + "\n");
        ASSERT_EQ(number("n"), i % 10);
    }
    const auto stamp = fs::last_write_time(path);
    for (int i = 0; i < 3; ++i) {
        folder.put("O.ini", "[Other]\nn=" + std::to_string(i) + "\n");
        fs::last_write_time(path, stamp);
        EXPECT_EQ(number("n"), i);
    }
    fs::last_write_time(path, stamp - std::chrono::hours(1));
    EXPECT_EQ(number("n"), 2);
    EXPECT_TRUE(writePrivateProfileString("Other", "n", "8", path));
    EXPECT_EQ(number("n"), 8);
    fs::remove(path);
    EXPECT_EQ(number("n"), 7);
}

TEST_F(Profile, WritingIsAllOrNothing) {
    runReport().clear();
    EXPECT_TRUE(writePrivateProfileString("New", "k", "v", folder.file("fresh.ini")));
    EXPECT_EQ(folder.get("fresh.ini"), "[New]\r\nk=v\r\n");
    EXPECT_FALSE(writePrivateProfileString("New", "k", "v", folder.file("没有/fresh.ini")));
    EXPECT_FALSE(writePrivateProfileString("New", "k", "a\nb=c", path));
    EXPECT_FALSE(writePrivateProfileString("New", "k", "v", folder.path().string()));
    ASSERT_EQ(runReport().failedFiles().size(), 2U) << "told, so that nobody takes the old value for the new one";
    EXPECT_NE(runReport().reason().find("没有/fresh.ini: cannot be written: No such file"), std::string::npos);
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(writePrivateProfileString("Other", "n", "3", path));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 2);
}

void makeScript(const ScratchFolder& folder, const std::string& name, const std::string& body) {
    fs::permissions(folder.put(name, "#!/bin/sh\n" + body), fs::perms::owner_all);
}

TEST(Processes, RunInTheWorkingFolderAndAreWaitedFor) {
    const ScratchFolder folder;
    makeScript(folder, "bin/Pack.sh", "sleep 0.1; pwd > where.txt\n");
    const fs::path before = fs::current_path();
    ASSERT_TRUE(setCurrentDirectory(folder.file("BIN")));
    EXPECT_TRUE(startProgram(folder.file("bin\\PACK.exe")));
    EXPECT_EQ(waitForStartedPrograms(), 0);
    fs::current_path(before);
    EXPECT_EQ(folder.get("bin/where.txt"), (fs::canonical(folder.path()) / "bin\n").string());
    EXPECT_FALSE(setCurrentDirectory(folder.file("none")));
}

TEST(Processes, FailuresAreReported) {
    const ScratchFolder folder;
    runReport().clear();
    makeScript(folder, "bad", "exit 3\n");
    makeScript(folder, "killed", "kill -9 $$\n");
    EXPECT_TRUE(startProgram(folder.file("bad.exe")));
    EXPECT_TRUE(startProgram(folder.file("killed")));
    EXPECT_FALSE(startProgram(folder.file("missing.exe")));
    EXPECT_EQ(waitForStartedPrograms(), 2);
    EXPECT_EQ(waitForStartedPrograms(), 0);
    ASSERT_EQ(runReport().passed().size(), 3U);
    EXPECT_EQ(runReport().passed()[1].why, "ended with status 3");
    EXPECT_EQ(runReport().passed()[2].why, "ended by signal 9");
}

}  // namespace
