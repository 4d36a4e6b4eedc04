#include "gltf/json_text.h"

#include <cmath>

namespace gltf {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

bool isTrail(unsigned char byte) {
    return (byte & 0xC0U) == 0x80U;
}

// The lowest second byte of a well-formed sequence, and the highest.
bool isSecond(unsigned char lead, unsigned char second) {
    const unsigned low = lead == 0xE0 ? 0xA0U : lead == 0xF0 ? 0x90U : 0x80U;
    const unsigned high = lead == 0xED ? 0x9FU : lead == 0xF4 ? 0x8FU : 0xBFU;
    return second >= low && second <= high;
}

// Length of the character at the start of a text, 0 when it is malformed.
std::size_t characterLength(std::string_view text) {
    const auto at = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = at(0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length < 2) {
        return length;
    }
    if (text.size() < length || !isSecond(lead, at(1))) {
        return 0;
    }
    for (std::size_t i = 2; i < length; ++i) {
        if (!isTrail(at(i))) {
            return 0;
        }
    }
    return length;
}

void appendEscape(std::string& out, char c) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    out += "\\u00";
    out += digits[byte >> 4U];
    out += digits[byte & 15U];
}

bool isPlain(char c) {
    return c >= ' ' && c < '\x7F' && c != '"' && c != '\\';
}

}  // namespace

void JsonText::separate() {
    if (afterKey_) {
        afterKey_ = false;
    } else if (!hasItems_.empty()) {
        if (hasItems_.back()) {
            text_ += ',';
        }
        hasItems_.back() = true;
    }
    if (breaksLine_) {
        breaksLine_ = false;
        text_ += '\n';
    }
}

JsonText& JsonText::open(char bracket) {
    separate();
    text_ += bracket;
    hasItems_.push_back(false);
    return *this;
}

JsonText& JsonText::close(char bracket) {
    hasItems_.pop_back();
    text_ += bracket;
    return *this;
}

JsonText& JsonText::key(std::string_view name) {
    separate();
    text_ += '"';
    text_ += name;
    text_ += "\":";
    afterKey_ = true;
    return *this;
}

JsonText& JsonText::anyKey(std::string_view name) {
    separate();
    quote(name);
    text_ += ':';
    afterKey_ = true;
    return *this;
}

JsonText& JsonText::string(std::string_view utf8) {
    separate();
    quote(utf8);
    return *this;
}

JsonText& JsonText::number(double value) {
    char text[32];
    const double written = std::isfinite(value) ? value : 0.0;
    return raw({text, static_cast<std::size_t>(std::to_chars(text, text + sizeof text, written).ptr - text)});
}

JsonText& JsonText::raw(std::string_view json) {
    separate();
    text_ += json;
    return *this;
}

void JsonText::quote(std::string_view utf8) {
    text_ += '"';
    for (std::size_t at = 0; at < utf8.size();) {
        std::size_t plain = at;
        while (plain < utf8.size() && isPlain(utf8[plain])) {
            ++plain;
        }
        text_.append(utf8, at, plain - at);
        at = plain;
        if (at == utf8.size()) {
            break;
        }
        const char c = utf8[at];
        const std::size_t length = characterLength(utf8.substr(at));
        if (c == '"' || c == '\\') {
            text_ += '\\';
            text_ += c;
        } else if (length == 1) {
            appendEscape(text_, c);
        } else {
            text_ += length == 0 ? replacement : utf8.substr(at, length);
        }
        at += length == 0 ? 1 : length;
    }
    text_ += '"';
}

}  // namespace gltf
