#include "frame/exceptions.h"
#include "hextinterface/manager/manager.h"
#include "support/failure.h"
#include "support/test_support.h"

namespace {

using Texts = std::vector<std::string>;

// A dictionary in the installation root of the test.
class UdaWriterTest : public testing::Test {
protected:
    std::string path() const { return (root.path() / "uda.txt").string(); }
    std::string list(const Texts& values) {
        std::string out;
        writer->writeUdaList(out, "EAttr", values);
        return out;
    }
    std::string dictionary() {
        EXPECT_TRUE(writer->close());
        return root.read("uda.txt");
    }

    TestRoot root;
    NameManager names;
    std::unique_ptr<UdaWriter> writer = std::make_unique<UdaWriter>(path(), names);
};

std::string withCrLf(const std::string& text) {
    std::string lines;
    for (const char c : text) {
        lines += c == '\n' ? "\r\n" : std::string(1, c);
    }
    return lines;
}

TEST_F(UdaWriterTest, TheDictionaryStandsAsTheTargetReadsIt) {
    std::ifstream golden(TESSARO_SOURCE_DIR "/tests/manager/golden/uda.txt", std::ios::binary);
    std::ostringstream expected;
    expected << golden.rdbuf();
    EXPECT_FALSE(expected.str().empty());
    EXPECT_EQ(dictionary(), withCrLf(expected.str()));
    EXPECT_TRUE(names.isNameCreated("ORNA_UGRO"));
    EXPECT_TRUE(names.isNameCreated("NozzleName"));
    EXPECT_EQ(names.find("Tag")->kind, NameKind::Uda);
}

TEST_F(UdaWriterTest, OfASecondDictionaryOnlyTheHeadIsLeft) {
    writer = std::make_unique<UdaWriter>((root.path() / "second.txt").string(), names);
    EXPECT_TRUE(writer->close());
    EXPECT_EQ(root.read("second.txt"), "Lexicon\r\nOLD /ORNA_UGRO\r\n");
}

TEST_F(UdaWriterTest, AValueIsQuotedAndAnEmptyOneIsLeftOut) {
    std::string out;
    writer->writeUda(out, "Tag", "O'Neil");
    writer->writeUda(out, "Tag", "");
    writer->writeUda(out, "no such name", "");
    writer->writeUda(out, "Material", std::string(200, 'm'));
    EXPECT_EQ(out, ":Tag 'O''Neil' \n:Material '" + std::string(200, 'm') + "' \n");
    EXPECT_EQ(failureOf<ExportException>([&] { writer->writeUda(out, "EAttr1", "x"); }), "未知的UDA名称！EAttr1");
}

TEST_F(UdaWriterTest, ShortTextsShareOneLine) {
    EXPECT_EQ(list({}), "");
    EXPECT_EQ(list({"a", "b", "c"}), ":EAttr 'a;b;c'\n");
    EXPECT_EQ(list({""}), ":EAttr ''\n");
    EXPECT_EQ(list({"", "a", ""}), ":EAttr 'a;'\n");
    EXPECT_EQ(list({"it's"}), ":EAttr |it's|\n");
    std::string out;
    EXPECT_THROW(writer->writeUdaList(out, "None", Texts{"x"}), ExportException);
    EXPECT_FALSE(names.isNameKnown("EAttr1"));
}

TEST_F(UdaWriterTest, LongListsGoOnInFurtherAttributes) {
    const std::string a(60, 'a'), b(60, 'b'), c(58, 'c');
    // 60 + 1 + 60 units are one too many; 60 + 1 + 58 are not.
    EXPECT_EQ(list({a, b, c}), ":EAttr '" + a + "'\n:EAttr1 '" + b + ";" + c + "'\n");
    EXPECT_TRUE(names.isNameCreated("EAttr1"));
    // What was gathered doubles its quotes, the last piece may stand between bars.
    EXPECT_EQ(list({"it's", b, a + "'"}), ":EAttr 'it''s;" + b + "'\n:EAttr1 |" + a + "'|\n");
    const std::string text = dictionary();
    EXPECT_EQ(text.substr(text.rfind("NEW UDA")), "NEW UDA /EAttr1 UTYPE TEXT\r\n    UDNA 'EAttr1'\r\n    ULEN 120\r\n"
                                                  "    ABLEN 6\r\n    RPTX 'EAttr'\r\n    ELE ADD EQUI\r\n"
                                                  "    COMPILE\r\nEND\r\n");
}

TEST_F(UdaWriterTest, ATextLongerThanAnAttributeIsSplit) {
    const std::string x(120, 'x');
    EXPECT_EQ(list({x + "y"}), ":EAttr '" + x + "'\n:EAttr1 'y'\n");
    // In the middle of a list it is preceded by what was gathered, and the next text begins anew.
    EXPECT_EQ(list({"a", x + "y", "b"}), ":EAttr 'a'\n:EAttr1 '" + x + "'\n:EAttr2 'y'\n:EAttr3 'b'\n");
    EXPECT_EQ(list({"a", x + "y"}), ":EAttr 'a'\n:EAttr1 '" + x + "'\n:EAttr2 'y'\n");
    EXPECT_EQ(list({x + "y", "b", "c"}), ":EAttr '" + x + "'\n:EAttr1 'y'\n:EAttr2 'b;c'\n");
    // Fifteen two-byte characters are 120 units, one byte too many.
    EXPECT_EQ(list({std::string(30, '\xB0')}), ":EAttr '" + std::string(29, '\xB0') + "'\n:EAttr1 '\xB0'\n");
}

TEST(UdaWriter, AFileThatCannotBeOpenedEndsTheRun) {
    TestRoot root;
    NameManager names;
    const std::string path = (root.path() / "none" / "uda.txt").string();
    EXPECT_EQ(failureOf<ExportException>([&] { UdaWriter(path, names); }), "文件 " + path + " 打开失败！");
    EXPECT_FALSE(names.isNameCreated("ORNA_UGRO"));
}

}  // namespace
