#include "gltf/json_escape.h"

#include <algorithm>
#include <cstdint>

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

constexpr char16_t wideReplacement = 0xFFFD;

// An ASCII character that cannot stand as it is.
void appendEscape(std::string& out, char c) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
        out += '\\';
        out += c;
        return;
    }
    out += "\\u00";
    out += digits[byte >> 4U];
    out += digits[byte & 15U];
}

bool isPlainByte(char c) {
    return c >= ' ' && c < '\x7F' && c != '"' && c != '\\';
}

char trail(std::uint32_t code, unsigned shift) {
    return static_cast<char>(0x80U | ((code >> shift) & 0x3FU));
}

void appendWideCharacter(std::string& out, std::uint32_t code) {
    if (code < 0x800) {
        out += static_cast<char>(0xC0U | (code >> 6U));
    } else {
        if (code < 0x10000) {
            out += static_cast<char>(0xE0U | (code >> 12U));
        } else {
            out += static_cast<char>(0xF0U | (code >> 18U));
            out += trail(code, 12);
        }
        out += trail(code, 6);
    }
    out += trail(code, 0);
}

bool isPlainUnit(char16_t unit) {
    return unit >= 0x20 && unit < 0x80 && unit != u'"' && unit != u'\\';
}

// Appends what needs no escaping from the start of the text; gives its length.
std::size_t appendPlain(std::string& out, std::u16string_view text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isPlainUnit);
    const auto size = static_cast<std::size_t>(end - text.begin());
    const std::size_t before = out.size();
    out.resize(before + size);
    std::transform(text.begin(), end, out.begin() + static_cast<std::ptrdiff_t>(before),
                   [](char16_t unit) { return static_cast<char>(unit); });
    return size;
}

bool isHigh(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLow(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

}  // namespace

void appendEscaped(std::string& out, std::u16string_view text) {
    for (std::size_t i = appendPlain(out, text); i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (isPlainUnit(unit)) {
            out += static_cast<char>(unit);
        } else if (unit < 0x80) {
            appendEscape(out, static_cast<char>(unit));
        } else if (isHigh(unit) && i + 1 < text.size() && isLow(text[i + 1])) {
            ++i;
            appendWideCharacter(out, 0x10000U + ((unit - 0xD800U) << 10U) + (text[i] - 0xDC00U));
        } else {
            appendWideCharacter(out, isHigh(unit) || isLow(unit) ? wideReplacement : unit);
        }
    }
}

void appendEscaped(std::string& out, std::string_view utf8) {
    for (std::size_t at = 0; at < utf8.size();) {
        std::size_t plain = at;
        while (plain < utf8.size() && isPlainByte(utf8[plain])) {
            ++plain;
        }
        out.append(utf8, at, plain - at);
        at = plain;
        if (at == utf8.size()) {
            break;
        }
        const std::size_t length = characterLength(utf8.substr(at));
        if (length == 1) {
            appendEscape(out, utf8[at]);
        } else {
            out += length == 0 ? replacement : utf8.substr(at, length);
        }
        at += std::max<std::size_t>(length, 1);
    }
}

}  // namespace gltf
