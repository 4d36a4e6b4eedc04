// The example plant's whole folder against expected files, which stand in UTF-8 with bare line feeds so that they can
// be read. TESSARO_REBASE=1 writes them anew.
#include "hext_fixture.h"

#include <cstdlib>

namespace {

namespace fs = std::filesystem;

const fs::path golden = fs::path(TESSARO_SOURCE_DIR) / "tests" / "hext" / "golden";

std::string readable(const std::string& bytes) {
    std::string text = tolmar::toUtf8(bytes);
    std::erase(text, '\r');
    return text;
}

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// The first line that differs, with its number.
std::string difference(const std::string& expected, const std::string& actual) {
    std::istringstream a(expected);
    std::istringstream b(actual);
    std::string lineA;
    std::string lineB;
    for (int number = 1;; ++number) {
        const bool moreA = static_cast<bool>(std::getline(a, lineA));
        const bool moreB = static_cast<bool>(std::getline(b, lineB));
        if (moreA != moreB || lineA != lineB) {
            return "line " + std::to_string(number) + "\n  expected: " + (moreA ? lineA : "(end)") +
                   "\n  written:  " + (moreB ? lineB : "(end)");
        }
        if (!moreA) {
            return {};
        }
    }
}

class Golden : public HextRunTest {};

TEST_F(Golden, TheExamplePlantGivesTheExpectedFolder) {
    // Limits of length count bytes of the code page, so other code pages cut elsewhere.
    if (std::string(TESSARO_CODE_PAGE) != "GBK") {
        GTEST_SKIP() << "expected files are those of the code page GBK";
    }
    TestModel model(example());
    hextout();
    const bool rebase = std::getenv("TESSARO_REBASE") != nullptr;
    if (rebase) {
        fs::remove_all(golden);
        fs::create_directories(golden);
    }
    const Files written = files();
    for (const auto& [name, bytes] : written) {
        if (rebase) {
            std::ofstream(golden / name, std::ios::binary) << readable(bytes);
        }
        EXPECT_EQ(difference(readFile(golden / name), readable(bytes)), "") << name;
    }
    std::size_t expected = 0;
    for (const auto& entry : fs::directory_iterator(golden)) {
        expected += written.count(entry.path().filename().string());
    }
    EXPECT_EQ(expected, written.size());
    EXPECT_EQ(static_cast<std::size_t>(std::distance(fs::directory_iterator(golden), {})), written.size());
}

}  // namespace
