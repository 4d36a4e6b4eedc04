#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/macro_text.h"

#include <gtest/gtest.h>

#include <charconv>
#include <clocale>
#include <cmath>
#include <random>
#include <vector>

namespace {

std::string trimmed(double value) {
    std::string text;
    appendTrimmed(text, value);
    return text;
}
std::string shortText(double value) {
    std::string text;
    appendShort(text, value);
    return text;
}

TEST(MacroText, NumbersHaveTheirThreeForms) {
    EXPECT_EQ(trimmed(1200.5), "1200.5");
    EXPECT_EQ(trimmed(100), "100");
    EXPECT_EQ(trimmed(0), "0");
    EXPECT_EQ(trimmed(1e20), "100000000000000000000");
    std::string fixed;
    appendFixed(fixed, 1000);
    appendFixed(fixed, -0.0000004);
    EXPECT_EQ(fixed, "1000.000000-0.000000");
    EXPECT_EQ(shortText(90), "90");
    EXPECT_EQ(shortText(1234.567), "1234.57");
    EXPECT_EQ(shortText(1234567), "1.23457e+06");
}

// The short way of writing six decimals beside the exact one: ordinary numbers, ties and their neighbours, both ends
// of the range of the short way, and what is no number.
TEST(MacroText, SixDecimalsAreExact) {
    std::vector<double> values{0.0, 99999999.9999995, 1e8, 123456789.123456789, 1e300, 5e-324, HUGE_VAL, std::nan("")};
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        const auto whole = static_cast<double>(random() % 100000000000000ULL);
        const double tie = (whole + 0.5) / 1e6;
        values.insert(values.end(), {whole / 1e3, whole / 1e6, whole / 1e9, tie, tie / 4096, std::nextafter(tie, 0.0),
                                     std::nextafter(tie, 1e300)});
        values.push_back(static_cast<double>(2 * (random() % 1000000) + 1) / 128);  // exact ties
    }
    for (const double value : values) {
        for (const double number : {value, -value}) {
            char buffer[400];
            const auto end = std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed, 6).ptr;
            std::string text;
            appendFixed(text, number);
            ASSERT_EQ(text, std::string(buffer, end)) << number;
        }
    }
}

TEST(MacroText, NumbersDoNotFollowTheLocale) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr) {
        GTEST_SKIP() << "no locale with a decimal comma on this machine";
    }
    EXPECT_EQ(trimmed(0.5), "0.5");
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(MacroText, PositionsNameEveryAxis) {
    EXPECT_EQ(positionText({0, 0, 0}), "E 0 N 0 U 0");
    EXPECT_EQ(positionText({1200.5, -300, 0}), "E 1200.5 S 300 U 0");
    EXPECT_EQ(positionText({-0.0000001, 1, -2}), "W 0 N 1 D 2");
}

TEST(MacroText, DirectionsGoByLeadingAxisAndAngles) {
    struct Case {
        HxGeVector3D vector;
        const char* text;
        bool isAxis;
    };
    const Case cases[] = {
        {{1, 0, 0}, "E", true},
        {{0, 0, -5}, "D", true},
        {{0.5, 0, 0}, "E", true},
        {{1, 1, 0}, "E 45 N", false},
        {{1e200, 1e200, 1e200}, "E 45 N 35.26439 U", false},
        {{1e100, 0, -1e100}, "E 45 D", false},
        {{-1, 0, 1}, "W 45 U", false},
        {{0, 1, 1}, "N 45 U", false},
        {{1, 1, 1}, "E 45 N 35.26439 U", false},
        {{1e-7, 0, 1}, "U", true},
        {{0, 0, 0}, "", false},
        {{1, -1, 0}, "E 45 S", false},
    };
    for (const Case& c : cases) {
        bool isAxis = !c.isAxis;
        EXPECT_EQ(directionText(c.vector, &isAxis), c.text);
        EXPECT_EQ(isAxis, c.isAxis) << c.text;
    }
}

TEST(MacroText, OrientationPicksTheAxesThatAreAlongTheWorld) {
    EXPECT_EQ(orientationText(worldFrame), "Y is N AND Z is U");
    EXPECT_EQ(orientationText({{}, {1, 1, 0}, {-1, 1, 0}, {0, 0, 1}}), "Y is W 45 N AND Z is U");
    EXPECT_EQ(orientationText({{}, {1, 1, 0}, {0, 0, 1}, {1, -1, 0}}), "Y is U AND Z is E 45 S");
    EXPECT_EQ(orientationText({{}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}}), "X is E 45 N AND Z is U");
    EXPECT_EQ(orientationText({{}, {1, 0, 0}, {0, 1, 0}, {0, 1, 1}}), "Z is N 45 U AND X is E");
    EXPECT_EQ(axesText({1, 0, 0}, {0, 1, 0}), "X is E and Y is N");
}

TEST(MacroText, FramesRefuseAxesWithoutLength) {
    EXPECT_THROW(CoordFrame({}, {1, 0, 0}, {0, 0, 0}, {0, 0, 1}), ExportException);
    CoordFrame tiny;
    tiny.yAxis = {0, 1e-9, 0};  // passes the host's tolerance, has no direction text
    EXPECT_NO_THROW(tiny.check());
    EXPECT_THROW(orientationText(tiny), ExportException);
}

TEST(MacroText, QuotingEscapesNothingByItself) {
    EXPECT_EQ(escapeQuotes("O'Neil's"), "O''Neil''s");
    EXPECT_EQ(escapeQuotes("'"), "''");
    std::string line;
    for (const char* value : {"", "unset", "UNSET"}) {
        appendValue(line, value);
        line += ',';
    }
    appendRef(line, "A/B");
    appendRef(line, "unset");
    EXPECT_EQ(line, "'unset','unset','UNSET','/A/B''unset'");
    for (const char* good : {"", "12", "-1.5", " 1 2", "1.2.3"}) {
        EXPECT_TRUE(isNumericText(good)) << good;
    }
    for (const char* bad : {"1-", "1e5", "abc", "+1", " -1"}) {
        EXPECT_FALSE(isNumericText(bad)) << bad;
    }
}

}  // namespace
