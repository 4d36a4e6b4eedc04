// Writing JSON: text appended to one buffer, commas put in where they belong. The owner may take the text out piece by
// piece, so that a document of any length needs a small buffer only.
#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace gltf {

// Texts are UTF-8; bytes that are none become U+FFFD. Numbers are written in the shortest form that reads back as the
// same double, independent of the locale; one that is not finite becomes 0, which callers should never let happen.
class JsonText {
public:
    JsonText& beginObject() { return open('{'); }
    JsonText& endObject() { return close('}'); }
    JsonText& beginArray() { return open('['); }
    JsonText& endArray() { return close(']'); }
    // The name of the member whose value comes next. Plain ASCII without quotes: names are the format's own.
    JsonText& key(std::string_view name);
    // A name that comes from outside.
    JsonText& anyKey(std::string_view name);
    JsonText& string(std::string_view utf8);
    JsonText& boolean(bool value) { return raw(value ? "true" : "false"); }
    JsonText& number(double value);
    template <std::integral Integer>
    JsonText& number(Integer value) {
        char text[24];
        return raw({text, static_cast<std::size_t>(std::to_chars(text, text + sizeof text, value).ptr - text)});
    }
    // A finished value.
    JsonText& raw(std::string_view json);
    // The next value or name begins a line.
    JsonText& newLine() {
        breaksLine_ = true;
        return *this;
    }

    const std::string& text() const { return text_; }
    std::size_t size() const { return text_.size(); }
    // Drops the text so far and keeps the place in the document.
    void drop() { text_.clear(); }

private:
    JsonText& open(char bracket);
    JsonText& close(char bracket);
    void separate();
    void quote(std::string_view utf8);

    std::string text_;
    std::vector<bool> hasItems_;  // one for each open bracket
    bool afterKey_ = false;
    bool breaksLine_ = false;
};

}  // namespace gltf
