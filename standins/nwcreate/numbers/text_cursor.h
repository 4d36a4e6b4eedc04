// Writes JSON, piece by piece, into a place that has room for all of it: for what is written for each node and shape.
#pragma once

#include "nwcreate/numbers/digits.h"
#include "nwcreate/numbers/vectors.h"

#include <string_view>

namespace nwcreate {

class TextCursor {
public:
    // Writes behind this place; how much room there must be is for the caller to know (numberRoom for each number).
    explicit TextCursor(char* to) : at_(to) {}
    // The end of what was written.
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
    template <typename Count>
    TextCursor& count(Count value) {
        at_ = putCount(at_, value);
        return *this;
    }
    TextCursor& number(float value) {
        at_ = putNumber(at_, value);
        return *this;
    }
    TextCursor& metres(double length) {
        at_ = putMetres(at_, length);
        return *this;
    }
    // [x,y,z] of such lengths.
    TextCursor& metres(const Vec3& point) {
        return put("[").metres(point[0]).put(",").metres(point[1]).put(",").metres(point[2]).put("]");
    }

private:
    char* at_;
};

}  // namespace nwcreate
