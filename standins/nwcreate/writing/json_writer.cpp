#include "nwcreate/writing/json_writer.h"

#include "nwcreate/writing/text_cursor.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace nwcreate {

namespace {

constexpr char16_t replacement = 0xFFFD;

void appendAscii(std::string& out, char c) {
    constexpr const char* digits = "0123456789abcdef";
    if (c == '"' || c == '\\') {
        out += '\\';
        out += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
        out += "\\u00";
        out += digits[static_cast<unsigned char>(c) >> 4U];
        out += digits[static_cast<unsigned char>(c) & 15U];
    } else {
        out += c;
    }
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

bool isPlain(char16_t unit) {
    return unit >= 0x20 && unit < 0x80 && unit != u'"' && unit != u'\\';
}

// Appends what needs no escaping from the start of the text; gives its length.
std::size_t appendPlain(std::string& out, std::u16string_view text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isPlain);
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

template <typename Number>
void appendNumber(std::string& out, Number value) {
    char digits[32];
    const std::to_chars_result result = std::to_chars(digits, digits + sizeof digits, value);
    out.append(digits, static_cast<std::size_t>(result.ptr - digits));
}

}  // namespace

void appendEscaped(std::string& out, std::u16string_view text) {
    for (std::size_t i = appendPlain(out, text); i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit < 0x80) {
            appendAscii(out, static_cast<char>(unit));
        } else if (isHigh(unit) && i + 1 < text.size() && isLow(text[i + 1])) {
            ++i;
            appendWideCharacter(out, 0x10000U + ((unit - 0xD800U) << 10U) + (text[i] - 0xDC00U));
        } else {
            appendWideCharacter(out, isHigh(unit) || isLow(unit) ? replacement : unit);
        }
    }
}

JsonWriter& JsonWriter::open(char bracket) {
    separate();
    out_ += bracket;
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::close(char bracket) {
    out_ += bracket;
    needsComma_ = true;
    return *this;
}

void JsonWriter::separate() {
    if (needsComma_) {
        out_ += ',';
    }
    needsComma_ = true;
}

JsonWriter& JsonWriter::text(std::u16string_view text) {
    separate();
    out_ += '"';
    appendEscaped(out_, text);
    out_ += '"';
    return *this;
}

JsonWriter& JsonWriter::plain(std::string_view text) {
    return escaped(text);
}

JsonWriter& JsonWriter::escaped(std::string_view inside) {
    separate();
    out_ += '"';
    out_ += inside;
    out_ += '"';
    return *this;
}

JsonWriter& JsonWriter::ready(std::string_view json) {
    if (!json.empty()) {
        separate();
        out_ += json;
    }
    return *this;
}

JsonWriter& JsonWriter::number(double value) {
    // Numbers of a usual size go without an exponent.
    constexpr double least = 1e-3;
    constexpr double most = 1e15;
    separate();
    char digits[32];
    const double size = std::fabs(value);
    const bool isUsual = size == 0.0 || (size >= least && size < most);
    const std::chars_format form = isUsual ? std::chars_format::fixed : std::chars_format::general;
    const std::to_chars_result result = std::to_chars(digits, digits + sizeof digits, value + 0.0, form);
    out_.append(digits, static_cast<std::size_t>(result.ptr - digits));
    return *this;
}

JsonWriter& JsonWriter::count(std::uint64_t value) {
    separate();
    appendNumber(out_, value);
    return *this;
}

JsonWriter& JsonWriter::metres(const Vec3& point) {
    separate();
    char text[3 * numberRoom + 4];
    out_.append(text, TextCursor(text).metres(point).at());
    return *this;
}

JsonWriter& JsonWriter::yes() {
    return ready("true");
}

JsonWriter& JsonWriter::numbers(std::span<const double> values) {
    beginArray();
    for (const double value : values) {
        number(value);
    }
    return endArray();
}

}  // namespace nwcreate
