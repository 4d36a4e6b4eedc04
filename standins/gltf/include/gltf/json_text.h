// Writing JSON: text appended to a string of the caller's, without blanks, commas put in where they belong. That
// objects and arrays are closed is the caller's part. Values outside of any bracket are separated by commas, too, so
// that a list may be written without its brackets.
//
// The caller may take the text out of the string piece by piece, so that a document of any length needs a small string
// only: the place in the document is not read from the text.
#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace gltf {

// Numbers are written in the shortest form that reads back as the same, independent of the locale.
class JsonText {
public:
    // The string must outlive the writer.
    explicit JsonText(std::string& out) : out_(out) {}
    JsonText(const JsonText&) = delete;
    JsonText& operator=(const JsonText&) = delete;

    JsonText& beginObject() { return open('{'); }
    JsonText& endObject() { return close('}'); }
    JsonText& beginArray() { return open('['); }
    JsonText& endArray() { return close(']'); }

    // The name of the member whose value comes next: plain letters of the format.
    template <std::size_t Size>
    JsonText& key(const char (&name)[Size]) {
        if (breaksLine_) {
            separate();
            needsComma_ = false;
        }
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
    // A name that comes from outside, in UTF-8.
    JsonText& anyKey(std::string_view name);

    // Texts in UTF-8 and UTF-16; see json_escape.h.
    JsonText& string(std::string_view utf8);
    JsonText& string(std::u16string_view text);
    // A text that needs no escapes, or has them already.
    JsonText& escaped(std::string_view inside);
    JsonText& boolean(bool value) { return raw(value ? "true" : "false"); }
    template <std::integral Integer>
    JsonText& number(Integer value) {
        char text[24];
        return raw({text, static_cast<std::size_t>(std::to_chars(text, text + sizeof text, value).ptr - text)});
    }
    // One that is not finite becomes 0, which callers should never let happen.
    JsonText& number(double value);
    // Without an exponent where the size is a usual one; minus zero becomes zero. The number must be finite.
    JsonText& decimal(double value);
    // An array of such numbers.
    JsonText& decimals(std::span<const double> values);
    // A finished value; it may be empty, when the caller puts it elsewhere.
    JsonText& raw(std::string_view json);
    // Values that are JSON already, separated by commas; nothing when there are none.
    JsonText& list(std::string_view json) { return json.empty() ? *this : raw(json); }

    // The next value or name begins a line.
    JsonText& newLine() {
        breaksLine_ = true;
        return *this;
    }
    // A new document begins.
    void restart() { needsComma_ = breaksLine_ = false; }

private:
    JsonText& open(char bracket);
    JsonText& close(char bracket);
    void separate();

    std::string& out_;
    bool needsComma_ = false;
    bool breaksLine_ = false;
};

}  // namespace gltf
