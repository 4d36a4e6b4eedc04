// Bytes of a file on their way to it, in large blocks: what was written lately can still be changed or taken back.
#pragma once

#include "tolmar/file.h"

#include <cstddef>
#include <cstdint>
#include <memory>

// Writes into a file that belongs to the caller and must outlive this object. Nothing is flushed at its end; a failed
// write shows on the file alone. Offsets count from the first byte that went through this buffer.
class BlockBuffer {
public:
    explicit BlockBuffer(tolmar::OutputFile& file);
    BlockBuffer(const BlockBuffer&) = delete;
    BlockBuffer& operator=(const BlockBuffer&) = delete;

    // Offset of the next byte.
    std::uint64_t offset() const { return flushed_ + used_; }
    // No more memory is needed for `size` bytes.
    bool holds(std::size_t size) const { return capacity_ - used_ >= size; }
    // `size` bytes to be filled in at once, counted as written; the place holds until the next operation.
    char* room(std::size_t size) {
        if (!holds(size)) {
            grow(size);
        }
        char* place = buffer_.get() + used_;
        used_ += size;
        return place;
    }
    // Gives back what was not needed of the last room: the next byte goes to `end`, within it or just behind it.
    void endRoom(const char* end) { used_ = static_cast<std::size_t>(end - buffer_.get()); }
    // Goes back to an offset that is not before the last flush.
    void takeBack(std::uint64_t offset) { used_ = static_cast<std::size_t>(offset - flushed_); }
    // Bytes that were written; null when they were handed on to the file.
    char* written(std::uint64_t offset) { return offset >= flushed_ ? buffer_.get() + (offset - flushed_) : nullptr; }
    // It is time to flush.
    bool isFull() const { return used_ > blockSize; }
    // Hands all bytes on to the file; they can no longer be taken back.
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
