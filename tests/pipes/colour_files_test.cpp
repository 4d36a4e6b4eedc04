#include "fixture.h"
#include "hextinterface/hextbasemethod/used_colours.h"
#include "support/failure.h"

namespace {

// The example's expected files show the text; here a line tells "rule colour transparency", and "rule type".
std::string told(const std::string& text, const std::vector<std::string>& heads) {
    std::string all;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        for (const std::string& head : heads) {
            if (line.starts_with(head)) {
                all += line.substr(head.size()) + (head == heads.back() ? "\n" : " ");
            }
        }
    }
    return all;
}

class Colours : public PipesTest {
protected:
    Colours() { usedColours().clear(); }
    ~Colours() override { usedColours().clear(); }
    std::string read(const std::string& name) const {
        std::string text = root.read("temp/hext/" + name);
        std::erase(text, '\r');
        return text;
    }
    std::string colours(const std::string& ending = {}) const {
        return told(read("des-col.pmldat" + ending),
                    {"!gphAutoColourRul = ", "!gphAutoColTnslVal = ", "!gphAutoColourExp = "});
    }
    std::string rules(const std::string& ending = {}) const {
        return told(read("des-element-rules.pmldat" + ending), {"!rule.name = ", "!rule.types = "});
    }
    bool isClosed() const { return read("des-col.pmldat").find("autoColourRules = !tempArray\n") != std::string::npos; }
};

TEST_F(Colours, OneRuleForEachClassAndIndexInOrder) {
    useColour(ColourClass::Window, 2);
    useColour(ColourClass::Support, 3);
    useColour(ColourClass::Structure, 5);
    useColour(ColourClass::Pipeline, 5);
    useColour(ColourClass::Equipment, 0);
    writeColourFiles();
    EXPECT_EQ(colours(), "|CLRPIPE5| 0 |15|\n|CLRSTRU5| 0 |15|\n|CLREQUI8| 0 |18|\n|CLRSUPP3| 0 |13|\n"
                         "|CLRASTRU2| 20 |12|\n");
    EXPECT_EQ(rules(), "|CLRPIPE5|  |PIPE|\n|CLRSTRU5|  |STRU|\n|CLREQUI8|  |EQUI|\n|CLRSUPP3|  |EQUI|\n"
                       "|CLRASTRU2|  |STRU|\n");
    EXPECT_TRUE(isClosed());
}

TEST_F(Colours, WithoutKeysTheFramesStandAlsoWithoutTheArray) {
    root.write("temp/hext/config.json", "{}");
    writeColourFiles();
    EXPECT_EQ(colours() + rules(), "");
    EXPECT_TRUE(isClosed());
}

TEST_F(Colours, ABrokenArraySetsTheBlocksSoFarAside) {
    useColour(ColourClass::Pipeline, 1);
    useColour(ColourClass::Structure, 9);
    for (const char* broken : {R"({"color":[11,12]})", R"({"color":[11,1,1,1,1,1,1,1,"x"]})"}) {
        root.write("temp/hext/config.json", broken);
        EXPECT_EQ(failureOf([] { writeColourFiles(); }), "object is invalid");
        EXPECT_EQ(colours(".incomplete"), "|CLRPIPE1| 0 |11|\n");
        EXPECT_EQ(rules(".incomplete"), "|CLRPIPE1|  |PIPE|\n");
        EXPECT_FALSE(isClosed());
    }
    root.write("temp/hext/config.json", "{}");
    EXPECT_THROW(writeColourFiles(), std::runtime_error);
    EXPECT_FALSE(isClosed());
}

TEST_F(Colours, AFileThatDoesNotOpenEndsTheWriter) {
    std::filesystem::create_directories(root.path() / "temp/hext/des-element-rules.pmldat");
    useColour(ColourClass::Pipeline, 1);
    writeColourFiles();
    EXPECT_EQ(colours(), "");
    EXPECT_EQ(tolmar::runReport().failedFiles().size(), 2U) << "the other one is not finished";
}

}  // namespace
