// The generator's own random numbers: the same on every machine and with every library.
#pragma once

#include <cstddef>
#include <cstdint>

namespace plant::generator {

class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() {
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }
    // 0 to n - 1; n is above 0.
    int below(int n) { return static_cast<int>(((next() >> 32) * static_cast<std::uint64_t>(n)) >> 32); }
    // low, low + step, ... up to high.
    int between(int low, int high, int step = 1) { return low + step * below((high - low) / step + 1); }
    bool chance(int percent) { return below(100) < percent; }
    template <typename T, std::size_t N>
    const T& pick(const T (&rows)[N]) {
        return rows[below(static_cast<int>(N))];
    }

private:
    std::uint64_t state_;
};

}  // namespace plant::generator
