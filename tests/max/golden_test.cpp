// The example plant's two files against expected ones, in a shorter form: triangles as sums, the rows of an object on a
// line. TESSARO_REBASE=1 writes them anew.
#include "support.h"
#include "support/golden.h"

#include <cmath>

namespace {

std::string startTag(const Element& element) {
    std::string text = element.name;
    for (const auto& [name, value] : element.attributes) {
        text += " " + name + "=" + value;
    }
    return text;
}

// Sums of the coordinates, in whole millimetres, and of the vertex numbers.
std::string sumsOf(const Element& group) {
    double sums[3] = {0, 0, 0};
    std::size_t corners = 0;
    for (const Element& child : group.children) {
        const char* names[] = {"pointX", "pointY", "pointZ"};
        for (int k = 0; k < 3; ++k) {
            if (child.name == "point") {
                sums[k] += std::stod(child[names[k]]);
            } else {
                corners += child.number(names[k]) * static_cast<std::size_t>(k + 1);
            }
        }
    }
    std::string text = "sums";
    for (const double sum : sums) {
        text += " " + std::to_string(std::llround(sum));
    }
    return text + " " + std::to_string(corners);
}

void describe(const Element& element, const std::string& indent, std::string& out) {
    out += indent + startTag(element) + "\n";
    if (element.name == "meshGroup") {
        out += indent + " " + sumsOf(element) + "\n";
        return;
    }
    if (element.name == "propertyGroup") {
        out += indent;
        for (const Element& row : element.children) {
            out += " " + row["key"] + "=" + row["value"];
        }
        out += "\n";
        return;
    }
    for (const Element& child : element.children) {
        describe(child, indent + " ", out);
    }
}

class MaxGolden : public MaxTest {};

TEST_F(MaxGolden, TheExamplePlantGivesTheExpectedFiles) {
    root.takeInstallation();
    loadText(exampleText("pump-station.json"));
    ui.inputs = {"GY-01", "S1"};
    maxout();
    for (const char* ending : {".orna", ".xml"}) {
        std::string text;
        describe(parseXml(root.read("out/PumpStation" + std::string(ending))), "", text);
        expectGolden("max", "PumpStation" + std::string(ending), text);
    }
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Done);
}

}  // namespace
