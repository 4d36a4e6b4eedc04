#include "tolmar/protected_files.h"

#include "support/scratch_folder.h"
#include "tolmar/file.h"
#include "tolmar/paths.h"
#include "tolmar/run_report.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

using namespace tolmar;
namespace fs = std::filesystem;

class ProtectedFiles : public testing::Test {
protected:
    void SetUp() override { runReport().clear(); }
    void TearDown() override { forgetProtectedFiles(); }
    bool opens(const std::string& name) const {
        OutputFile file(folder.file(name), FileMode::Text);
        return file.isOpen() && file.close();
    }
    ScratchFolder folder;
};

TEST_F(ProtectedFiles, AreRefusedUnderEveryNameAndFailNoRun) {
    protectFile(folder.put("Plant.json", "input"), "the model");
    fs::create_hard_link(folder.path() / "Plant.json", folder.path() / "linked.json");
    fs::create_symlink("Plant.json", folder.path() / "pointed.json");
    for (const char* name : {"Plant.json", "plant.JSON", "linked.json", "pointed.json", "./Plant.json"}) {
        EXPECT_FALSE(opens(name)) << name;
    }
    EXPECT_FALSE(deleteFile(folder.file("Plant.json")));
    EXPECT_EQ(folder.get("Plant.json"), "input");
    EXPECT_TRUE(opens("other.json"));
    runReport().ended(RunOutcome::Failed, "what the command makes of it");
    EXPECT_EQ(runReport().outcome(), RunOutcome::Refused);
    EXPECT_NE(runReport().reason().find("Plant.json: it is the model of this run, "), std::string::npos)
        << runReport().reason();
}

TEST_F(ProtectedFiles, StayProtectedWhenTheyAreNotThereYetOrAreReplaced) {
    protectFile(folder.file("report.json"), "the report");
    EXPECT_FALSE(opens("report.json"));
    folder.put("sys/deep/a.lua", "script");
    protectFilesBelow(folder.path() / "sys", "a script");
    protectFilesBelow(folder.path() / "none", "nothing");
    folder.put("sys/deep/new.lua", "another file of the same name");
    fs::rename(folder.path() / "sys/deep/new.lua", folder.path() / "sys/deep/a.lua");
    EXPECT_FALSE(opens("sys/deep/a.lua"));
    protectFile("/dev/null", "a device");
    EXPECT_TRUE(OutputFile("/dev/null", FileMode::Binary).close());
}

}  // namespace
