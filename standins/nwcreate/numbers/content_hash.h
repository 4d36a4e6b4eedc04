// Hash of bytes for finding equal content; the same on every machine of one byte order. Nothing depends on its value
// but which candidates are compared.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace nwcreate {

inline std::uint64_t mixed(std::uint64_t value) {
    value ^= value >> 32U;
    value *= 0xD6E8FEB86659FD93U;
    value ^= value >> 29U;
    return value;
}

inline std::uint64_t wordAt(const char* from) {
    std::uint64_t word = 0;
    std::memcpy(&word, from, sizeof word);
    return word;
}

// Another seed makes another hash of the same bytes. Four lanes, so that no multiplication waits for the one before.
inline std::uint64_t contentHash(std::string_view bytes, std::uint64_t seed) {
    constexpr std::size_t lanes = 4;
    constexpr std::uint64_t factor = 0x9E3779B97F4A7C15U;
    std::uint64_t lane[lanes] = {seed + bytes.size(), 0x2545F4914F6CDD1DU, 0xD6E8FEB86659FD93U, factor};
    const char* at = bytes.data();
    std::size_t left = bytes.size();
    for (; left >= sizeof lane; left -= sizeof lane, at += sizeof lane) {
        for (std::size_t i = 0; i < lanes; ++i) {
            lane[i] = (lane[i] ^ wordAt(at + i * sizeof(std::uint64_t))) * factor;
            lane[i] ^= lane[i] >> 29U;
        }
    }
    std::uint64_t hash = mixed(mixed(mixed(lane[0]) + lane[1]) + lane[2]) + lane[3];
    for (; left >= sizeof(std::uint64_t); left -= sizeof(std::uint64_t), at += sizeof(std::uint64_t)) {
        hash = mixed(hash ^ wordAt(at)) * factor;
    }
    std::uint64_t rest = 0;
    std::memcpy(&rest, at, left);
    return mixed(hash ^ rest);
}

}  // namespace nwcreate
