// Id of a stored object of the plant platform.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>

// Value type; the default state is invalid. Ids stay below two to the power of 53, so that a double holds them exactly.
class HxDbObjectId {
public:
    constexpr HxDbObjectId() = default;
    constexpr explicit HxDbObjectId(std::int64_t id) : id_(id) {}

    constexpr bool isValid() const { return id_ > 0; }
    constexpr std::int64_t toInt() const { return id_; }
    constexpr void setId(std::int64_t id) { id_ = id; }
    // The number without its version part; this platform keeps one version of each object.
    constexpr std::int64_t toIdWithoutVer() const { return id_; }
    constexpr auto operator<=>(const HxDbObjectId&) const = default;

private:
    std::int64_t id_ = 0;
};

template <>
struct std::hash<HxDbObjectId> {
    std::size_t operator()(const HxDbObjectId& id) const noexcept {
        // Ids are often consecutive; multiplying spreads them over the table.
        return static_cast<std::size_t>(static_cast<std::uint64_t>(id.toInt()) * 0x9E3779B97F4A7C15ULL);
    }
};
