#include "rvm/format/writer.h"

#include "rvm/format/big_endian.h"

#include <cstring>
#include <limits>

// A file is  HEAD MODL group... END:  and a group is  CNTB content... CNTE , a content being a group or a primitive
// chunk. All numbers are big-endian:
//
//   word    32 bits, unsigned
//   float   IEEE 754 single precision
//   tag     four characters, each in the last byte of a word
//   text    word n, then n words of characters, the last one filled up with zero bytes; no terminator otherwise
//
//   HEAD    tag, next, word 1, word 2, then texts: info, note, date, user, encoding
//   MODL    tag, next, word 1, word 1, text project, text database
//   CNTB    tag, next, word 1, word 2, text name, 3 floats translation, word material
//   CNTE    tag, next, word 1, word 2
//   PRIM    tag, next, word 1, word 1, word kind, 12 floats matrix, 6 floats box, parameters
//   OBST    as PRIM, with the word 25 between box and parameters
//   END:    tag, next, word 1, word 1
//
// `next` is a word: the absolute offset of the byte behind the chunk's own fixed part, which for CNTB is the first byte
// of the group's contents and for all others the first byte behind the chunk. Sizes are known ahead, so no chunk is
// patched.

namespace rvm {

namespace {

constexpr std::size_t wordSize = 4;
constexpr std::size_t tagSize = 4 * wordSize;
constexpr std::size_t nextAndVersions = 3 * wordSize;
constexpr std::size_t plainChunkSize = tagSize + nextAndVersions;
constexpr std::size_t groupFixedSize = plainChunkSize + 4 * wordSize;
constexpr std::size_t primitiveFixedSize = plainChunkSize + wordSize + 12 * wordSize + 6 * wordSize;
constexpr std::size_t modelFixedSize = plainChunkSize;
constexpr std::uint32_t defaultMaterial = 1;
constexpr std::uint32_t obstructionWord = 25;

using Tag = std::array<char, tagSize>;

constexpr Tag tagOf(std::string_view chars) {
    Tag tag{};
    for (std::size_t i = 0; i < 4; ++i) {
        tag[4 * i + 3] = chars[i];
    }
    return tag;
}

constexpr Tag headTag = tagOf("HEAD");
constexpr Tag modelTag = tagOf("MODL");
constexpr Tag groupBeginTag = tagOf("CNTB");
constexpr Tag groupEndTag = tagOf("CNTE");
constexpr Tag primitiveTag = tagOf("PRIM");
constexpr Tag obstructionTag = tagOf("OBST");
constexpr Tag endTag = tagOf("END:");

using namespace std::string_view_literals;

// The texts of HEAD, the same in every file. Zero bytes that end a text are part of it.
constexpr auto infoText = "ORNA ORNA\0            \xE8"
                          "1.SP4.48[6751]  (WINDOWS-NT 6.3)  (2  Jul 2018 : 08:08)\0\0"sv;
constexpr auto noteText = ""sv;
constexpr auto dateText = "Thu May  7 12:36:22 2020"sv;
constexpr auto userText = "tessaro@tolmar-host\0"sv;
constexpr auto encodingText = "Unicode UTF-8\0\0\0"sv;
constexpr std::size_t headSize = plainChunkSize + textSize(infoText) + textSize(noteText) + textSize(dateText) +
                                 textSize(userText) + textSize(encodingText);
static_assert(infoText.size() == 80 && dateText.size() == 24 && userText.size() == 20 && encodingText.size() == 16);
static_assert(headSize == 188);

std::uint32_t nextOf(std::uint64_t offset) {
    if (offset > std::numeric_limits<std::uint32_t>::max()) {
        throw FileTooLarge();
    }
    return static_cast<std::uint32_t>(offset);
}

char* putTag(char* at, const Tag& tag) {
    std::memcpy(at, tag.data(), tag.size());
    return at + tag.size();
}

char* putVersions(char* at, std::uint32_t first, std::uint32_t second) {
    return putWord(putWord(at, first), second);
}

char* putText(char* at, std::string_view text) {
    const std::size_t bytes = textSize(text) - wordSize;
    at = putWord(at, static_cast<std::uint32_t>(bytes / wordSize));
    if (bytes != 0) {
        std::memset(at + bytes - wordSize, 0, wordSize);
        std::memcpy(at, text.data(), text.size());
    }
    return at + bytes;
}

template <std::size_t N>
char* putFloats(char* at, const std::array<float, N>& values) {
    for (const float value : values) {
        at = putFloat(at, value);
    }
    return at;
}

}  // namespace

RvmFile::RvmFile(tolmar::OutputFile& file) : buffer_(file) {}

std::size_t RvmFile::writeWord(std::uint32_t value) {
    putWord(room(wordSize), value);
    return wordSize;
}

std::size_t RvmFile::writeFloat(float value) {
    putFloat(room(wordSize), value);
    return wordSize;
}

std::size_t RvmFile::writeTag(std::string_view chars) {
    putTag(room(tagSize), tagOf(chars));
    return tagSize;
}

std::size_t RvmFile::writeText(std::string_view text) {
    const std::size_t size = textSize(text);
    putText(room(size), text);
    return size;
}

std::size_t RvmFile::writeHeader(std::string_view projectName, std::string_view databaseName) {
    const std::size_t size = headSize + modelFixedSize + textSize(projectName) + textSize(databaseName);
    char* at = putTag(room(size), headTag);
    at = putVersions(putWord(at, headSize), 1, 2);
    for (const std::string_view text : {infoText, noteText, dateText, userText, encodingText}) {
        at = putText(at, text);
    }
    at = putTag(at, modelTag);
    at = putVersions(putWord(at, nextOf(offset())), 1, 1);
    putText(putText(at, projectName), databaseName);
    return size;
}

std::size_t RvmFile::writeGroupBegin(std::string_view name, std::uint32_t material) {
    const std::size_t size = groupFixedSize + textSize(name);
    char* at = putTag(room(size), groupBeginTag);
    at = putVersions(putWord(at, nextOf(offset())), 1, 2);
    at = putFloats(putText(at, name), std::array<float, 3>{});
    putWord(at, material == noMaterial ? defaultMaterial : material);
    return size;
}

std::size_t RvmFile::writeGroupEnd() {
    char* at = putTag(room(plainChunkSize), groupEndTag);
    putVersions(putWord(at, nextOf(offset())), 1, 2);
    settle();
    return plainChunkSize;
}

std::size_t RvmFile::writeEnd() {
    char* at = putTag(room(plainChunkSize), endTag);
    putVersions(putWord(at, nextOf(offset())), 1, 1);
    return plainChunkSize;
}

std::size_t RvmFile::writePrimitiveHead(const PrimitiveHead& head) {
    const std::size_t size = primitiveFixedSize + (head.isObstruction ? wordSize : 0);
    char* at = putTag(room(size), head.isObstruction ? obstructionTag : primitiveTag);
    at = putVersions(putWord(at, nextOf(offset() + head.parameterBytes)), 1, 1);
    at = putWord(at, head.kind);
    at = putFloats(putFloats(at, *head.matrix), head.box);
    if (head.isObstruction) {
        putWord(at, obstructionWord);
    }
    return size;
}

}  // namespace rvm
