// Writing JSON text: values appended to a string, separators by the caller's nesting.
#pragma once

#include <charconv>
#include <concepts>
#include <string>
#include <string_view>

// A quoted string from UTF-8.
void appendJsonString(std::string& out, std::string_view utf8);
// The shortest text that reads back as the same number; null for one that is not finite.
void appendJsonNumber(std::string& out, double value);

template <std::integral Integer>
void appendJsonNumber(std::string& out, Integer value) {
    char text[24];
    out.append(text, std::to_chars(text, text + sizeof text, value).ptr);
}

// An array with one element a line; `element` appends one.
template <typename Range, typename Element>
void appendJsonLines(std::string& out, const Range& range, Element&& element) {
    const char* separator = "[\n    ";
    for (const auto& item : range) {
        out += separator;
        element(out, item);
        separator = ",\n    ";
    }
    out += range.empty() ? "[]" : "\n  ]";
}
