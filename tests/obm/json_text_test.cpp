// The text of JSON and the frame of binary glTF that the stand-ins write.
#include "gltf/glb.h"
#include "gltf/json_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

template <typename Write>
std::string jsonOf(Write&& write) {
    std::string text;
    gltf::JsonText json(text);
    write(json);
    return text;
}

template <typename Text>
std::string jsonString(const Text& text) {
    return jsonOf([&text](gltf::JsonText& json) { json.string(text); });
}

template <typename Number>
std::string numberOf(Number number) {
    return jsonOf([number](gltf::JsonText& json) { json.number(number); });
}

std::string decimalOf(double number) {
    return jsonOf([number](gltf::JsonText& json) { json.decimal(number); });
}

TEST(JsonText, SeparatesValuesByItself) {
    std::string text;
    gltf::JsonText json(text);
    json.beginObject().key("a").beginArray().endArray().key("b").beginArray().number(1).boolean(false).newLine();
    json.beginObject().endObject().endArray().anyKey("\"").raw("null");
    EXPECT_EQ(text, "{\"a\":[],\"b\":[1,false,\n{}],\"\\\"\":null");
    text.clear();
    json.newLine().key("c").string("").endObject();
    EXPECT_EQ(text, ",\n\"c\":\"\"}") << "the place stays when the text goes";
    text.clear();
    json.restart();
    json.newLine().number(1).list("").list("2,3").newLine().number(4);
    EXPECT_EQ(text, "\n1,2,3,\n4") << "a list without brackets";
}

TEST(JsonText, EscapesAndReplacesWhatIsNoText) {
    EXPECT_EQ(jsonString("a\"\\/\n\t\x7F"), R"("a\"\\/\u000a\u0009\u007f")");
    EXPECT_EQ(jsonString("\xE4\xB8\xAD\xF0\x9F\x98\x80"), "\"\xE4\xB8\xAD\xF0\x9F\x98\x80\"");
    EXPECT_EQ(jsonString(std::u16string_view(u"a\"\\/\n\x7F")), "\"a\\\"\\\\/\\u000a\x7F\"");
    EXPECT_EQ(jsonString(std::u16string_view(u"\xE9\x4E2D\xD83D\xDE00")), "\"\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80\"");
    EXPECT_EQ(jsonString(std::u16string_view(u"\xDE00\xD83D")), "\"\xEF\xBF\xBD\xEF\xBF\xBD\"");
    // A lone trail, an overlong form, a surrogate, a number beyond the last, a cut character.
    constexpr std::string_view bad[] = {"\x80", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE4\xB8"};
    for (const std::string_view text : bad) {
        std::string expected = "\"";
        for (std::size_t i = 0; i < text.size(); ++i) {
            expected += "\xEF\xBF\xBD";
        }
        EXPECT_EQ(jsonString(text), expected + "\"");
    }
}

TEST(JsonText, NumbersReadBackAsTheyWere) {
    EXPECT_EQ(numberOf(0.1), "0.1");
    EXPECT_EQ(numberOf(double{0.1F}), "0.10000000149011612");
    EXPECT_EQ(numberOf(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(numberOf(std::numeric_limits<double>::quiet_NaN()), "0");
    EXPECT_EQ(numberOf(100000.0), "1e+05");
    EXPECT_EQ(decimalOf(100000.0), "100000");
    EXPECT_EQ(decimalOf(-0.0), "0");
    EXPECT_EQ(decimalOf(1e-4), "0.0001");
    EXPECT_EQ(decimalOf(1e15), "1e+15");
}

TEST(Glb, FrameIsThatOfTheFormat) {
    using namespace std::string_literals;
    EXPECT_EQ(gltf::glbHead(5, 6), "glTF\x02\0\0\0\x2C\0\0\0\x08\0\0\0JSON"s);
    EXPECT_EQ(gltf::glbBinHead(6), "\x08\0\0\0BIN\0"s);
    EXPECT_EQ(gltf::glbBinHead(0), "");
    EXPECT_EQ(gltf::glbSize(5, 6), 44U);
    EXPECT_EQ(gltf::glbSize(5, 0), 28U);
}

}  // namespace
