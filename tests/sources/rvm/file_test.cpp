// The file as a whole: dialects, what is told, what is refused and where, and that nothing crashes.
#include "sources/rvm/rvm_writer.h"
#include "sources/rvm/told_review.h"

#include <chrono>

namespace {

RvmWriter twoBoxes(std::uint32_t groupVersion = 2) {
    RvmWriter writer;
    writer.group("/SITE", 1, groupVersion).group("/ZONE", 1, groupVersion).group("/E1", 1, groupVersion);
    writer.primitive(2, {1, 2, 3}).primitive(8, {10, 20});
    return writer.endGroup().endGroup().endGroup();
}

std::string refusalOf(std::string_view bytes) {
    const ToldReview told(bytes);
    EXPECT_NE(told.refusal, "");
    return told.refusal;
}

// A sample with everything: all kinds, roles, colours, facets with holes, and its attribute text.
std::string everything() {
    RvmWriter writer;
    writer.group("/S", 3, 3, 20).group("/Z", 4, 4, 0).group("/E", 5);
    const std::vector<std::pair<std::uint32_t, std::vector<double>>> kinds = {{1, {4, 4, 0, 2, 1, 0, 3}},
                                                                              {2, {1, 2, 3}},
                                                                              {3, {5, 7, 1, 1.5}},
                                                                              {4, {5, 1, 1.5}},
                                                                              {5, {4, 1}},
                                                                              {6, {3, 9}},
                                                                              {7, {2, 2, 6, 0, 0, 0.3, 0, 0, 0}},
                                                                              {8, {1, 0}},
                                                                              {9, {2}},
                                                                              {10, {5, 100}}};
    for (const auto& [kind, parameters] : kinds) {
        writer.primitive(kind, parameters);
    }
    writer.primitive(8, {1, 5}, {}, "OBST").primitive(8, {1, 5}, {}, "INSU");
    writer.facets({{{{0, 0, 0}, {9, 0, 0}, {9, 9, 0}, {4, 3, 0}, {0, 9, 0}}, {{1, 1, 0}, {2, 1, 0}, {1, 2, 0}}}});
    writer.endGroup().endGroup().endGroup();
    return writer.color(5, 250, 5, 5).finish(false);
}

constexpr std::string_view everyText =
    "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&\n"
    "NEW /S\nTYPE:= SITE &end& NAME:= /S\nNEW /Z\nTYPE:= ZONE\nNEW /E\nTYPE:= EQUI\nPOS:= E 1mm N 2m\nEND\nEND\nEND\n";

}  // namespace

TEST(RvmFile, EveryDialectOfHeadsAndGroupsIsRead) {
    for (const std::uint32_t version : {1U, 2U}) {
        RvmWriter writer(version);
        writer.group("/E1").primitive(2, {1, 2, 3}).endGroup();
        const ToldReview told(writer.finish(version == 1));
        EXPECT_EQ(told.refusal, "");
        EXPECT_EQ(told.builder.primitiveCount(), 1U);
        EXPECT_EQ(told.builder.projectName, "Project");
        EXPECT_EQ(told.builder.databases, std::vector<std::string>{"MODEL"});
    }
    for (const std::uint32_t version : {1U, 2U, 3U, 4U}) {
        const ToldReview told(twoBoxes(version).finish());
        EXPECT_EQ(told.refusal, "") << version;
        EXPECT_EQ(told.findings(), "");
        EXPECT_EQ(told.builder.primitiveCount(), 2U);
        EXPECT_EQ(told.taken("chunks"), 11U);
        EXPECT_EQ(told.taken("groups"), 3U);
    }
}

