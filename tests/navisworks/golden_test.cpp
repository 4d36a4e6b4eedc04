// The example's scene and side file against expected files in UTF-8. TESSARO_REBASE=1 writes them anew.
#include "nv_support.h"

#include <cstdlib>

namespace {

namespace fs = std::filesystem;

class GoldenScene : public NvTest {
protected:
    GoldenScene() {
        fs::copy(fs::path(TESSARO_SOURCE_DIR) / "examples" / "install", root.path(),
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    }
    static std::string bytesOf(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }
    // The first line that differs.
    static std::string difference(const std::string& expected, const std::string& actual) {
        std::istringstream a(expected);
        std::istringstream b(actual);
        std::string lineA;
        std::string lineB;
        for (int number = 1;; ++number) {
            const bool moreA = static_cast<bool>(std::getline(a, lineA));
            const bool moreB = static_cast<bool>(std::getline(b, lineB));
            if (moreA != moreB || lineA != lineB) {
                return "line " + std::to_string(number) + "\n  expected: " + lineA + "\n  written:  " + lineB;
            }
            if (!moreA) {
                return {};
            }
        }
    }
    static void expectGolden(const std::string& name, const std::string& codePageText) {
        const fs::path path = fs::path(TESSARO_SOURCE_DIR) / "tests" / "navisworks" / "golden" / name;
        const std::string text = tolmar::toUtf8(codePageText);
        if (std::getenv("TESSARO_REBASE") != nullptr) {
            fs::create_directories(path.parent_path());
            std::ofstream(path, std::ios::binary) << text;
        }
        EXPECT_EQ(difference(bytesOf(path), text), "") << name;
    }
    // The first file has them all.
    static std::string withoutProperties(const std::string& tree) {
        std::string text;
        std::istringstream lines(tree);
        for (std::string line; std::getline(lines, line);) {
            text += line.substr(0, line.find(" {")) + "\n";
        }
        return text;
    }
    void loadExample() {
        model = std::make_unique<TestModel>(bytesOf(fs::path(TESSARO_SOURCE_DIR) / "examples" / "pump-station.json"));
    }
};

TEST_F(GoldenScene, TheExamplePlantGivesTheExpectedFiles) {
    loadExample();
    nvout();
    expectGolden("tree.txt", read().tree());
    expectGolden("side.json", json());
}

TEST_F(GoldenScene, TheExamplePlantWithEveryOption) {
    // The script sorts names by the bytes of the code page.
    if (std::string(TESSARO_CODE_PAGE) != "GBK") {
        GTEST_SKIP() << "the expected order is that of the code page GBK";
    }
    loadExample();
    options({"outWeld", "outWeldText", "nvExpandBranch", "orAxiss", "sortNode"});
    nvout();
    expectGolden("tree-all-options.txt", withoutProperties(read().tree()));
}

}  // namespace
