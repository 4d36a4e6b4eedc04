#include "sources/pcf/text.h"

#include "tolmar/code_page.h"

#include <algorithm>
#include <cstdint>

namespace plant::pcf {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// The characters of Windows-1252 from 0x80 to 0x9F; the others stand at their own number. 0: unused there.
constexpr std::uint16_t windowsCharacters[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                                 0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void append(std::string& out, unsigned character) {
    if (character < 0x80) {
        out += static_cast<char>(character);
    } else if (character < 0x800) {
        out += static_cast<char>(0xC0U | character >> 6U);
        out += static_cast<char>(0x80U | (character & 0x3FU));
    } else {
        out += static_cast<char>(0xE0U | character >> 12U);
        out += static_cast<char>(0x80U | (character >> 6U & 0x3FU));
        out += static_cast<char>(0x80U | (character & 0x3FU));
    }
}

std::string fromWindows(std::string_view bytes) {
    constexpr unsigned firstTold = 0x80;
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (const char one : bytes) {
        const unsigned byte = static_cast<unsigned char>(one);
        const bool told = byte >= firstTold && byte - firstTold < std::size(windowsCharacters);
        const unsigned character = told ? windowsCharacters[byte - firstTold] : byte;
        append(out, character != 0 ? character : byte);
    }
    return out;
}

}  // namespace

Text decode(std::string_view bytes) {
    if (bytes.starts_with(byteOrderMark)) {
        bytes.remove_prefix(byteOrderMark.size());
    }
    Text text;
    text.wasOtherCode = !tolmar::isValidUtf8(bytes);
    text.utf8 = text.wasOtherCode ? fromWindows(bytes) : std::string(bytes);
    text.hadZeros = text.utf8.find('\0') != std::string::npos;
    if (text.hadZeros) {
        std::replace(text.utf8.begin(), text.utf8.end(), '\0', ' ');
    }
    return text;
}

}  // namespace plant::pcf
