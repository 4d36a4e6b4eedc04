#include "support.h"

#include "scripts/script_host.h"
#include "support/test_support.h"
#include "tolmar/run_report.h"

namespace {

using namespace rvm;

class Attributes : public testing::Test {
protected:
    template <typename Write>
    std::string written(Write&& write, bool compat = false) {
        std::string bytes;
        tolmar::OutputFile file = memoryFile(bytes, tolmar::FileMode::Text);
        AttributeFile out(file, compat);
        write(out);
        EXPECT_TRUE(file.close());
        return bytes;
    }
    void loadScript(const std::string& lua) {
        root.write("plugins/nvoutplugins.lua", lua);
        ASSERT_NE(getScriptHost(true), nullptr) << ui.printed;
    }
    ~Attributes() override { destroyScriptHost(); }

    TestRoot root;
    TestUi ui;
    TestModel model{TestModel::withObjects("")};
};

TEST_F(Attributes, TheHeaderIsFiveLines) {
    EXPECT_EQ(written([](AttributeFile& out) { out.writeAttributeHeader("PRJ", "MAIN"); }),
              "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&\r\n"
              "NEW Header Information\r\n"
              "\tSource:= Orna Data &end& Date:= 12 Sep 2020 &end& Time:= 17:48\r\n"
              "\tProject:=PRJ &end& MDB:=MAIN &end& Element:=All\r\n"
              "END\r\n");
}

TEST_F(Attributes, IndentsFollowTheLevels) {
    const auto write = [](AttributeFile& out) {
        for (int level = levelRoot; level <= levelObject; ++level) {
            out.writeElementStart("n", elementIndent(level));
            out.writeAttribute("k", "v", attributeIndent(level));
            out.writeElementEnd(elementIndent(level));
        }
    };
    EXPECT_EQ(written(write), "NEW n\r\nk:=  v\r\nEND\r\nNEW n\r\nk:=  v\r\nEND\r\n\tNEW n\r\n\tk:=  v\r\n\tEND\r\n"
                              "\t\tNEW n\r\n\t\tk:=  v\r\n\t\tEND\r\n\t\t\tNEW n\r\n\t\t\t\tk:=  v\r\n\t\t\tEND\r\n");
}

TEST_F(Attributes, ComeFromTheScriptInItsOrder) {
    const auto write = [](AttributeFile& out) {
        out.writeElementAttributes(HxDbObjectId(77), levelZone);
        out.writeElementAttributes(HxDbObjectId(), levelObject);
    };
    EXPECT_EQ(written(write), "");
    loadScript("function getReferenceRvm(t) error('no') end");
    EXPECT_EQ(written(write), "");
    loadScript("function getReferenceRvm(t) return {{'b', 'x'}, {'a', t.objid}} end");
    EXPECT_EQ(written(write), "\tb:=  x\r\n\ta:=  77\r\n\t\t\t\tb:=  x\r\n\t\t\t\ta:=  0\r\n");
}

TEST_F(Attributes, StrictReadersAreSparedKeywordsAndEmptyValues) {
    const auto write = [](AttributeFile& out) {
        out.writeAttribute("empty", "", "\t");
        out.writeAttribute("ENDS", "1", "\t");
        out.writeAttribute("NEW", "2", "\t");
        out.writeAttribute("\ttab", "9", "\t");
        out.writeAttribute("SEND", "3\r\n4\n5\r6", "\t");
        out.writeAttribute("new", "&end&7&end&&end", "\t");
    };
    const auto twoLineKey = [](AttributeFile& out) { out.writeAttribute("two\nlines", "8", ""); };
    EXPECT_EQ(written(twoLineKey, true), "two lines:=  8\r\n");
    EXPECT_EQ(written(write, true),
              "\t_ENDS:=  1\r\n\t_NEW:=  2\r\n\t_\ttab:=  9\r\n\tSEND:=  3 4 5 6\r\n\tnew:=   7 &end\r\n");
    EXPECT_EQ(written(write, false),
              "\tempty:=  \r\n\tENDS:=  1\r\n\tNEW:=  2\r\n\t\ttab:=  9\r\n\tSEND:=  3\r\r\n4\r\n5\r6\r\n"
              "\tnew:=  &end&7&end&&end\r\n");
}

// The plain form keeps every text, so the report must tell which lines no reader gets back.
TEST_F(Attributes, ALineBreakInThePlainFormIsReported) {
    loadScript("function getReferenceRvm(t) return {{'good', 'x'}, {'bad', 'x\\ny'}, {'k\\r', 'z'}, {'\\tt', 1}} end");
    const auto write = [](AttributeFile& out) { out.writeElementAttributes(HxDbObjectId(77), levelSite); };
    tolmar::runReport().clear();
    EXPECT_EQ(written(write, true), "good:=  x\r\nbad:=  x y\r\nk :=  z\r\n_\tt:=  1\r\n");
    EXPECT_TRUE(tolmar::runReport().passed().empty());
    written(write);
    ASSERT_EQ(tolmar::runReport().passed().size(), 3u);
    EXPECT_EQ(tolmar::runReport().passed()[0].id, 77);
    EXPECT_EQ(tolmar::runReport().passed()[0].name, "bad");
    EXPECT_EQ(tolmar::runReport().passed()[1].name, "k\r");
    EXPECT_EQ(tolmar::runReport().passed()[2].why, "its key begins with a tab, which reads as an indent");
}

}  // namespace
