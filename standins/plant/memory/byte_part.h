// A few bytes of text looked at all at once.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace plant {

// `size` bytes; the answers have one bit for each, the first byte lowest.
class BytePart {
public:
#ifdef __SSE2__
    static constexpr std::size_t size = sizeof(__m128i);

    explicit BytePart(const char* at) : bytes_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(at))) {}
    std::uint64_t equal(char c) const {
        return bitsOf(_mm_cmpeq_epi8(bytes_, _mm_set1_epi8(c)));
    }
    // Equal once the bits of `mask` are set.
    std::uint64_t equalWith(char mask, char c) const {
        return bitsOf(_mm_cmpeq_epi8(_mm_or_si128(bytes_, _mm_set1_epi8(mask)), _mm_set1_epi8(c)));
    }
    std::uint64_t notAscii() const {
        return bitsOf(bytes_);
    }

private:
    static std::uint64_t bitsOf(__m128i mask) {
        return static_cast<unsigned>(_mm_movemask_epi8(mask));
    }
    __m128i bytes_;
#else
    static constexpr std::size_t size = sizeof(std::uint64_t);

    explicit BytePart(const char* at) {
        std::memcpy(&bytes_, at, size);
        if constexpr (std::endian::native == std::endian::big) {
            bytes_ = __builtin_bswap64(bytes_);
        }
    }
    std::uint64_t equal(char c) const {
        return zeroBytes(bytes_ ^ all(c));
    }
    // Equal once the bits of `mask` are set.
    std::uint64_t equalWith(char mask, char c) const {
        return zeroBytes((bytes_ | all(mask)) ^ all(c));
    }
    std::uint64_t notAscii() const {
        return gather(bytes_);
    }

private:
    static constexpr std::uint64_t all(char c) {
        return 0x0101010101010101ULL * static_cast<unsigned char>(c);
    }
    static std::uint64_t zeroBytes(std::uint64_t word) {
        constexpr std::uint64_t low = all(0x7F);
        return gather(~(((word & low) + low) | word | low));
    }
    // The high bit of each byte; the multiplication moves them together.
    static std::uint64_t gather(std::uint64_t word) {
        return ((word >> 7U) & all(1)) * 0x0102040810204080ULL >> 56U;
    }
    std::uint64_t bytes_ = 0;
#endif
};

// Bytes that may be read, but do not count, behind texts that are compared or copied in parts.
inline constexpr std::size_t roomBehindText = 16;

// At least `roomBehindText` bytes must be readable behind both texts.
inline bool sameText(const char* a, const char* b, std::size_t size) {
    constexpr std::size_t step = sizeof(std::uint64_t);
    for (std::size_t i = 0; i < size; i += step) {
        std::uint64_t ofA;
        std::uint64_t ofB;
        std::memcpy(&ofA, a + i, step);
        std::memcpy(&ofB, b + i, step);
        std::uint64_t difference = ofA ^ ofB;
        if (size - i < step) {
            const std::size_t beyond = 8 * (step - (size - i));
            difference = std::endian::native == std::endian::little ? difference << beyond : difference >> beyond;
        }
        if (difference != 0) {
            return false;
        }
    }
    return true;
}

}  // namespace plant
