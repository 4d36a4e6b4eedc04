// The attribute text by itself: blocks, lines, values.
#include "sources/attributes/lines.h"
#include "sources/attributes/values.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace plant::attributes;

namespace {

constexpr std::string_view head = "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&\n";

// Blocks as "name(key=value,...)[sons]".
std::string spelled(const Index& index, std::uint32_t block) {
    std::string text;
    for (; block != noBlock; block = index.blocks()[block].brother) {
        const Block& one = index.blocks()[block];
        text += std::string(index.nameOf(one)) + "(";
        eachAttribute(index, one, [&](std::string_view key, std::string_view value, std::uint32_t line) {
            text += std::string(key) + "=" + std::string(unquoted(value)) + "@" + std::to_string(line) + ",";
        });
        text += ")";
        if (one.son != noBlock) {
            text += "[" + spelled(index, one.son) + "]";
        }
    }
    return text;
}

struct Read {
    plant::SourceReport report;
    std::string text;

    explicit Read(const std::string& bytes) {
        const Index index(bytes, "a.txt", report);
        text = spelled(index, index.firstTop());
    }
    std::string findings() const {
        std::string all;
        for (const plant::SourceFinding& finding : report.findings()) {
            all += finding.code + " " + finding.first.front().place + ";";
        }
        return all;
    }
};

std::string blocks(const std::string& bytes) {
    return Read(bytes).text;
}

}  // namespace

TEST(AttributeText, BlocksAndTheirAttributesInAnyForm) {
    const std::string h(head);
    EXPECT_EQ(blocks(h + "NEW /A\n A:= 1\nNEW /B\nB:=2\nEND\nC:=3\nEND\n"), "/A(A=1@3,C=3@7,)[/B(B=2@5,)]");
    EXPECT_EQ(blocks("\xEF\xBB\xBF" + h + "NEW /A\r\n\tA:= 1\r\nEND\r\n"), "/A(A=1@3,)");
    EXPECT_EQ(blocks(h + "NEW /A\nA:=1 &end& B:= 'x y' &end& C:=\nEND"), "/A(A=1@3,B=x y@3,C=@3,)");
    EXPECT_EQ(blocks(h + "NEW /A\nENDREF:= =1/2\nEND X:=4\nNEW Y:= 5\nEND\n"),
              "/A(ENDREF==1/2@3,END X=4@4,NEW Y=5@5,)");
    EXPECT_EQ(blocks(h + "NEW /A\n:EDF.SAVING \"q\":= a:=b\nEND\n"), "/A(:EDF.SAVING \"q\"=a:=b@3,)");
    EXPECT_EQ(blocks(h + "NEW FLANGE 2 of BRANCH /X/B1\nEND\n"), "FLANGE 2 of BRANCH /X/B1()");
    EXPECT_EQ(blocks("CADC_Attributes_File v1.0 , start: BEGIN , end: STOP , name_end: == , sep: ||\n"
                     "BEGIN /A\nA== 1 || B==2\nSTOP\n"),
              "/A(A=1@3,B=2@3,)");
    EXPECT_EQ(blocks(""), "");
}

TEST(AttributeText, WhatDoesNotFitIsToldWithItsLine) {
    const std::string h(head);
    EXPECT_EQ(Read(h + "NEW /A\nwhat is this\nEND\n").findings(), "attributes.line-unknown a.txt: line 3;");
    EXPECT_EQ(Read(h + "NEW /A\nEND\nEND\n").findings(), "attributes.end-surplus a.txt: line 4;");
    EXPECT_EQ(Read(h + "NEW /A\nNEW /B\nEND\n").findings(), "attributes.block-not-ended a.txt: line 2;");
    EXPECT_EQ(Read(h + "A:=1\n").findings(), "attributes.outside a.txt: line 2;");
    EXPECT_EQ(Read(h + "NEW /A\nA:=1 &end& tail\nEND\n").findings(), "attributes.line-unknown a.txt: line 3;");
}

