#include "plant/scripts/blocks.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace hextlua {

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t largestSmall = 0;  // every block by itself, so that a fault in one is seen
#else
constexpr std::size_t largestSmall = 256;
#endif
constexpr std::size_t step = 16;
constexpr std::size_t chunkSize = 64 << 10;

struct FreeBlock {
    FreeBlock* next;
};

// Free blocks by size in steps, and the chunk that new ones are cut from. Never given back: the process's own.
struct SmallBlocks {
    FreeBlock* free[largestSmall / step + 1] = {};
    char* chunk = nullptr;
    std::size_t left = 0;
};

SmallBlocks& smallBlocks() {
    static SmallBlocks blocks;
    return blocks;
}

bool isSmall(std::size_t size) {
    return size <= largestSmall;
}
std::size_t stepsOf(std::size_t size) {
    return (size + step - 1) / step;
}

void* cutBlock(SmallBlocks& blocks, std::size_t size) {
    if (blocks.left < size) {
        blocks.chunk = static_cast<char*>(std::malloc(chunkSize));
        blocks.left = blocks.chunk != nullptr ? chunkSize : 0;
    }
    if (blocks.chunk == nullptr) {
        return nullptr;
    }
    char* block = blocks.chunk;
    blocks.chunk += size;
    blocks.left -= size;
    return block;
}

void* takeBlock(std::size_t size) {
    if (!isSmall(size)) {
        return std::malloc(size);
    }
    SmallBlocks& blocks = smallBlocks();
    FreeBlock*& first = blocks.free[stepsOf(size)];
    if (first == nullptr) {
        return cutBlock(blocks, stepsOf(size) * step);
    }
    FreeBlock* const block = first;
    first = block->next;
    return block;
}

}  // namespace

void freeBlock(void* block, std::size_t size) noexcept {
    if (block == nullptr) {
        return;
    }
    if (!isSmall(size)) {
        std::free(block);
        return;
    }
    FreeBlock*& first = smallBlocks().free[stepsOf(size)];
    first = new (block) FreeBlock{first};
}

void* resizeBlock(void* block, std::size_t oldSize, std::size_t newSize) noexcept {
    if (block == nullptr) {
        return takeBlock(newSize);
    }
    if (!isSmall(oldSize) && !isSmall(newSize)) {
        return std::realloc(block, newSize);
    }
    if (isSmall(oldSize) && isSmall(newSize) && stepsOf(oldSize) == stepsOf(newSize)) {
        return block;
    }
    void* moved = takeBlock(newSize);
    if (moved == nullptr) {
        return newSize <= oldSize ? block : nullptr;  // a block that shrinks is never refused
    }
    std::memcpy(moved, block, std::min(oldSize, newSize));
    freeBlock(block, oldSize);
    return moved;
}

}  // namespace hextlua
