// What a file leaves on the disk: all of it, or what stood there before.
#include "support/scratch_folder.h"
#include "tolmar/file.h"
#include "tolmar/run_report.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace tolmar;
namespace fs = std::filesystem;

class PartFileTest : public testing::Test {
protected:
    void SetUp() override { runReport().clear(); }

    std::string put(const std::string& name, FileMode mode, const std::string& text) const {
        OutputFile file(folder.file(name), mode);
        file.write(text);
        file.close();
        return folder.get(name);
    }
    std::size_t fileCount() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()));
    }

    ScratchFolder folder;
};

TEST_F(PartFileTest, TheOldFileStandsUntilTheNewOneIsClosed) {
    folder.put("a.txt", "old");
    OutputFile file(folder.file("a.txt"), FileMode::Text);
    file.write(std::string(3'000'000, 'x'));
    EXPECT_EQ(folder.get("a.txt"), "old");
    EXPECT_TRUE(file.close());
    EXPECT_EQ(folder.get("a.txt").size(), 3'000'000U);
    EXPECT_EQ(fileCount(), 1U);
    EXPECT_EQ(runReport().outcome(), RunOutcome::Done);
}

TEST_F(PartFileTest, AnExceptionLeavesTheOldFileAndFailsTheRun) {
    folder.put("a.bin", "old");
    try {
        OutputFile file(folder.file("a.bin"), FileMode::Binary);
        file.write("half");
        throw std::runtime_error("no memory");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(folder.get("a.bin"), "old");
        EXPECT_EQ(folder.get("a.bin.incomplete"), "half");
    }
    EXPECT_TRUE(runReport().files().empty());
    ASSERT_EQ(runReport().failures().size(), 1U);
    EXPECT_EQ(runReport().failures()[0], "not finished; what there is of it is kept as a.bin.incomplete");
    EXPECT_EQ(runReport().outcome(), RunOutcome::Failed);
    EXPECT_EQ(runReport().reason(), folder.file("a.bin") + ": " + runReport().failures()[0]);
    runReport().ended(RunOutcome::Cancelled, "by the user");
    EXPECT_EQ(runReport().outcome(), RunOutcome::Cancelled) << "the end that the command tells of itself stands";
    EXPECT_EQ(runReport().reason(), "by the user");
    EXPECT_EQ(put("a.bin", FileMode::Binary, "whole"), "whole");
    EXPECT_EQ(fileCount(), 1U) << "the whole one takes the place of what was set aside";
}

TEST_F(PartFileTest, AFileThatFailsLeavesTheOldOne) {
    folder.put("a.bin", "old");
    OutputFile file(folder.file("a.bin"), FileMode::Binary);
    file.write("half");
    file.fail("the scene is torn");
    file.deleteWhenFailed();
    EXPECT_FALSE(file.close());
    EXPECT_EQ(folder.get("a.bin"), "old");
    EXPECT_EQ(fileCount(), 1U);
    EXPECT_EQ(runReport().outcome(), RunOutcome::Failed);
}

TEST_F(PartFileTest, AnAdditionIsWholeOrNotThere) {
    EXPECT_EQ(put("list.txt", FileMode::Text, "one\n"), "one\r\n");
    EXPECT_EQ(put("list.txt", FileMode::TextAppend, "two\n"), "one\r\ntwo\r\n");
    for (const char* name : {"list.txt", "new.txt"}) {
        OutputFile file(folder.file(name), FileMode::TextAppend);
        file.write(std::string(2'000'000, 'x'));
        EXPECT_GT(folder.get(name).size(), 1'000'000U) << "it is written where it stands";
    }
    EXPECT_EQ(folder.get("list.txt"), "one\r\ntwo\r\n");
    EXPECT_EQ(fileCount(), 1U) << "a file that only the addition made is gone again";
    EXPECT_EQ(runReport().failedFiles().size(), 2U);
}

TEST_F(PartFileTest, ThePartOfADeadRunIsWrittenOverAndThatOfALivingOneIsNot) {
    folder.put("a.txt.part", "of a run that was killed, and longer");
    EXPECT_EQ(put("a.txt", FileMode::Text, "new"), "new");
    EXPECT_EQ(fileCount(), 1U);
    const OutputFile first(folder.file("a.txt"), FileMode::Text);
    OutputFile second;
    EXPECT_FALSE(second.open(folder.file("a.txt"), FileMode::Text));
    ASSERT_EQ(runReport().failures().size(), 1U);
    EXPECT_EQ(runReport().failures()[0], "another run is writing it");
}

TEST_F(PartFileTest, LinksRightsAndLongNamesStay) {
    folder.put("store/real.txt", "old");
    ::chmod(folder.file("store/real.txt").c_str(), 0640);
    fs::create_symlink("store/real.txt", folder.path() / "link.txt");
    EXPECT_EQ(put("link.txt", FileMode::Text, "new"), "new");
    EXPECT_TRUE(fs::is_symlink(folder.path() / "link.txt"));
    EXPECT_EQ(folder.get("store/real.txt"), "new");
    struct stat status {};
    ASSERT_EQ(::stat(folder.file("store/real.txt").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
    const std::string longest(255, 'n');
    EXPECT_EQ(put(longest, FileMode::Binary, "long"), "long");
}

TEST_F(PartFileTest, APipeIsWrittenDirectly) {
    const std::string pipe = folder.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string got;
    std::thread reader([&] { readFile(pipe, got); });
    OutputFile file(pipe, FileMode::Binary);
    file.write("through");
    EXPECT_TRUE(file.close());
    reader.join();
    EXPECT_EQ(got, "through");
    EXPECT_EQ(fileCount(), 1U);
}

}  // namespace
