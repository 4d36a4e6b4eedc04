// The chunks of an RVM file, one behind the other. All words are 32 bits, most significant byte first.
//
//   chunk   tag, word next, word 1, body
//   tag     four characters, each in the last byte of a word
//   next    absolute offset of the byte behind the chunk, which for CNTB is the first one of the group's contents
//   text    word n, then n words of characters, zero padded
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace plant::rvm {

enum class Tag : std::uint32_t {
    Head = 0x48454144,         // HEAD
    Model = 0x4D4F444C,        // MODL
    GroupBegin = 0x434E5442,   // CNTB
    GroupEnd = 0x434E5445,     // CNTE
    Primitive = 0x5052494D,    // PRIM
    Obstruction = 0x4F425354,  // OBST
    Insulation = 0x494E5355,   // INSU
    Color = 0x434F4C52,        // COLR
    End = 0x454E443A           // END:
};

// The four characters; those that do not print as "?".
std::string tagText(Tag tag);
// "offset 500 (0x1F4)"
std::string placeOf(std::uint64_t offset);
// Refuses with that place.
[[noreturn]] void refuseAt(std::uint64_t offset, const std::string& what);

inline std::uint32_t wordAt(const char* at) {
    std::uint32_t word;
    std::memcpy(&word, at, sizeof word);
    return __builtin_bswap32(word);
}
inline float floatAt(const char* at) {
    return std::bit_cast<float>(wordAt(at));
}

struct Chunk {
    Tag tag;
    std::uint64_t offset;
    std::uint64_t body;
    std::uint64_t next;
};

// Reads the words of one chunk's body. What lies beyond the chunk is refused with the chunk's place.
class Body {
public:
    Body(std::string_view file, const Chunk& chunk)
        : file_(file.data()), chunk_(&chunk), at_(file.data() + chunk.body), end_(file.data() + chunk.next) {}

    std::size_t left() const { return static_cast<std::size_t>(end_ - at_); }
    std::uint64_t offset() const { return static_cast<std::uint64_t>(at_ - file_); }
    const char* take(std::size_t size) {
        if (size > left()) [[unlikely]] {
            refuseShort();
        }
        const char* start = at_;
        at_ += size;
        return start;
    }
    std::uint32_t word() { return wordAt(take(4)); }
    double number() { return static_cast<double>(floatAt(take(4))); }
    // The characters up to the first zero byte.
    std::string_view text();
    // Refuses a chunk that does not end here.
    void finish() const {
        if (at_ != end_) [[unlikely]] {
            refuseLong();
        }
    }

private:
    [[noreturn]] void refuseShort() const;
    [[noreturn]] void refuseLong() const;

    const char* file_;
    const Chunk* chunk_;
    const char* at_;
    const char* end_;
};

// The chunk that begins at an offset. Refuses where no tag stands, where the file ends within the head, and a `next`
// that leads back or out of the file.
Chunk chunkAt(std::string_view file, std::uint64_t offset);
bool isKnown(Tag tag);

}  // namespace plant::rvm
