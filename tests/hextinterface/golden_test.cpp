// The example plant's whole folder against expected files, which stand in UTF-8 with bare line feeds so that they can
// be read. TESSARO_REBASE=1 writes them anew.
#include "fixture.h"
#include "support/golden.h"

namespace {

namespace fs = std::filesystem;

const fs::path golden = goldenFolder("hextinterface");

class Golden : public HextRunTest {};

TEST_F(Golden, TheExamplePlantGivesTheExpectedFolder) {
    // Limits of length count bytes of the code page, so other code pages cut elsewhere.
    if (std::string(TESSARO_CODE_PAGE) != "GBK") {
        GTEST_SKIP() << "expected files are those of the code page GBK";
    }
    TestModel model(example());
    hextout();
    if (isRebasing()) {
        fs::remove_all(golden);
    }
    const Files written = files();
    for (const auto& [name, bytes] : written) {
        expectGolden("hextinterface", name, readable(bytes));
    }
    std::size_t expected = 0;
    for (const auto& entry : fs::directory_iterator(golden)) {
        expected += written.count(entry.path().filename().string());
    }
    EXPECT_EQ(expected, written.size());
    EXPECT_EQ(static_cast<std::size_t>(std::distance(fs::directory_iterator(golden), {})), written.size());
}

}  // namespace
