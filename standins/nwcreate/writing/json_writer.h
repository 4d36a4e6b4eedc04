// Writes JSON into a string: UTF-8, no blanks, numbers in their shortest form that reads back the same, the same in
// every locale.
#pragma once

#include "nwcreate/store/vectors.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace nwcreate {

// Appends the text as the inside of a JSON string; halves of surrogate pairs that stand alone become U+FFFD.
void appendEscaped(std::string& out, std::u16string_view text);

// Commas come by themselves; that objects and arrays are closed is the caller's part.
class JsonWriter {
public:
    explicit JsonWriter(std::string& out) : out_(out) {}

    JsonWriter& beginObject() { return open('{'); }
    JsonWriter& endObject() { return close('}'); }
    JsonWriter& beginArray() { return open('['); }
    JsonWriter& endArray() { return close(']'); }
    // A name of the format: plain letters.
    template <std::size_t Size>
    JsonWriter& key(const char (&name)[Size]) {
        // One append for all, since half of a scene's text is keys.
        char text[Size + 3] = {',', '"'};
        std::memcpy(text + 2, name, Size - 1);
        text[Size + 1] = '"';
        text[Size + 2] = ':';
        const std::size_t skipped = needsComma_ ? 0 : 1;
        out_.append(text + skipped, sizeof text - skipped);
        needsComma_ = false;
        return *this;
    }
    JsonWriter& text(std::u16string_view text);
    // A plain text of the format.
    JsonWriter& plain(std::string_view text);
    // A text that appendEscaped made.
    JsonWriter& escaped(std::string_view inside);
    // Values that are JSON already, separated by commas; nothing when empty.
    JsonWriter& ready(std::string_view json);
    // Minus zero becomes zero; the number must be finite.
    JsonWriter& number(double value);
    JsonWriter& count(std::uint64_t value);
    // A point in scene units, as an array of metres that are rounded to nanometres.
    JsonWriter& metres(const Vec3& point);
    JsonWriter& yes();
    JsonWriter& numbers(std::span<const double> values);

private:
    JsonWriter& open(char bracket);
    JsonWriter& close(char bracket);
    void separate();

    std::string& out_;
    bool needsComma_ = false;
};

}  // namespace nwcreate