TEST(RvmFile, WhatIsOddIsToldWithItsPlaceAndTheRestIsTaken) {
    RvmWriter surplus = twoBoxes();
    const std::size_t place = surplus.size();
    const ToldReview one(surplus.endGroup().finish());
    EXPECT_EQ(one.findings(), "rvm.group-end-surplus 1");
    EXPECT_EQ(one.firstPlace("rvm.group-end-surplus").find("review.rvm: offset " + std::to_string(place)), 0U);
    EXPECT_EQ(one.builder.primitiveCount(), 2U);

    RvmWriter unknown = twoBoxes();
    const ToldReview two(unknown.begin("XYZ1", 1).word(7).word(8).close().finish());
    EXPECT_EQ(two.findings(), "rvm.chunk-unknown 1");
    EXPECT_TRUE(two.report.hasLosses());

    const ToldReview three(RvmWriter().group("/A").primitive(2, {1, 1, 1}).finish());
    EXPECT_EQ(three.findings(), "rvm.group-not-ended 1");
    EXPECT_EQ(three.builder.primitiveCount(), 1U);

    const ToldReview four(twoBoxes().finish() + "rest");
    EXPECT_EQ(four.findings(), "rvm.bytes-behind-end 1");
    const ToldReview five(RvmWriter().primitive(2, {1, 1, 1}).finish());
    EXPECT_EQ(five.findings(), "rvm.primitive-outside 1");
}

TEST(RvmFile, ChunksOutOfStepAreRefusedWithTagAndOffset) {
    RvmWriter writer;
    writer.group("/E1");
    const std::size_t box = writer.size();
    const std::string good = writer.primitive(2, {1, 2, 3}).endGroup().finish();
    const std::size_t next = box + 16;
    RvmWriter changed;
    const auto withNext = [&](std::uint32_t value) {
        changed.bytes() = good;
        changed.patch(next, value);
        return changed.bytes();
    };
    const std::string place = "offset " + std::to_string(box) + " (0x";
    const auto size = static_cast<std::uint32_t>(good.size());
    for (const std::uint32_t value : {0U, static_cast<std::uint32_t>(box), size + 1, 0xFFFFFFFFU}) {
        const std::string refusal = refusalOf(withNext(value));
        EXPECT_EQ(refusal.find(place), 0U) << refusal;
        EXPECT_NE(refusal.find("PRIM"), std::string::npos);
    }
    // A next that leads to no tag is refused there, one that skips a chunk by the chunk that is then too long.
    const auto end = static_cast<std::uint32_t>(box + 4 * (6 + 2 + 12 + 6 + 3));
    EXPECT_NE(refusalOf(withNext(end + 4)).find("no tag stands there"), std::string::npos);
    EXPECT_NE(refusalOf(withNext(end + 28)).find(place), std::string::npos);
    EXPECT_NE(refusalOf(good.substr(16)).find("no tag"), std::string::npos);
    EXPECT_NE(refusalOf(RvmWriter(2, "", false).group("/A").finish()).find("HEAD is expected"), std::string::npos);
    EXPECT_NE(refusalOf("").find("the file ends"), std::string::npos);
    EXPECT_NE(refusalOf(RvmWriter().group("/A", 1, 5).finish()).find("version 5"), std::string::npos);
}

TEST(RvmFile, HostileCountsAndDepthsAreRefusedSoon) {
    const auto begin = std::chrono::steady_clock::now();
    RvmWriter text;
    text.begin("CNTB", 2).word(0x40000000).close();
    EXPECT_NE(refusalOf(text.finish()).find("CNTB"), std::string::npos);
    RvmWriter deep;
    for (int i = 0; i < 100000; ++i) {
        deep.group("/G");
    }
    EXPECT_NE(refusalOf(deep.finish()).find("levels"), std::string::npos);
    std::string blocks = "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&\n";
    for (int i = 0; i < 100000; ++i) {
        blocks += "NEW A\n";
    }
    EXPECT_NE(ToldReview(twoBoxes().finish(), blocks).refusal.find("line 502"), std::string::npos);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
}

