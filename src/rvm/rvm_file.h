// The byte layer of an RVM file: a chain of tagged chunks, written front to back. It knows nothing of the plant model.
#pragma once

#include "tolmar/file.h"

#include <array>
#include <cstdint>
#include <memory>
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
    std::uint64_t offset() const { return flushed_ + used_; }

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
    void takeBack(std::uint64_t mark) { used_ = static_cast<std::size_t>(mark - flushed_); }

    // `size` bytes to be filled in at once, counted as written; the place holds until the next operation.
    char* room(std::size_t size) {
        if (capacity_ - used_ < size) {
            grow(size);
        }
        char* place = buffer_.get() + used_;
        used_ += size;
        return place;
    }
    // Hands large blocks on; what was written before can no longer be taken back.
    void settle() {
        if (used_ > blockSize) {
            flush();
        }
    }
    void flush();

private:
    // More than OutputFile's own buffer, so that a block goes to the system without another copy.
    static constexpr std::size_t blockSize = std::size_t{1} << 20U;

    void grow(std::size_t size);

    tolmar::OutputFile& file_;
    std::unique_ptr<char[]> buffer_;
    std::size_t capacity_;
    std::size_t used_ = 0;
    std::uint64_t flushed_ = 0;
};

}  // namespace rvm
