// The example models against expected files: the EEM file as a listing of all its fields, the JSON file in UTF-8 with
// bare line feeds. TESSARO_REBASE=1 writes them anew.
#include "support.h"
#include "support/golden.h"

#include <charconv>

namespace {

// The shortest text that reads back as the same number.
void append(std::string& text, double value) {
    char digits[32];
    text += ' ';
    text.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void append(std::string& text, const readers::eem::Record& record) {
    char color[16];
    text += "  " + std::to_string(record.code);
    for (const auto& list : record.lists) {
        text += " [" + std::to_string(list.size());
        for (const readers::eem::Vertex& vertex : list) {
            text += " |" + std::to_string(vertex.kind);
            for (const double coordinate : vertex.point) {
                append(text, coordinate);
            }
        }
        text += ']';
    }
    for (const double number : record.numbers) {
        append(text, number);
    }
    for (const std::int32_t number : record.integers) {
        text += " i" + std::to_string(number);
    }
    std::snprintf(color, sizeof color, " %08X", record.color);
    text += " h" + std::to_string(record.handedness) + color + "\n";
}

std::string listing(const readers::eem::EemContent& content) {
    std::string text = content.isPapers ? "papers\n" : "model\n";
    for (const readers::eem::Block& block : content.blocks) {
        text += std::to_string(block.offset) + " to " + std::to_string(block.end) + " " + std::to_string(block.id) +
                " " + tolmar::toUtf8(block.name) + "\n";
        for (const readers::eem::Record& record : block.records) {
            append(text, record);
        }
    }
    return text;
}

class EemGolden : public EemRunTest {
protected:
    void compareExample(const std::string& name) {
        // Names count in bytes of the code page, and so do the ends of blocks.
        if (std::string(TESSARO_CODE_PAGE) != "GBK") {
            GTEST_SKIP() << "expected files are those of the code page GBK";
        }
        root.takeInstallation();
        loadText(exampleText(name + ".json"));
        ornaout();
        expectGolden("eem", name + ".txt", listing(read()));
        expectGolden("eem", name + ".json", readable(root.read("plant.v1.json")));
    }
};

TEST_F(EemGolden, TheExamplesGiveTheExpectedFiles) {
    compareExample("pump-station");
    compareExample("paper");
}

}  // namespace
