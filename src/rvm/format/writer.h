// The byte layer of an RVM file: a chain of tagged chunks, written front to back. It knows nothing of the plant model.
#pragma once

#include "exportbase/block_buffer.h"

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace rvm {

// A chunk would begin or end beyond what the format's 32-bit offsets reach.
class FileTooLarge final : public std::runtime_error {
public:
    FileTooLarge() : std::runtime_error("the RVM file would be larger than 4 GiB") {}
};

// Axis-aligned box in the local frame of a primitive: least, then greatest coordinates.
using Box = std::array<float, 6>;
// Local X, Y and Z axis, then the origin, in the file's unit.
using Matrix = std::array<float, 12>;

struct PrimitiveHead {
    std::uint32_t kind = 0;
    bool isObstruction = false;
    const Matrix* matrix = nullptr;
    Box box{};
    std::uint64_t parameterBytes = 0;
};

// Material that a caller gives to a group without one of its own.
inline constexpr std::uint32_t noMaterial = 0xFFFFFFFF;

// Number of bytes that a text takes, its count word included.
constexpr std::size_t textSize(std::string_view text) {
    const std::size_t words = text.size() / 4 + (text.size() % 4 != 0 ? 1 : 0);
    return 4 + 4 * words;
}

// Writes into a file that belongs to the caller and must outlive this object. Call order: writeHeader, then properly
// nested writeGroupBegin and writeGroupEnd with primitive chunks between them, then writeEnd, then flush. Each
// operation returns the number of bytes that it added. Bytes reach the file in large blocks; a failed write shows on
// the file alone. Every operation that computes an offset may throw FileTooLarge, and the file is then of no use.
class RvmFile {
public:
    explicit RvmFile(tolmar::OutputFile& file);
    RvmFile(const RvmFile&) = delete;
    RvmFile& operator=(const RvmFile&) = delete;

    // Absolute offset of the next byte.
    std::uint64_t offset() const { return buffer_.offset(); }

    std::size_t writeWord(std::uint32_t value);
    std::size_t writeFloat(float value);
    // Four characters.
    std::size_t writeTag(std::string_view chars);
    std::size_t writeText(std::string_view text);

    // HEAD and MODL. The texts go out as they are.
    std::size_t writeHeader(std::string_view projectName, std::string_view databaseName);
    // `name` is UTF-8.
    std::size_t writeGroupBegin(std::string_view name, std::uint32_t material);
    std::size_t writeGroupEnd();
    std::size_t writeEnd();

    // PRIM or OBST up to its parameters, of which the caller then writes exactly head.parameterBytes.
    std::size_t writePrimitiveHead(const PrimitiveHead& head);
    // A place to go back to. It holds until the next writeGroupEnd or settle.
    std::uint64_t mark() const { return offset(); }
    void takeBack(std::uint64_t mark) { buffer_.takeBack(mark); }

    // `size` bytes to be filled in at once, counted as written; the place holds until the next operation.
    char* room(std::size_t size) { return buffer_.room(size); }
    // Hands large blocks on; what was written before can no longer be taken back.
    void settle() {
        if (buffer_.isFull()) {
            flush();
        }
    }
    void flush() { buffer_.flush(); }

private:
    BlockBuffer buffer_;
};

}  // namespace rvm
