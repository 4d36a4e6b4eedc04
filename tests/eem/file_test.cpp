// The byte layer: numbers, blocks that are patched wherever they stand, and the limit of the offsets.
#include "support.h"

#include <cstring>

namespace {

using eem::EemFile;

// What `fill` writes, with the limit of the file.
template <typename Fill>
std::string written(Fill&& fill, std::uint64_t limit = eem::largestFile) {
    std::string bytes;
    tolmar::OutputFile target(std::make_unique<MemorySink>(bytes), tolmar::FileMode::Binary);
    EemFile file(target, limit);
    fill(file);
    file.flush();
    EXPECT_TRUE(target.close());
    return bytes;
}

TEST(EemFile, NumbersAndTextsAreLittleEndian) {
    EXPECT_EQ(hexOf(written([](EemFile& file) {
                  file.writeInt(-2);
                  file.writeInt64(0x0102030405060708);
                  file.endRoom(file.room(3 << 20));  // taken back
                  file.writeString("AB");
                  file.writePaperHeader();
                  file.writeTrailer();
              })),
              "FE FF FF FF "
              "08 07 06 05 04 03 02 01 "
              "02 00 00 00 41 42 "
              "03 00 00 00 50 49 44 01 00 00 00 "
              "04 00 00 00 45 4E 44 45 ");
}

// An empty block, its end told, of a name of four bytes.
void writeBlock(EemFile& file, std::size_t filling) {
    file.beginBlock();
    for (const char* text : {"NA:", "ABCD", "OBJID:"}) {
        file.writeString(text);
    }
    file.writeInt64(7);
    file.writeString("GEO:");
    file.writeInt(0);
    file.room(filling);
    file.endBlock();
}

TEST(EemFile, ABlockEndsWhereTheNextOneBegins) {
    const std::string bytes = written([](EemFile& file) {
        writeBlock(file, 0);
        file.beginBlock();
        writeBlock(file, 0);
        file.endBlock();
    });
    EXPECT_EQ(hexOf(bytes.substr(0, 4)), "31 00 00 00 ") << "49";
    EXPECT_EQ(hexOf(bytes.substr(49, 8)), "66 00 00 00 66 00 00 00 ") << "a block within a block: both end at 102";
}

TEST(EemFile, ABlockIsPatchedAlsoWhenItsStartIsOut) {
    constexpr std::size_t large = 5 << 20;
    const std::string bytes = written([](EemFile& file) {
        writeBlock(file, 0);
        file.beginBlock();
        const std::uint64_t count = file.offset();
        file.writeInt(0);
        for (std::size_t left = large; left > 0; left -= 1024) {
            std::memset(file.room(1024), 'x', 1024);
            file.settle();
        }
        file.patchInt(count, 0x01020304);
        file.endBlock();
    });
    ASSERT_EQ(bytes.size(), 49 + 8 + large);
    EXPECT_EQ(hexOf(bytes.substr(49, 10)), "39 00 50 00 04 03 02 01 78 78 ");
    EXPECT_EQ(bytes.find_first_not_of('x', 57), std::string::npos);
}

TEST(EemFile, NothingIsWrittenBeyondTheLimit) {
    const auto twoBlocks = [](EemFile& file) {
        writeBlock(file, 0);
        writeBlock(file, 0);
        file.writeTrailer();
    };
    EXPECT_EQ(written(twoBlocks, 106).size(), 106U);
    EXPECT_THROW(written(twoBlocks, 105), eem::FileTooLarge) << "the trailer counts";
    EXPECT_THROW(written([](EemFile& file) { file.room(std::size_t{1} << 31U); }), eem::FileTooLarge)
        << "before memory is taken";
    EXPECT_THROW(written(
                     [](EemFile& file) {
                         for (;;) {
                             file.room(1 << 20);
                             file.settle();
                         }
                     },
                     100 << 20),
                 eem::FileTooLarge)
        << "in the middle of a block";
}

TEST(EemFile, AFailedWriteShowsOnTheFile) {
    std::string bytes;
    tolmar::OutputFile target(std::make_unique<MemorySink>(bytes, 40), tolmar::FileMode::Binary);
    EemFile file(target);
    writeBlock(file, 0);
    file.flush();
    EXPECT_FALSE(target.close());
}

}  // namespace
