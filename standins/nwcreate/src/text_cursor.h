// Writes JSON, piece by piece, into a place that has room for all of it: for what is written for each node and shape.
#pragma once

#include "vectors.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace nwcreate {

class TextCursor {
public:
    // Room that a number takes at most.
    static constexpr std::size_t numberRoom = 32;

    explicit TextCursor(char* to) : at_(to) {}
    char* at() const { return at_; }

    template <std::size_t Size>
    TextCursor& put(const char (&text)[Size]) {
        std::memcpy(at_, text, Size - 1);
        at_ += Size - 1;
        return *this;
    }
    TextCursor& put(std::string_view text) {
        std::memcpy(at_, text.data(), text.size());
        at_ += text.size();
        return *this;
    }
    TextCursor& count(std::uint32_t value) {
        at_ = std::to_chars(at_, at_ + numberRoom, value).ptr;
        return *this;
    }
    TextCursor& count(std::uint64_t value) {
        if (value <= 0xFFFFFFFF) {
            return count(static_cast<std::uint32_t>(value));
        }
        at_ = std::to_chars(at_, at_ + numberRoom, value).ptr;
        return *this;
    }
    // In its shortest form that reads back the same; minus zero becomes zero. The number must be finite.
    TextCursor& number(float value);
    // A length in scene units, written in metres and to the nanometre.
    TextCursor& metres(double length);
    // [x,y,z] of such lengths.
    TextCursor& metres(const Vec3& point);

private:
    char* at_;
};

}  // namespace nwcreate
