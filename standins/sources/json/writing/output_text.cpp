#include "sources/json/writing/output_text.h"

#include "plant/refusal.h"

#include <algorithm>
#include <cmath>
#include <simdjson.h>

namespace plant {

namespace {

constexpr std::uint64_t everyByte = 0x0101010101010101U;
constexpr std::uint64_t highBits = 0x80 * everyByte;

// Eight letters of a text at a time: what they ask for.
struct Letters {
    std::uint64_t escapes = 0;  // not 0: a quote, a backslash or a control character
    std::uint64_t beyondAscii = 0;

    void look(std::uint64_t word) {
        const auto isByte = [word](std::uint64_t byte) {
            const std::uint64_t difference = word ^ (byte * everyByte);
            return (difference - everyByte) & ~difference;
        };
        escapes |= (((word - ' ' * everyByte) & ~word) | isByte('"') | isByte('\\')) & highBits;
        beyondAscii |= word & highBits;
    }
};

template <typename Word>
Word copyWord(char* to, const char* from) {
    Word word;
    std::memcpy(&word, from, sizeof word);
    std::memcpy(to, &word, sizeof word);
    return word;
}

Letters copyFewLetters(char* to, std::string_view text) {
    constexpr std::uint64_t blanks = ' ' * everyByte;
    const std::size_t size = text.size();
    Letters letters;
    if (size >= 4) {
        const std::uint64_t first = copyWord<std::uint32_t>(to, text.data());
        const std::uint64_t last = copyWord<std::uint32_t>(to + size - 4, text.data() + size - 4);
        letters.look(first | last << 32U);
    } else if (size > 0) {
        const std::uint64_t first = copyWord<std::uint8_t>(to, text.data());
        const std::uint64_t middle = copyWord<std::uint8_t>(to + size / 2, text.data() + size / 2);
        const std::uint64_t last = copyWord<std::uint8_t>(to + size - 1, text.data() + size - 1);
        letters.look(first | middle << 8U | last << 16U | (blanks << 24U));
    }
    return letters;
}

// Copies a text and looks at its letters in one go.
Letters copyLetters(char* to, std::string_view text) {
    constexpr std::size_t step = sizeof(std::uint64_t);
    const std::size_t size = text.size();
    if (size < step) {
        return copyFewLetters(to, text);
    }
    Letters letters;
    for (std::size_t i = 0; i + step < size; i += step) {
        letters.look(copyWord<std::uint64_t>(to + i, text.data() + i));
    }
    letters.look(copyWord<std::uint64_t>(to + size - step, text.data() + size - step));
    return letters;
}

// What stands behind the backslash; null for a letter that only its number tells.
char shortEscape(char letter) {
    switch (letter) {
    case '"':
    case '\\':
        return letter;
    case '\n':
        return 'n';
    case '\r':
        return 'r';
    case '\t':
        return 't';
    default:
        return '\0';
    }
}

bool needsEscape(char letter) {
    return static_cast<unsigned char>(letter) < ' ' || letter == '"' || letter == '\\';
}

}  // namespace

OutputText::OutputText() {
    constexpr std::size_t usual = (std::size_t{1} << 20) + (std::size_t{1} << 16);
    grow(usual);
}

void OutputText::grow(std::size_t count) {
    const std::size_t capacity = std::max(2 * capacity_, size_ + count);
    auto larger = std::make_unique_for_overwrite<char[]>(capacity);
    if (size_ > 0) {
        std::memcpy(larger.get(), buffer_.get(), size_);
    }
    buffer_ = std::move(larger);
    capacity_ = capacity;
}

OutputText& OutputText::quoted(std::string_view text) {
    char* const at = room(text.size() + 2);
    *at = '"';
    const Letters letters = copyLetters(at + 1, text);
    if (letters.beyondAscii != 0 && !simdjson::validate_utf8(text.data(), text.size())) [[unlikely]] {
        refuse("a text is not UTF-8");
    }
    if (letters.escapes != 0) [[unlikely]] {
        quotedWithEscapes(text);
        return *this;
    }
    at[text.size() + 1] = '"';
    size_ += text.size() + 2;
    return *this;
}

void OutputText::quotedWithEscapes(std::string_view text) {
    raw('"');
    while (!text.empty()) {
        const auto plain = static_cast<std::size_t>(std::find_if(text.begin(), text.end(), needsEscape) - text.begin());
        raw(text.substr(0, plain));
        if (plain == text.size()) {
            break;
        }
        const char letter = text[plain];
        if (letter == '\0') {
            refuse("a text holds a zero character");
        }
        raw('\\');
        if (const char escape = shortEscape(letter)) {
            raw(escape);
        } else {
            constexpr std::string_view digits = "0123456789abcdef";
            const auto code = static_cast<unsigned char>(letter);
            raw("u00").raw(digits[code / 16U]).raw(digits[code % 16U]);
        }
        text.remove_prefix(plain + 1);
    }
    raw('"');
}

OutputText& OutputText::number(double value) {
    if (!std::isfinite(value)) [[unlikely]] {
        refuse("a number is not finite");
    }
    size_ = static_cast<std::size_t>(writeNumber(room(longestNumber), value) - buffer_.get());
    return *this;
}

OutputText& OutputText::numbers(double x, double y, double z) {
    return number(x).raw(',').number(y).raw(',').number(z);
}

OutputText& OutputText::list(std::span<const std::int64_t> values) {
    raw('[');
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i > 0) {
            raw(',');
        }
        whole(values[i]);
    }
    return raw(']');
}

}  // namespace plant
