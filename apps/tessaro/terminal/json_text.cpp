#include "tessaro/terminal/json_text.h"

#include <cmath>

void appendJsonString(std::string& out, std::string_view utf8) {
    constexpr std::string_view digits = "0123456789abcdef";
    out += '"';
    for (const char c : utf8) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (byte < 0x20 || byte == 0x7F) {
            out += "\\u00";
            out += digits[byte >> 4U];
            out += digits[byte & 15U];
        } else {
            out += c;
        }
    }
    out += '"';
}

void appendJsonNumber(std::string& out, double value) {
    if (!std::isfinite(value)) {
        out += "null";
        return;
    }
    char text[32];
    out.append(text, std::to_chars(text, text + sizeof text, value).ptr);
}
