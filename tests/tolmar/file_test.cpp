#include "tolmar/file.h"

#include "support/full_disk.h"
#include "support/memory_file.h"
#include "support/scratch_folder.h"
#include "tolmar/paths.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <gtest/gtest.h>

namespace {

using namespace tolmar;

class FileTest : public testing::Test {
protected:
    void SetUp() override { runReport().clear(); }
    void TearDown() override { setDryRun(false); }
    ScratchFolder folder;
};

TEST_F(FileTest, TextEndsLinesInCrLfAndAppendKeepsWhatWasThere) {
    OutputFile file(folder.file("a.txt"), FileMode::Text);
    file.write("one\n\ntwo");
    file.write("\n");
    EXPECT_EQ(file.size(), 12U);
    EXPECT_TRUE(file.close());
    OutputFile more(folder.file("a.txt"), FileMode::TextAppend);
    more.write("three\n");
    EXPECT_TRUE(more.close());
    EXPECT_EQ(folder.get("a.txt"), "one\r\n\r\ntwo\r\nthree\r\n");
    ASSERT_EQ(runReport().files().size(), 1U);
    EXPECT_EQ(runReport().files()[0].path, folder.file("a.txt"));
    EXPECT_EQ(runReport().files()[0].size, 19U);
}

TEST_F(FileTest, TextOfAnySizeEndsItsLines) {
    std::string given;
    std::string expected;
    OutputFile file(folder.file("long.txt"), FileMode::Text);
    const auto add = [&](std::size_t length, std::size_t lines) {
        const std::string text(length, 'x');
        given.clear();
        for (std::size_t i = 0; i < lines; ++i) {
            given += text + "\n";
            expected += text + "\r\n";
        }
        file.write(given);
    };
    add(0, 1'100'000);
    add(3'000'000, 1);
    for (std::size_t length = 0; length < 3000; ++length) {
        add(length, 1);
    }
    file.writeLines("one\r\ntwo");
    expected += "one\r\ntwo";
    add(1, 600'000);
    EXPECT_EQ(file.size(), expected.size());
    EXPECT_TRUE(file.close());
    EXPECT_TRUE(folder.get("long.txt") == expected);
}

TEST_F(FileTest, BinaryPatchesAndTruncatesOnBothSidesOfTheBuffer) {
    std::string expected;
    OutputFile file(folder.file("b.bin"), FileMode::Binary);
    for (int block = 0; block < 5; ++block) {
        const std::string bytes(700'000, static_cast<char>('a' + block));
        file.write(bytes);
        expected += bytes;
    }
    const std::string big(3'000'000, '\n');
    file.write(big);
    expected += big;
    file.write("tail");
    expected += "tail";
    for (const std::uint64_t offset :
         {std::uint64_t{0}, std::uint64_t{1'048'574}, std::uint64_t{expected.size() - 5}}) {
        file.writeAt(offset, "12345");
        expected.replace(offset, 5, "12345");
    }
    file.truncate(expected.size() - 1);
    expected.pop_back();
    file.write("Z");
    expected += 'Z';
    EXPECT_EQ(file.size(), expected.size());
    file.truncate(2'000'000);
    expected.resize(2'000'000);
    file.write("end");
    expected += "end";
    EXPECT_TRUE(file.close());
    EXPECT_TRUE(folder.get("b.bin") == expected);
}

TEST_F(FileTest, FailuresStickAndAreReportedOnce) {
    std::string bytes;
    OutputFile file(std::make_unique<MemorySink>(bytes, 10), FileMode::Binary, "memory");
    file.write(std::string(2'000'000, 'x'));
    EXPECT_TRUE(file.failed());
    file.write("y");
    EXPECT_FALSE(file.close());
    EXPECT_TRUE(file.close());
    ASSERT_EQ(runReport().failedFiles().size(), 1U);
    EXPECT_EQ(runReport().failedFiles()[0].path, "memory");
    EXPECT_EQ(runReport().outcome(), RunOutcome::Failed);
    EXPECT_TRUE(runReport().files().empty());
    OutputFile patched(folder.file("c.bin"), FileMode::Binary);
    patched.write("abc");
    patched.writeAt(2, "xy");  // beyond the end
    EXPECT_TRUE(patched.failed());
    EXPECT_FALSE(patched.close());
    EXPECT_FALSE(OutputFile(std::make_unique<MemorySink>(bytes, 0), FileMode::Text).close());
    OutputFile full("/dev/full", FileMode::Text);
    full.write("does not fit\n");
    EXPECT_FALSE(full.failed());
    EXPECT_FALSE(full.close()) << "closing is checked";
    EXPECT_NE(runReport().failures().back().find("No space"), std::string::npos);
}

TEST_F(FileTest, WhatIsNotWholeLosesItsName) {
    folder.put("d.txt.incomplete", "of a run before");
    {
        const FullDisk full(1000);
        OutputFile file(folder.file("d.txt"), FileMode::Text);
        file.write(std::string(3000, 'x'));
        EXPECT_FALSE(file.close());
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "d.txt"));
    EXPECT_EQ(folder.get("d.txt.incomplete"), std::string(1000, 'x'));
    ASSERT_EQ(runReport().failures().size(), 1U);
    EXPECT_NE(runReport().failures()[0].find("kept as d.txt.incomplete"), std::string::npos)
        << runReport().failures()[0];
}

TEST_F(FileTest, FileThatCannotBeOpenedIsAFailure) {
    OutputFile file;
    EXPECT_FALSE(file.open(folder.file("none/there.txt"), FileMode::Text));
    EXPECT_FALSE(file.isOpen());
    file.write("lost");
    EXPECT_TRUE(file.close());
    EXPECT_FALSE(OutputFile(folder.path().string(), FileMode::Binary).isOpen());
    EXPECT_EQ(runReport().failedFiles().size(), 2U);
    EXPECT_TRUE(file.open(folder.file("now.txt"), FileMode::Text));
    EXPECT_FALSE(file.failed());
}

TEST_F(FileTest, MovedFileIsReportedByItsLastOwner) {
    OutputFile first(folder.file("m.txt"), FileMode::Text);
    first.write("a");
    {
        OutputFile second = std::move(first);
        EXPECT_TRUE(second.isOpen());
        EXPECT_TRUE(second.close());
    }
    EXPECT_EQ(runReport().files().size(), 1U);
    first.write("nothing happens");
    EXPECT_TRUE(first.open(folder.file("m.txt"), FileMode::Text));
}

TEST_F(FileTest, DryRunLeavesEverythingAsItIs) {
    folder.put("old.txt", "old");
    setDryRun(true);
    OutputFile file(folder.file("old.txt"), FileMode::Binary);
    file.write("new bytes");
    file.writeAt(0, "NEW");
    EXPECT_TRUE(file.close());
    EXPECT_FALSE(deleteFile(folder.file("old.txt")));
    EXPECT_TRUE(writePrivateProfileString("S", "k", "1", folder.file("old.txt")));
    EXPECT_FALSE(startProgram("/bin/true"));
    EXPECT_EQ(folder.get("old.txt"), "old");
    EXPECT_TRUE(runReport().files().empty());
}

TEST_F(FileTest, ReadsWholeFilesAndRefusesFolders) {
    const std::string bytes = std::string(3'000'000, 'r') + '\0';
    std::string read;
    EXPECT_TRUE(readFile(folder.put("r.bin", bytes), read));
    EXPECT_TRUE(read == bytes);
    EXPECT_TRUE(readFile(folder.put("empty", ""), read));
    EXPECT_TRUE(read.empty());
    EXPECT_FALSE(readFile(folder.path().string(), read));
    EXPECT_FALSE(readFile(folder.file("missing"), read));
}

TEST(RunReport, TheWorstOutcomeStands) {
    RunReport report;
    report.ended(RunOutcome::Cancelled, "nobody answered");
    report.ended(RunOutcome::Refused, "first");
    report.ended(RunOutcome::Cancelled, "nobody answered");
    report.ended(RunOutcome::Done);
    EXPECT_EQ(report.reason(), "first");
    report.fileFailed("f", "disk full");
    report.ended(RunOutcome::Refused, "later");
    EXPECT_EQ(report.outcome(), RunOutcome::Failed);
    EXPECT_EQ(report.reason(), "f: disk full");
}

}  // namespace
