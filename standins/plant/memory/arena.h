// Memory that is taken piece by piece and given back all at once.
#pragma once

#include "plant/memory/byte_part.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

namespace plant {

// Pieces stay where they are as long as the arena lives, with `roomBehindText` readable bytes behind each. Destructors
// of what is put in are not run.
class Arena {
public:
    Arena() = default;
    ~Arena();
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    // `alignment` is a power of two, at most 16.
    void* allocate(std::size_t size, std::size_t alignment) {
        const std::uintptr_t at = (next_ + alignment - 1) & ~(alignment - 1);
        if (at + size > end_) {
            return allocateInNewChunk(size, alignment);
        }
        next_ = at + size;
        return reinterpret_cast<void*>(at);
    }
    template <typename T>
    T* allocate(std::size_t count) {
        return static_cast<T*>(allocate(count * sizeof(T), alignof(T)));
    }
    // A copy of the elements; null when there are none.
    template <typename T>
    T* copy(std::span<const T> elements) {
        static_assert(std::is_trivially_copyable_v<T>);
        if (elements.empty()) {
            return nullptr;
        }
        T* place = allocate<T>(elements.size());
        std::memcpy(static_cast<void*>(place), elements.data(), elements.size_bytes());
        return place;
    }
    template <typename T>
    T* copy(const std::vector<T>& elements) {
        return copy(std::span<const T>(elements));
    }
    // A copy of the text with a zero character behind it.
    const char* copyText(std::string_view text) {
        char* place = static_cast<char*>(allocate(text.size() + 1, 1));
        std::memcpy(place, text.data(), text.size());
        place[text.size()] = '\0';
        return place;
    }
    // The same for a text with `roomBehindText` readable bytes behind it.
    const char* copyPaddedText(const char* text, std::size_t size) {
        constexpr std::size_t step = roomBehindText;
        char* place = static_cast<char*>(allocate(size + 1, 1));
        for (std::size_t i = 0; i < size; i += step) {
            std::memcpy(place + i, text + i, step);
        }
        place[size] = '\0';
        return place;
    }
    // Bytes taken from the system.
    std::size_t capacity() const { return capacity_; }

private:
    void* allocateInNewChunk(std::size_t size, std::size_t alignment);

    std::uintptr_t next_ = 0;
    std::uintptr_t end_ = 0;
    std::size_t capacity_ = 0;
    std::vector<void*> chunks_;
};

// Memory for `size` bytes, in large pages where the system has them: filling fresh memory costs far less so. Throws
// std::bad_alloc; release by std::free.
void* allocateLarge(std::size_t size);

}  // namespace plant
