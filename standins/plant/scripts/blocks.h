// Memory of script states. Main thread only.
#pragma once

#include <cstddef>

namespace hextlua {

// As realloc and free, with the size that the block has. Small blocks come from lists that outlive their state, since
// an export may make a fresh state for each object: the blocks of one serve the next.
void* resizeBlock(void* block, std::size_t oldSize, std::size_t newSize) noexcept;
void freeBlock(void* block, std::size_t size) noexcept;

}  // namespace hextlua
