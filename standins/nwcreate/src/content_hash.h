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

inline std::uint64_t contentHash(std::string_view bytes, std::uint64_t seed) {
    std::uint64_t hash = seed + bytes.size();
    while (bytes.size() >= sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data(), sizeof word);
        hash = mixed(hash ^ word) * 0x9E3779B97F4A7C15U;
        bytes.remove_prefix(sizeof word);
    }
    std::uint64_t rest = 0;
    std::memcpy(&rest, bytes.data(), bytes.size());
    return mixed(hash ^ rest);
}

}  // namespace nwcreate
