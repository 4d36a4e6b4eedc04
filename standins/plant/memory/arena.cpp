#include "plant/memory/arena.h"

#include <algorithm>
#include <cstdlib>
#include <sys/mman.h>

namespace plant {

namespace {

constexpr std::size_t smallestChunk = std::size_t{64} << 10;
constexpr std::size_t largestChunk = std::size_t{32} << 20;
constexpr std::size_t largePage = std::size_t{2} << 20;
constexpr std::size_t smallAlignment = 64;

}  // namespace

Arena::~Arena() {
    for (void* chunk : chunks_) {
        std::free(chunk);
    }
}

// Each chunk is as large as all before it together, within limits, so that a small model stays small.
void* Arena::allocateInNewChunk(std::size_t size, std::size_t alignment) {
    const std::size_t wanted = std::clamp(capacity_, smallestChunk, largestChunk);
    const std::size_t chunk = std::max(wanted, size + alignment);
    chunks_.reserve(chunks_.size() + 1);
    void* memory = allocateLarge(chunk + roomBehindText);
    chunks_.push_back(memory);
    capacity_ += chunk;
    next_ = reinterpret_cast<std::uintptr_t>(memory);
    end_ = next_ + chunk;
    return allocate(size, alignment);
}

void* allocateLarge(std::size_t size) {
    const std::size_t alignment = size < largePage ? smallAlignment : largePage;
    const std::size_t rounded = (size + alignment - 1) / alignment * alignment;
    void* memory = rounded < size ? nullptr : std::aligned_alloc(alignment, rounded);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
#ifdef MADV_HUGEPAGE
    if (alignment == largePage) {
        madvise(memory, rounded, MADV_HUGEPAGE);
    }
#endif
    return memory;
}

}  // namespace plant
