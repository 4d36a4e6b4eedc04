#include "scripts/options.h"
#include "scripts/project_config.h"
#include "support/test_support.h"

#include <stdexcept>

namespace {

constexpr const char* iniFile = "plugins/nvoutplugins.ini";
constexpr const char* configFile = "temp/hext/config.json";

TEST(Options, OnlyTheNumberOneIsOn) {
    const TestRoot root;
    EXPECT_FALSE(optionOn(options::outWeld)) << "no file";
    const std::pair<const char*, bool> values[] = {
        {"1", true},   {" 1 ", true}, {"1abc", true}, {"2", false},    {"0", false},  {"", false},
        {"10", false}, {"-1", false}, {"yes", false}, {"true", false}, {"x1", false}, {"4294967297", false},
    };
    for (const auto& [value, on] : values) {
        root.write(iniFile, std::string("[Control]\r\nsortNode=1\r\noutWeld=") + value + "\r\n");
        EXPECT_EQ(optionOn(options::outWeld), on) << value;
        EXPECT_TRUE(optionOn(options::sortNode));
        EXPECT_FALSE(optionOn(options::rvmCompat));
    }
}

TEST(Options, FilesOfAnyShapeAreRead) {
    const TestRoot root;
    const std::pair<const char*, bool> files[] = {
        {"", false},
        {"outWeld=1\n", false},
        {"[Other]\noutWeld=1\n", false},
        {"; note\n[control]\nOUTWELD = 1", true},
        {"\xEF\xBB\xBF[Control]\noutWeld=1\n", true},
        {"[\xB9\xDC\xCF\xDF]\n\xB9\xDC=1\n[Control]\noutWeld=1\n", true},
        {"=\n[]\n[Control]\n=1\noutWeld\n", false},
    };
    for (const auto& [text, on] : files) {
        root.write(iniFile, text);
        EXPECT_EQ(optionOn(options::outWeld), on) << text;
    }
    root.write(iniFile, std::string("[Control]\n\0outWeld=1\n", 20) + std::string(100000, '\0'));
    EXPECT_TRUE(optionOn(options::outWeld)) << "zero bytes are blanks";
}

TEST(Options, AreWrittenAndReadAnew) {
    const TestRoot root;
    root.write(iniFile, "; mine\r\n[Control]\r\noutWeld=0\r\n");
    for (const bool on : {true, false}) {
        ASSERT_TRUE(setOption(options::outWeld, on));
        EXPECT_EQ(optionOn(options::outWeld), on);
    }
    EXPECT_NE(root.read(iniFile).find("; mine"), std::string::npos);
}

TEST(ProjectConfig, SwitchesAreTheNumberOne) {
    const TestRoot root;
    const std::pair<const char*, bool> values[] = {
        {"1", true}, {"2", false}, {"0", false}, {"\"1\"", false}, {"true", false}, {"[1]", false}, {"null", false},
    };
    for (const auto& [value, on] : values) {
        const std::string text = value;
        root.write(configFile, R"({"EQNONAME":)" + text + R"(,"equipPostName":)" + text + R"(,"supportSpec":)" + text +
                                   R"(,"boltSpec":)" + text + "}");
        EXPECT_EQ(configEqnoName(), on) << value;
        EXPECT_EQ(configEquipPostName(), on) << value;
        EXPECT_EQ(configSupportSpec(), on) << value;
        EXPECT_EQ(configBoltSpec(), on) << value;
    }
    for (const char* other : {"{}", "[]", "3", "\"text\""}) {
        root.write(configFile, other);
        EXPECT_FALSE(configEqnoName() || configEquipPostName() || configSupportSpec() || configBoltSpec()) << other;
    }
}

TEST(ProjectConfig, AnUnreadableFileHasARuleForEachReader) {
    const TestRoot root;
    for (const char* text : {static_cast<const char*>(nullptr), "", "{\"equipPostName\":0"}) {
        if (text != nullptr) {
            root.write(configFile, text);
        }
        testing::internal::CaptureStdout();
        EXPECT_THROW(configEqnoName(), std::runtime_error);
        tolmar::runReport().clear();
        EXPECT_TRUE(configEquipPostName());
        EXPECT_NE(tolmar::runReport().reason().find("config.json: parse fail"), std::string::npos);
        EXPECT_FALSE(configSupportSpec());
        EXPECT_FALSE(configBoltSpec());
        tolmar::runReport().clear();
        EXPECT_TRUE(ConfigTexts::detailTexts().empty());
        EXPECT_TRUE(ConfigTexts::boltTexts().empty());
        EXPECT_EQ(tolmar::runReport().outcome(), tolmar::RunOutcome::Failed);
        testing::internal::GetCapturedStdout();
    }
}

TEST(ProjectConfig, TextsAreFoundByKey) {
    const TestRoot root;
    root.write(configFile, R"({"detailText":{"RTEXT":"general","elbowRText":"bend","DESC":3,"rtext":"later"},
                               "boltText":{"BOLT":{"RTEXT":"M<size>"},"NUT":{"rtext":"nut"},"X":{"RTEXT":"x"}}})");
    const ConfigTexts detail = ConfigTexts::detailTexts();
    EXPECT_EQ(detail.find("RTEXT"), "general");
    EXPECT_EQ(detail.find("ELBOWRTEXT"), "bend");
    EXPECT_EQ(detail.find("DESC"), "");
    EXPECT_EQ(detail.find("STEXT"), "");
    const ConfigTexts bolts = ConfigTexts::boltTexts();
    EXPECT_EQ(bolts.find("BOLTRTEXT"), "M<size>");
    EXPECT_EQ(bolts.find("NUTRTEXT"), "nut");
    EXPECT_EQ(bolts.find("XRTEXT"), "");
    root.write(configFile, R"({"detailText":["a"],"boltText":"b"})");
    EXPECT_EQ(ConfigTexts::detailTexts().find("RTEXT"), "");
    EXPECT_TRUE(ConfigTexts::boltTexts().empty());
}

}  // namespace
