#include "support.h"

#include "support/test_support.h"

namespace {

using namespace std::string_literals;
using rvm::RvmFile;

template <typename Write>
std::string written(Write&& write) {
    std::string bytes;
    tolmar::OutputFile file = memoryFile(bytes);
    RvmFile out(file);
    write(out);
    out.flush();
    EXPECT_TRUE(file.close());
    return bytes;
}

TEST(RvmFile, ElementsStandMostSignificantByteFirst) {
    EXPECT_EQ(hexOf(written([](RvmFile& out) {
                  EXPECT_EQ(out.writeWord(0x01020304), 4U);
                  EXPECT_EQ(out.writeFloat(-1.5F), 4U);
                  EXPECT_EQ(out.writeTag("HEAD"), 16U);
              })),
              "01 02 03 04 BF C0 00 00 00 00 00 48 00 00 00 45 00 00 00 41 00 00 00 44 ");
}

TEST(RvmFile, TextsAreFilledUpToWords) {
    struct Case {
        std::string text;
        const char* hex;
    };
    const Case cases[] = {{"", "00 00 00 00 "},
                          {"A", "00 00 00 01 41 00 00 00 "},
                          {"ABC", "00 00 00 01 41 42 43 00 "},
                          {"ABCD", "00 00 00 01 41 42 43 44 "},
                          {"ABCDE", "00 00 00 02 41 42 43 44 45 00 00 00 "}};
    for (const Case& c : cases) {
        std::size_t size = 0;
        EXPECT_EQ(hexOf(written([&](RvmFile& out) { size = out.writeText(c.text); })), c.hex);
        EXPECT_EQ(size, rvm::textSize(c.text));
        // The rule in words: a multiple of four needs no terminator, any other length is cut and gets a word more.
        const std::size_t length = c.text.size();
        EXPECT_EQ(size, length % 4 == 0 ? length + 4 : (length & ~std::size_t{3}) + 8);
    }
}

TEST(RvmFile, HeaderIsSpelledOut) {
    const std::string bytes = written([](RvmFile& out) {
        EXPECT_EQ(out.writeHeader("PRJ", "MAIN"), 216U + 8 + 8);
        EXPECT_EQ(out.offset(), 232U);
    });
    const std::string expected =
        bytesOf("00000048 00000045 00000041 00000044 000000BC 00000001 00000002 00000014") +
        "ORNA ORNA\0            \xE8"s + "1.SP4.48[6751]  (WINDOWS-NT 6.3)  "s + "(2  Jul 2018 : 08:08)\0\0"s +
        bytesOf("00000000 00000006") + "Thu May  7 12:36:22 2020" + bytesOf("00000005") + "tessaro@tolmar-host\0"s +
        bytesOf("00000004") + "Unicode UTF-8\0\0\0"s + bytesOf("0000004D 0000004F 00000044 0000004C") +
        bytesOf("000000E8 00000001 00000001 00000001 50524A00 00000001") + "MAIN";
    EXPECT_EQ(hexOf(bytes), hexOf(expected));
}

TEST(RvmFile, GroupsPointBehindTheirFixedParts) {
    const std::string bytes = written([](RvmFile& out) {
        EXPECT_EQ(out.writeGroupBegin("", rvm::noMaterial), 48U);
        EXPECT_EQ(out.writeGroupBegin("AB", 25), 52U);
        EXPECT_EQ(out.writeGroupEnd(), 28U);
        EXPECT_EQ(out.writeEnd(), 28U);
    });
    const char* expected = "00000043 0000004E 00000054 00000042 00000030 00000001 00000002 00000000"
                           "00000000 00000000 00000000 00000001"
                           "00000043 0000004E 00000054 00000042 00000064 00000001 00000002 00000001 41420000"
                           "00000000 00000000 00000000 00000019"
                           "00000043 0000004E 00000054 00000045 00000080 00000001 00000002"
                           "00000045 0000004E 00000044 0000003A 0000009C 00000001 00000001";
    EXPECT_EQ(hexOf(bytes), hexOf(bytesOf(expected)));
}

TEST(RvmFile, PrimitiveHeadsCountTheirParameters) {
    const rvm::Matrix matrix{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    for (const bool isObstruction : {false, true}) {
        const std::string bytes = written([&](RvmFile& out) {
            out.writeWord(0);
            rvm::PrimitiveHead head{rvm::kindCylinder, isObstruction, &matrix, {-1, -2, -3, 1, 2, 3}, 8};
            EXPECT_EQ(out.writePrimitiveHead(head), isObstruction ? 108U : 104U);
        });
        const std::string expected =
            "00000000" +
            std::string(isObstruction ? "0000004F 00000042 00000053 00000054 00000078"
                                      : "00000050 00000052 00000049 0000004D 00000074") +
            "00000001 00000001 00000008 3F800000 40000000 40400000 40800000 40A00000 40C00000 40E00000 41000000"
            "41100000 41200000 41300000 41400000 BF800000 C0000000 C0400000 3F800000 40000000 40400000" +
            (isObstruction ? "00000019" : "");
        EXPECT_EQ(hexOf(bytes), hexOf(bytesOf(expected)));
    }
}

TEST(RvmFile, WhatIsTakenBackLeavesNoBytes) {
    const std::string bytes = written([](RvmFile& out) {
        out.writeWord(1);
        const std::uint64_t mark = out.mark();
        out.writeGroupBegin(std::string(3 << 20, 'x'), 1);
        out.takeBack(mark);
        EXPECT_EQ(out.offset(), 4U);
        out.writeWord(2);
    });
    EXPECT_EQ(hexOf(bytes), "00 00 00 01 00 00 00 02 ");
}

TEST(RvmFile, LargeFilesKeepTheirOffsetsAcrossBlocks) {
    const std::string bytes = written([](RvmFile& out) {
        out.writeHeader("p", "d");
        for (int i = 0; i < 40000; ++i) {
            out.writeGroupBegin(i % 1000 == 0 ? std::string(5000, 'n') : "name", 1);
            out.writeGroupEnd();
        }
        out.writeEnd();
    });
    readers::Findings findings;
    EXPECT_EQ(readers::rvm::readRvm(bytes, findings).groups.size(), 40000U);
    EXPECT_EQ(allFindings(findings), "");
}

TEST(RvmFile, OffsetsBeyondTheFormatAreRefused) {
    // A sink that swallows everything, so that only the count grows.
    class Nothing final : public tolmar::Sink {
        bool write(const char*, std::size_t) override { return true; }
        bool writeAt(std::uint64_t, const char*, std::size_t) override { return true; }
        bool truncate(std::uint64_t) override { return true; }
        bool close() override { return true; }
    };
    tolmar::OutputFile file(std::make_unique<Nothing>(), tolmar::FileMode::Binary);
    RvmFile out(file);
    for (int i = 0; i < 4095; ++i) {
        out.room(1 << 20);
        out.settle();
    }
    rvm::PrimitiveHead head{rvm::kindFacets, false, &rvm::facetMatrix(), {}, 80};
    EXPECT_NO_THROW(out.writePrimitiveHead(head));
    head.parameterBytes = 2 << 20;
    EXPECT_THROW(out.writePrimitiveHead(head), rvm::FileTooLarge);
    out.room(1 << 20);
    EXPECT_THROW(out.writeGroupBegin("n", 1), rvm::FileTooLarge);
}

TEST(RvmFile, AFailingSinkShowsOnTheFile) {
    std::string bytes;
    tolmar::OutputFile file = memoryFile(bytes, tolmar::FileMode::Binary, 1000);
    RvmFile out(file);
    for (int i = 0; i < 100; ++i) {
        out.writeGroupBegin("group", 1);
        out.writeGroupEnd();
    }
    out.flush();
    EXPECT_FALSE(file.close());
}

}  // namespace
