// The program's reader: it accepts what is right, names what is wrong and survives anything.
#include "support.h"

namespace {

using namespace std::string_literals;

std::string intText(std::int32_t value) {
    std::string text;
    for (int i = 0; i < 4; ++i) {
        text += static_cast<char>(static_cast<std::uint32_t>(value) >> (8 * i));
    }
    return text;
}
std::string stringText(const std::string& text) {
    return intText(static_cast<std::int32_t>(text.size())) + text;
}
const std::string id7 = "\7\0\0\0\0\0\0\0"s;
const std::string trailer = "\4\0\0\0ENDE"s;
const std::string zeros(32, '\0');
const std::string sphere = intText(11) + zeros + intText(1) + intText(255);

// A block at offset 0.
std::string block(const std::string& tail, const std::string& tag = "NA:", std::int32_t endShift = 0) {
    const std::string body = stringText(tag) + stringText("N") + stringText("OBJID:") + id7 + tail;
    return intText(static_cast<std::int32_t>(body.size() + 4) + endShift) + body;
}
std::string shape(const std::string& records, std::int32_t count) {
    return stringText("GEO:") + intText(count) + records;
}
std::string findingsIn(const std::string& bytes) {
    readers::Findings findings;
    const readers::eem::EemContent content = readers::eem::readEem(bytes, findings);
    EXPECT_TRUE(content.isWhole || !findings.empty());
    return allFindings(findings);
}

TEST(EemReader, NamesWhatIsWrong) {
    const std::string nan = "\0\0\0\0\0\0\xF8\x7F"s;
    const std::pair<std::string, std::string> cases[] = {
        {trailer, ""},
        {block(shape(sphere, 1)) + trailer, ""},
        {stringText("PID") + intText(1) + trailer, ""},
        {stringText("PID") + intText(2) + trailer, "at 0x7: unknown version\n"},
        {"", "at 0x0: the trailer is missing\n"},
        {trailer + "x", "at 0x8: bytes behind the trailer\n"},
        {block(shape("", 0)), "at 0x2E: the trailer is missing\n"},
        {block(shape("", 0), "NB:") + trailer, "at 0x4: the tag NA: expected\n"},
        {block("", "PNA:") + trailer, "at 0x4: the tag NA: expected\n"},
        {block(shape("", 0), "NA:", 900) + trailer, "at 0x0: a block that ends at 946\n"},
        {block(shape("", 0), "NA:", -40) + trailer, "at 0x0: a block that ends at 6\n"},
        {block(shape(sphere, 1) + "xx") + trailer, "at 0x5A: bytes between the last record and the block's end\n"},
        {block(shape(sphere, 2)) + trailer, "at 0x2A: no room for the records\n"},
        {block(shape(sphere, -1)) + trailer, "at 0x2A: no room for the records\n"},
        {block(shape(intText(21) + zeros + zeros, 1)) + trailer, "at 0x2E: unknown code 21\n"},
        {block(shape(intText(11) + nan + zeros, 1)) + trailer, "at 0x32: a number that is not finite\n"},
        {block(shape(intText(11) + zeros + intText(2) + intText(1 << 25), 1)) + trailer,
         "at 0x52: a handedness other than 0 and 1\nat 0x56: a colour word with unknown bits\n"},
        {block(shape(intText(8) + intText(1) + intText(9) + zeros + zeros, 1)) + trailer,
         "at 0x36: a vertex of unknown kind\nat 0x7A: the block ends within a number\n"},
        {block(shape(intText(8) + intText(1 << 30) + zeros, 1)) + trailer, "at 0x32: no room for the vertices\n"},
        {block(shape(sphere, 1), "NB:") + "\0\0\0\0"s,
         "at 0x4: the tag NA: expected\nat 0x5A: a block that ends at 0\n"},
    };
    for (const auto& [bytes, expected] : cases) {
        EXPECT_EQ(findingsIn(bytes), expected);
    }
}

TEST(EemReader, SurvivesEveryCutAndEveryChangedByte) {
    const std::string vertices = intText(2) + std::string(2 * 28, '\1');
    const std::string good = block(shape(sphere + intText(8) + vertices + zeros + zeros, 2)) + trailer;
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_NE(findingsIn(good.substr(0, size)), "") << size;
    }
    for (std::size_t at = 0; at < good.size(); ++at) {
        for (const char value : {'\0', '\x7F', '\xFF'}) {
            std::string changed = good;
            changed[at] = value;
            findingsIn(changed);
        }
    }
}

TEST(EemSideFile, ItsMembersAreTheBlocksInTheirOrder) {
    readers::eem::EemContent content;
    content.blocks.resize(2);
    content.blocks[0].id = 5;
    content.blocks[0].name = "A\"";
    content.blocks[1].id = 6;
    const std::string first = R"("5":{"attr":{"k":"v"},"cls":"C","name":"A\""})";
    const std::string second = R"("6":{"attr":{},"cls":"C","name":""})";
    const std::pair<std::string, std::string> cases[] = {
        {"{" + first + "," + second + "}", ""},
        {"{" + second + "," + first + "}", "member 6: \"\" where the EEM file has 5 \"A\"\"\n"},
        {"{" + first + "}", "member 1: 1 members beside 2 blocks\n"},
        {"{" + first + "," + second + "," + second + "}", "member 2: 3 members beside 2 blocks\n"},
        {"{" + first + "," + second, "member root: no JSON object\nmember 0: 0 members beside 2 blocks\n"},
        {"{" + first + "," + second + "}x", "member root: bytes behind it\n"},
        {"{" + first + R"(,"6":{"attr":{"k":1},"cls":"C","name":""}})", "member 6: attribute k is no text\n"},
        {"{" + first + R"(,"6":{"cls":"C","attr":{},"name":""}})", "member 6: attr, cls and name expected\n"},
    };
    for (const auto& [json, expected] : cases) {
        readers::Findings findings;
        check::eemPair(content, readers::eem::readSideFile(json, findings), findings);
        EXPECT_EQ(allFindings(findings), expected) << json;
    }
}

}  // namespace
