// The example's scene and side file against expected files in UTF-8. TESSARO_REBASE=1 writes them anew.
#include "support.h"
#include "support/golden.h"

namespace {

class GoldenScene : public NvTest {
protected:
    GoldenScene() { root.takeInstallation(); }
    // The first file has them all.
    static std::string withoutProperties(const std::string& tree) {
        std::string text;
        std::istringstream lines(tree);
        for (std::string line; std::getline(lines, line);) {
            text += line.substr(0, line.find(" {")) + "\n";
        }
        return text;
    }
};

TEST_F(GoldenScene, TheExamplePlantGivesTheExpectedFiles) {
    loadText(exampleText("pump-station.json"));
    nvout();
    expectGolden("navisworks", "tree.txt", tolmar::toUtf8(read().tree()));
    expectGolden("navisworks", "side.json", tolmar::toUtf8(json()));
}

TEST_F(GoldenScene, TheExamplePlantWithEveryOption) {
    // The script sorts names by the bytes of the code page.
    if (std::string(TESSARO_CODE_PAGE) != "GBK") {
        GTEST_SKIP() << "the expected order is that of the code page GBK";
    }
    loadText(exampleText("pump-station.json"));
    options({"outWeld", "outWeldText", "nvExpandBranch", "orAxiss", "sortNode"});
    nvout();
    expectGolden("navisworks", "tree-all-options.txt", tolmar::toUtf8(withoutProperties(read().tree())));
}

}  // namespace