TEST(RvmFile, EveryTruncationIsRefusedAndEveryFlippedByteIsModelOrRefusal) {
    const std::string good = everything();
    {
        const ToldReview told(good, everyText);
        EXPECT_EQ(told.refusal, "");
        EXPECT_EQ(told.findings(), "");
        EXPECT_EQ(told.builder.primitiveCount(), 13U);
    }
    for (std::size_t size = 0; size < good.size(); ++size) {
        ASSERT_NE(ToldReview(good.substr(0, size), everyText).refusal.find("offset "), std::string::npos) << size;
    }
    std::size_t refused = 0;
    for (std::size_t i = 0; i < good.size(); ++i) {
        for (const int flip : {0x01, 0x80, 0xFF}) {
            std::string bad = good;
            bad[i] = static_cast<char>(bad[i] ^ flip);
            const ToldReview told(bad, everyText);
            refused += told.refusal.empty() ? 0 : 1;
            ASSERT_TRUE(told.refusal.empty() || told.refusal.find("offset ") == 0) << i << told.refusal;
        }
    }
    EXPECT_GT(refused, good.size() / 2);
    for (std::size_t i = 0; i < everyText.size(); ++i) {
        std::string bad(everyText);
        bad[i] = static_cast<char>(bad[i] ^ 0x15);
        ASSERT_EQ(ToldReview(good, bad).refusal, "");
        ASSERT_EQ(ToldReview(good, everyText.substr(0, i)).refusal, "");
    }
}

TEST(RvmFile, ColoursGoToThePaletteAndStayAsAttribute) {
    const ToldReview told(everything(), everyText);
    const ToldObject& equipment = told.builder.named("E");
    EXPECT_EQ(equipment.color, 1) << "red";
    EXPECT_EQ(equipment.attribute("rvm.colour"), "#FA0505");
    EXPECT_EQ(equipment.attribute("rvm.transparency"), "20") << "of the site, which holds for everything below";
    const ToldReview plain(RvmWriter().group("/E", 57).primitive(2, {1, 1, 1}).endGroup().finish());
    EXPECT_EQ(plain.builder.named("E").color, 57);
    EXPECT_EQ(plain.builder.named("E").attribute("rvm.colour"), "(none)");
}

TEST(RvmFile, GroupsOfAnotherColourKeepItInTheirPrimitives) {
    const ToldReview told(RvmWriter()
                              .group("/Z")
                              .group("/E", 5)
                              .group("/P", 6)
                              .primitive(2, {1, 1, 1})
                              .endGroup()
                              .primitive(2, {1, 1, 1})
                              .endGroup()
                              .endGroup()
                              .finish(),
                          "NEW /Z\nTYPE:=ZONE\nNEW /E\nTYPE:=EQUI\nNEW /P\nTYPE:=SUBE\nEND\nEND\nEND\n");
    EXPECT_EQ(told.builder.named("P").color, 6);
    const ToldReview folded(RvmWriter()
                                .group("/E", 5)
                                .group("BOX 1 of EQUIPMENT /E", 6)
                                .primitive(2, {1, 1, 1})
                                .endGroup()
                                .primitive(2, {1, 1, 1})
                                .endGroup()
                                .finish());
    ASSERT_EQ(folded.builder.primitiveCount(), 2U);
    const ToldObject& body = folded.builder.objects.back();
    EXPECT_EQ(body.color, 5);
    EXPECT_EQ(body.primitives[0]->color, 6);
    EXPECT_EQ(body.primitives[1]->color, 0);
}

TEST(RvmFile, TextsEndAtTheFirstZeroAndLatin1IsToldOnce) {
    const ToldReview told(RvmWriter()
                              .group(std::string_view("/A\0junk", 7))
                              .primitive(2, {1, 1, 1})
                              .endGroup()
                              .group("/B\xE4")
                              .primitive(2, {1, 1, 1})
                              .endGroup()
                              .group("/C\xF6")
                              .endGroup()
                              .finish());
    EXPECT_EQ(told.findings(), "text.not-utf8 1");
    EXPECT_EQ(told.builder.named("A").className, "HextStruct");
    EXPECT_EQ(told.builder.named("B\xC3\xA4").className, "HextStruct");
}
