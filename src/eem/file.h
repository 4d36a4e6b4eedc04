// The byte layer of an EEM file: numbers, texts and blocks, written front to back. It knows nothing of the plant model.
#pragma once

#include "eem/little_endian.h"
#include "exportbase/block_buffer.h"
#include "tolmar/file.h"

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace eem {

// The file would grow beyond what the format's offsets reach.
class FileTooLarge final : public std::runtime_error {
public:
    FileTooLarge() : std::runtime_error("the EEM file would be larger than 2 GiB") {}
};

// Most bytes of a file, its trailer included: block ends are signed 32-bit numbers.
inline constexpr std::uint64_t largestFile = std::numeric_limits<std::int32_t>::max();

// Writes into a file that belongs to the caller and must outlive this object. Call order: writePaperHeader for a file
// of papers, then blocks, then writeTrailer, then flush. Bytes reach the file in large blocks; a failed write shows on
// the file alone. Every operation may throw FileTooLarge, before the file has grown beyond `limit`; the file is then of
// no use.
class EemFile {
public:
    explicit EemFile(tolmar::OutputFile& file, std::uint64_t limit = largestFile);
    EemFile(const EemFile&) = delete;
    EemFile& operator=(const EemFile&) = delete;

    // Absolute offset of the next byte.
    std::uint64_t offset() const { return buffer_.offset(); }

    void writeInt(std::int32_t value) { putInt(room(intSize), value); }
    void writeInt64(std::int64_t value) { putInt64(room(int64Size), value); }
    void writeString(std::string_view text) { putString(room(intSize + text.size()), text); }

    void writePaperHeader();
    void writeTrailer();

    // Blocks may be nested. A block's first field is its end, which endBlock fills in.
    void beginBlock();
    void endBlock();
    // Overwrites an int that was written at `place`.
    void patchInt(std::uint64_t place, std::int32_t value);

    // `size` bytes to be filled in at once, counted as written; the place holds until the next operation.
    char* room(std::size_t size) {
        if (!buffer_.holds(size)) {
            checkLimit(size);
        }
        return buffer_.room(size);
    }
    // Gives back what was not needed of the last room: the file goes on at `end`, within it or just behind it.
    void endRoom(const char* end) { buffer_.endRoom(end); }
    // Hands large blocks on; what was written before can no longer be taken back.
    void settle() {
        if (buffer_.isFull()) {
            checkLimit(0);
            flush();
        }
    }
    void flush() { buffer_.flush(); }

private:
    static constexpr std::size_t intSize = 4;
    static constexpr std::size_t int64Size = 8;

    // Throws when `more` bytes and the trailer do not fit.
    void checkLimit(std::size_t more) const;

    tolmar::OutputFile& file_;
    std::uint64_t limit_;
    BlockBuffer buffer_;
    std::vector<std::uint64_t> openBlocks_;
};

}  // namespace eem