TEST(AttributeText, TypesAndReferencesAreNotedInAnyCase) {
    const std::string bytes = std::string(head) + "NEW /A\nName:= /A &end& Type:= 'site' &end& RefNo:= =1/2\nEND\n"
                                                  "NEW /B\nClass:=  HextZone\nREF:= =3/4\nEND\n";
    plant::SourceReport report;
    const Index index(bytes, "a.txt", report);
    ASSERT_EQ(index.blocks().size(), 2U);
    EXPECT_EQ(index.wordOf(index.blocks()[0].type), "SITE");
    EXPECT_EQ(index.refOf(index.blocks()[0]), "=1/2");
    EXPECT_EQ(index.wordOf(index.blocks()[1].classType), "HextZone");
    EXPECT_EQ(index.refOf(index.blocks()[1]), "=3/4");
    EXPECT_EQ(report.balances().size(), 2U);
    EXPECT_EQ(report.balances()[1].read, 5U);
}

TEST(AttributeText, NumbersWithTheirUnits) {
    const auto value = [](std::string_view text) { return readMeasure(text) ? readMeasure(text)->value : -1; };
    EXPECT_DOUBLE_EQ(value("1336.5mm"), 1336.5);
    EXPECT_DOUBLE_EQ(value("2m"), 2000);
    EXPECT_DOUBLE_EQ(value("-2 in"), -50.8);
    EXPECT_DOUBLE_EQ(value("+1.5E3"), 1500);
    EXPECT_DOUBLE_EQ(value("90deg"), 90);
    EXPECT_DOUBLE_EQ(value("212degF"), 100);
    EXPECT_DOUBLE_EQ(value("16bar"), 1.6);
    EXPECT_DOUBLE_EQ(value("600000pascal"), 0.6);
    EXPECT_FALSE(readMeasure("12 apples"));
    EXPECT_FALSE(readMeasure(""));
    EXPECT_FALSE(readMeasure("1e999mm"));
    EXPECT_FALSE(readLength("90deg"));
    EXPECT_DOUBLE_EQ(*readBore("2in"), 50);
    EXPECT_DOUBLE_EQ(*readBore("0.75in"), 20);
    EXPECT_DOUBLE_EQ(*readBore("100mm"), 100);
    EXPECT_DOUBLE_EQ(*readBore("80"), 80);
}

TEST(AttributeText, PositionsDirectionsOrientations) {
    const auto near = [](const HxGePoint3D& a, const HxGePoint3D& b) { return a.distanceTo(b) < 1e-9; };
    EXPECT_TRUE(near(*readPosition("E 152984mm N 154899.8mm U 1336.5mm"), {152984, 154899.8, 1336.5}));
    EXPECT_TRUE(near(*readPosition("W 1m S 2 D 3in WRT /SITE"), {-1000, -2, -76.2}));
    EXPECT_TRUE(near(*readPosition("W 10mm in /X"), {-10, 0, 0}));
    EXPECT_TRUE(near(*readPosition("E10 N20 U30"), {10, 20, 30}));
    EXPECT_FALSE(readPosition(""));
    EXPECT_FALSE(readPosition("unset"));
    EXPECT_FALSE(readPosition("E"));
    EXPECT_FALSE(readPosition("E 10 X 4"));
    const auto along = [](std::string_view text) { return readDirection(text).value_or(HxGeVector3D()); };
    EXPECT_TRUE(along("D").isEqualTo({0, 0, -1}));
    EXPECT_TRUE(along("E 45 N").isEqualTo({std::sqrt(0.5), std::sqrt(0.5), 0}));
    EXPECT_TRUE(along("N 90 U WRT /X").isEqualTo({0, 0, 1}));
    EXPECT_FALSE(readDirection("E 45"));
    EXPECT_FALSE(readDirection("EAST"));
    const auto turned = readOrientation("Y is N and Z is U");
    ASSERT_TRUE(turned);
    EXPECT_TRUE(turned->x.isEqualTo({1, 0, 0}));
    const auto other = readOrientation("Z is E and X is U WRT /*");
    ASSERT_TRUE(other);
    EXPECT_TRUE(other->y.isEqualTo({0, -1, 0})) << "Z cross X";
    EXPECT_FALSE(readOrientation("Y is N and Y is U"));
    EXPECT_FALSE(readOrientation("Y is N"));
}
