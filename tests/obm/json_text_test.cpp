// The text of JSON and the frame of binary glTF that the stand-ins write.
#include "gltf/glb.h"
#include "gltf/json_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

std::string quoted(std::string_view text) {
    return gltf::JsonText().string(text).text();
}

TEST(JsonText, SeparatesValuesByItself) {
    gltf::JsonText json;
    json.beginObject().key("a").beginArray().endArray().key("b").beginArray().number(1).boolean(false).newLine();
    json.beginObject().endObject().endArray().anyKey("\"").raw("null");
    json.drop();
    json.key("c").string("").endObject();
    EXPECT_EQ(json.text(), R"(,"c":""})") << "dropping keeps the place";
    gltf::JsonText rows;
    rows.beginArray().newLine().number(1).newLine().number(2).endArray();
    EXPECT_EQ(rows.text(), "[\n1,\n2]");
}

TEST(JsonText, EscapesAndReplacesWhatIsNoText) {
    EXPECT_EQ(quoted("a\"\\/\n\t\x7F"), R"("a\"\\/\u000a\u0009\u007f")");
    EXPECT_EQ(quoted("\xE4\xB8\xAD\xF0\x9F\x98\x80"), "\"\xE4\xB8\xAD\xF0\x9F\x98\x80\"");
    // A lone trail, an overlong form, a surrogate, a number beyond the last, a cut character.
    constexpr std::string_view bad[] = {"\x80", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE4\xB8"};
    for (const std::string_view text : bad) {
        std::string expected = "\"";
        for (std::size_t i = 0; i < text.size(); ++i) {
            expected += "\xEF\xBF\xBD";
        }
        EXPECT_EQ(quoted(text), expected + "\"");
    }
}

TEST(JsonText, NumbersReadBackAsTheyWere) {
    EXPECT_EQ(gltf::JsonText().number(0.1).text(), "0.1");
    EXPECT_EQ(gltf::JsonText().number(double{0.1F}).text(), "0.10000000149011612");
    EXPECT_EQ(gltf::JsonText().number(std::numeric_limits<std::int64_t>::min()).text(), "-9223372036854775808");
    EXPECT_EQ(gltf::JsonText().number(std::numeric_limits<double>::quiet_NaN()).text(), "0");
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
