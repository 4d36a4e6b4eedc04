#include "fixture.h"
#include "hextinterface/hextbasemethod/used_colours.h"

namespace {

class Colours : public PipesTest {
protected:
    Colours() { usedColours().clear(); }
    ~Colours() override { usedColours().clear(); }
    std::string read(const char* name) const {
        std::string text = root.read(std::string("temp/hext/") + name);
        std::erase(text, '\r');
        return text;
    }
    std::string colours() const { return read("des-col.pmldat"); }
    std::string rules() const { return read("des-element-rules.pmldat"); }
};

const std::string head = "--Data file for graphical colour options\n\n"
                         "!!tmpGphColOpt.ce.colour(| yellow | )\n!!tmpGphColOpt.active.colour(| orangered | )\n"
                         "!!tmpGphColOpt.aids.colour(| springgreen | )\n!!tmpGphColOpt.visible.colour(| lightgrey | )\n"
                         "!!tmpGphColOpt.highlight.colour(| brightred | )\n\n!tempArray = ARRAY()\n\n";
const std::string end = "!!tmpGphColOpt.autoColourRules = !tempArray\n!!tmpGphColOpt.autoColour = TRUE\n"
                        "!!tmpGphColOpt.dynamicAutoColour = TRUE\n\n\n\n";
const std::string ruleHead = " --Data file containing element rule definitions\n\n";

std::string colourBlock(const std::string& rule, int transparency, int colour, int position) {
    return "!gphAutoColourRul = |" + rule + "|\n!gphAutoColTnslVal = " + std::to_string(transparency) +
           "\n!gphAutoColEdgeOn = FALSE\n!gphAutoColourExp = |" + std::to_string(colour) +
           "|\n!gphAutoColour = object GPHAUTOCOLOUR(!gphAutoColourRul, !gphAutoColourExp, !gphAutoColTnslVal, "
           "!gphAutoColEdgeOn)\n!tempArray[" +
           std::to_string(position) + "] = !gphAutoColour\n\n\n\n";
}
std::string ruleBlock(const std::string& rule, const std::string& type) {
    return "!rule = object RULE()\n!rule.name = |" + rule + "| \n!rule.rule = |FUNC eq '" + rule +
           "'|\n!rule.types = |" + type + "|\n!rule.description = ||\n!!tmpRuleArray.append(!rule)\n\n\n\n";
}

TEST_F(Colours, OneRuleForEachClassAndIndexInOrder) {
    useColour(ColourClass::Window, 2);
    useColour(ColourClass::Support, 3);
    useColour(ColourClass::Structure, 5);
    useColour(ColourClass::Pipeline, 5);
    useColour(ColourClass::Equipment, 0);
    writeColourFiles();
    EXPECT_EQ(colours(), head + colourBlock("CLRPIPE5", 0, 15, 1) + colourBlock("CLRSTRU5", 0, 15, 2) +
                             colourBlock("CLREQUI8", 0, 18, 3) + colourBlock("CLRSUPP3", 0, 13, 4) +
                             colourBlock("CLRASTRU2", 20, 12, 5) + end);
    EXPECT_EQ(rules(), ruleHead + ruleBlock("CLRPIPE5", "PIPE") + ruleBlock("CLRSTRU5", "STRU") +
                           ruleBlock("CLREQUI8", "EQUI") + ruleBlock("CLRSUPP3", "EQUI") +
                           ruleBlock("CLRASTRU2", "STRU"));
}

TEST_F(Colours, WithoutKeysTheFramesStandAlsoWithoutTheArray) {
    root.write("temp/hext/config.json", "{}");
    writeColourFiles();
    EXPECT_EQ(colours(), head + end);
    EXPECT_EQ(rules(), ruleHead);
}

TEST_F(Colours, ABrokenArrayKeepsTheBlocksSoFar) {
    useColour(ColourClass::Pipeline, 1);
    useColour(ColourClass::Structure, 9);
    for (const auto& [broken, message] : {std::pair(R"({"color":[11,12]})", "object is invalid"),
                                          {R"({"color":[11,1,1,1,1,1,1,1,"x"]})", "object is invalid"}}) {
        root.write("temp/hext/config.json", broken);
        try {
            writeColourFiles();
            ADD_FAILURE() << broken;
        } catch (const std::runtime_error& failure) {
            EXPECT_STREQ(failure.what(), message);
        }
        EXPECT_EQ(colours(), head + colourBlock("CLRPIPE1", 0, 11, 1));
        EXPECT_EQ(rules(), ruleHead + ruleBlock("CLRPIPE1", "PIPE"));
    }
    root.write("temp/hext/config.json", "{}");
    EXPECT_THROW(writeColourFiles(), std::runtime_error);
    EXPECT_EQ(colours(), head);
}

TEST_F(Colours, AFileThatDoesNotOpenEndsTheWriter) {
    std::filesystem::create_directories(root.path() / "temp/hext/des-element-rules.pmldat");
    useColour(ColourClass::Pipeline, 1);
    writeColourFiles();
    EXPECT_EQ(colours(), "");
    EXPECT_EQ(tolmar::runReport().failedFiles().size(), 1U);
}

}  // namespace
