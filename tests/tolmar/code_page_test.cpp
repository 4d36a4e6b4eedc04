#include "tolmar/code_page.h"

#include <gtest/gtest.h>

namespace {

using namespace tolmar;

constexpr bool gbk = std::string_view(TESSARO_CODE_PAGE) == "GBK";

std::string utf8(const char8_t* text) {
    return reinterpret_cast<const char*>(text);
}

TEST(CodePage, LiteralsStandInTheCodePageAndGoRoundTrip) {
    const std::string text = "北区 P-101 ½";
    EXPECT_EQ(toUtf8(text), utf8(u8"北区 P-101 ½"));
    EXPECT_EQ(fromUtf8(utf8(u8"北区 P-101 ½")), text);
    EXPECT_EQ(toWide(text), u"北区 P-101 ½");
    EXPECT_EQ(fromWide(u"北区 P-101 ½"), text);
    EXPECT_EQ(std::string("管").size(), gbk ? 2U : 3U);
}

TEST(CodePage, NothingOfUnicodeIsLost) {
    const std::string text = utf8(u8"😀𠀀ÀßИ€");
    EXPECT_EQ(toUtf8(fromUtf8(text)), text);
    EXPECT_EQ(wideToUtf8(utf8ToWide(text)), text);
    EXPECT_EQ(fromWide(toWide(fromUtf8(text))), fromUtf8(text));
    EXPECT_EQ(utf8ToWide(utf8(u8"😀")), u"😀");
}

TEST(CodePage, BadBytesBecomeQuestionMarks) {
    EXPECT_EQ(fromUtf8("a\xFF"
                       "b\xE4\xB8"),
              "a?b?");
    EXPECT_EQ(utf8ToWide("\xC0z"), u"?z");
    EXPECT_EQ(toUtf8("x\xFF"), "x?");
    EXPECT_EQ(toWide("x\x81"), u"x?");
    const char16_t lone[] = {u'a', 0xD800, u'b', 0};
    EXPECT_EQ(wideToUtf8(lone), "a?b");
    EXPECT_EQ(fromWide(std::u16string(2, char16_t{0xDC00})), "??");
}

TEST(CodePage, LongTextsOfBadBytesEnd) {
    const std::string bad(100'000, '\xFF');
    EXPECT_EQ(toUtf8(bad), std::string(bad.size(), '?'));
    std::string mixed;
    for (int i = 0; i < 20'000; ++i) {
        mixed += utf8(u8"中a");
    }
    EXPECT_EQ(toUtf8(fromUtf8(mixed)), mixed);
}

// Characters that grow twofold, with bad bytes at every place where the result may be full.
TEST(CodePage, GrowingTextsKeepTheirPlaces) {
    const std::string once = fromUtf8(utf8(u8"À"));
    for (int length = 1; length < 80; ++length) {
        for (const int bad : {0, 1, 9}) {
            std::string text;
            std::string expected;
            for (int i = 0; i < length; ++i) {
                text += utf8(u8"À");
                expected += once;
            }
            text.append(static_cast<std::size_t>(bad), '\xFF');
            expected.append(static_cast<std::size_t>(bad), '?');
            ASSERT_EQ(fromUtf8(text + text), expected + expected) << length << " " << bad;
        }
    }
}

TEST(CodePage, AsciiTestLooksAtEveryByte) {
    for (std::size_t size = 0; size < 20; ++size) {
        std::string text(size, 'a');
        EXPECT_TRUE(isAscii(text));
        for (std::size_t at = 0; at < size; ++at) {
            text[at] = '\x80';
            EXPECT_FALSE(isAscii(text)) << size << " " << at;
            text[at] = 'a';
        }
    }
    EXPECT_FALSE(isValidUtf8("\xED\xA0\x80"));
    EXPECT_TRUE(isValidUtf8(utf8(u8"管")));
}

}  // namespace
