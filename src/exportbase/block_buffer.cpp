#include "exportbase/block_buffer.h"

#include <algorithm>
#include <cstring>

BlockBuffer::BlockBuffer(tolmar::OutputFile& file)
    : file_(file), buffer_(std::make_unique_for_overwrite<char[]>(blockSize + blockSize / 4)),
      capacity_(blockSize + blockSize / 4) {}

void BlockBuffer::grow(std::size_t size) {
    const std::size_t capacity = std::max(used_ + size, capacity_ * 2);
    auto larger = std::make_unique_for_overwrite<char[]>(capacity);
    std::memcpy(larger.get(), buffer_.get(), used_);
    buffer_ = std::move(larger);
    capacity_ = capacity;
}

void BlockBuffer::flush() {
    file_.write({buffer_.get(), used_});
    flushed_ += used_;
    used_ = 0;
}
