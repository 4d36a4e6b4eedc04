// Files of other producers through the program: found in a folder, exported, checked, and what is not understood told.
#include "program/real_module.h"

namespace {

using realmodule::RealModule;
namespace fs = std::filesystem;

const fs::path samples = fs::path(TESSARO_SOURCE_DIR) / "tests/sources/pcf/samples";

std::string textOf(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

std::size_t countOf(const std::string& text, const std::string& what) {
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
        ++count;
    }
    return count;
}

TEST_F(RealModule, PipingComponentFilesBecomeMacrosOfEveryComponent) {
    const std::string common = "' --root '" + root().string() + "' --out '" + out().string() + "'";
    EXPECT_EQ(tessaro("run HEXTOUT --model '" + (samples / "full.pcf").string() + common), 0) << said();
    const std::string pipes = textOf(root() / "temp/hext/pipe.txt");
    // Of 44 parts 12 are pipes, 6 welds and 4 gaskets; every part but pipes and welds has a line.
    EXPECT_EQ(countOf(pipes, "!!ORNAPipeCreateComponent") + countOf(pipes, "!!ORNAPipeCreateAngleComp"), 22U);
    EXPECT_EQ(countOf(pipes, "!!ORNAPipeCreateBranch("), 3U);
    EXPECT_NE(pipes.find("'E 2417 N 2000 U 5257'"), std::string::npos) << "the tee stands in its place";
    EXPECT_EQ(tessaro("check hext '" + (root() / "temp/hext").string() + "'"), 0) << said();
}

TEST_F(RealModule, WhatAFileHoldsAndTheModelDoesNotIsALoss) {
    const fs::path report = folder() / "report.json";
    EXPECT_EQ(tessaro("run RVMOUT --model '" + (samples / "odd.pcf").string() + "' --root '" + root().string() +
                      "' --out '" + out().string() + "' --report '" + report.string() + "'"),
              3)
        << said();
    EXPECT_NE(textOf(report).find("pcf.record-unknown: WARP-DRIVE"), std::string::npos);
}

TEST_F(RealModule, AFolderOfLinesIsOnePlantAndConverts) {
    const fs::path plant = folder() / "lines.json";
    EXPECT_EQ(tessaro("model convert '" + samples.string() + "' -o '" + plant.string() + "'"), 0) << said();
    EXPECT_EQ(tessaro("model check '" + plant.string() + "'"), 0) << said();
    for (const char* site : {"\"full\"", "\"inch\"", "\"windows\""}) {
        EXPECT_NE(textOf(plant).find(site), std::string::npos) << site;
    }
    std::ofstream(folder() / "no.pcf") << "no plant at all\n";
    EXPECT_EQ(tessaro("model check '" + (folder() / "no.pcf").string() + "'"), 2) << said();
}

}  // namespace
