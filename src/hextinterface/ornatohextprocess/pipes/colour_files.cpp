#include "hextinterface/ornatohextprocess/pipes/colour_files.h"

#include "hextinterface/hextbasemethod/macro_text.h"
#include "hextinterface/hextbasemethod/used_colours.h"
#include "platform/hxcom.h"
#include "scripts/project_config.h"
#include "tolmar/file.h"

#include <cjson/cJSON.h>

#include <stdexcept>

namespace {

constexpr const char* colourPath = "\\temp\\hext\\des-col.pmldat";
constexpr const char* rulePath = "\\temp\\hext\\des-element-rules.pmldat";
constexpr int indexForZero = 8;

constexpr std::string_view colourHead = "--Data file for graphical colour options\n"
                                        "\n"
                                        "!!tmpGphColOpt.ce.colour(| yellow | )\n"
                                        "!!tmpGphColOpt.active.colour(| orangered | )\n"
                                        "!!tmpGphColOpt.aids.colour(| springgreen | )\n"
                                        "!!tmpGphColOpt.visible.colour(| lightgrey | )\n"
                                        "!!tmpGphColOpt.highlight.colour(| brightred | )\n"
                                        "\n"
                                        "!tempArray = ARRAY()\n"
                                        "\n";
constexpr std::string_view ruleHead = " --Data file containing element rule definitions\n\n";
constexpr std::string_view colourEnd = "!!tmpGphColOpt.autoColourRules = !tempArray\n"
                                       "!!tmpGphColOpt.autoColour = TRUE\n"
                                       "!!tmpGphColOpt.dynamicAutoColour = TRUE\n"
                                       "\n\n\n";

struct ColourWord {
    const char* word;
    const char* elementType;
    int transparency;
};
// By class - 1.
constexpr ColourWord colourWords[] = {
    {"CLRPIPE", "PIPE", 0},   {"CLRSTRU", "STRU", 0},   {"CLREQUI", "EQUI", 0},   {"CLRSUPP", "EQUI", 0},
    {"CLRAPIPE", "PIPE", 20}, {"CLRASTRU", "STRU", 20}, {"CLRAEQUI", "EQUI", 20}, {"CLRASUPP", "EQUI", 20},
};

struct ColourKey {
    const ColourWord* row;
    int index;
    std::string rule() const { return row->word + std::to_string(index); }
};

ColourKey splitKey(std::uint16_t key) {
    const int colourClass = key / 256;
    const int index = key % 256;
    return {&colourWords[colourClass - 1], index == 0 ? indexForZero : index};
}

// Element i - 1 of the array; what is no number counts as a broken file.
int hextColour(JsonValue& colours, int index) {
    const JsonValue entry = colours.at(index - 1);
    if (cJSON_IsNumber(entry.node()) == 0) {
        throw std::runtime_error("object is invalid");
    }
    return entry.intValue();
}

void appendColourBlock(std::string& out, const ColourKey& key, int number, int position) {
    out.append("!gphAutoColourRul = |").append(key.rule()).append("|\n!gphAutoColTnslVal = ");
    appendInt(out, key.row->transparency);
    out += "\n!gphAutoColEdgeOn = FALSE\n!gphAutoColourExp = |";
    appendInt(out, number);
    out += "|\n!gphAutoColour = object GPHAUTOCOLOUR(!gphAutoColourRul, !gphAutoColourExp, !gphAutoColTnslVal, "
           "!gphAutoColEdgeOn)\n!tempArray[";
    appendInt(out, position);
    out += "] = !gphAutoColour\n\n\n\n";
}

void appendRuleBlock(std::string& out, const ColourKey& key) {
    const std::string rule = key.rule();
    out.append("!rule = object RULE()\n!rule.name = |").append(rule).append("| \n!rule.rule = |FUNC eq '");
    out.append(rule).append("'|\n!rule.types = |").append(key.row->elementType);
    out += "|\n!rule.description = ||\n!!tmpRuleArray.append(!rule)\n\n\n\n";
}

}  // namespace

void writeColourFiles() {
    JsonValue config = loadProjectConfig();
    JsonValue colours = config["color"];
    tolmar::OutputFile colourFile(HextSystem::getFullHextName(colourPath), tolmar::FileMode::Text);
    tolmar::OutputFile ruleFile(HextSystem::getFullHextName(rulePath), tolmar::FileMode::Text);
    if (!colourFile.isOpen() || !ruleFile.isOpen()) {
        return;
    }
    colourFile.write(colourHead);
    ruleFile.write(ruleHead);
    int position = 1;
    std::string text;
    for (const std::uint16_t key : usedColours()) {
        const ColourKey colour = splitKey(key);
        text.clear();
        appendColourBlock(text, colour, hextColour(colours, colour.index), position++);
        colourFile.write(text);
        text.clear();
        appendRuleBlock(text, colour);
        ruleFile.write(text);
    }
    colourFile.write(colourEnd);
    colourFile.close();
    ruleFile.close();
}
