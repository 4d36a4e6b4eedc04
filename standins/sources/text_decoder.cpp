#include "sources/text_decoder.h"

#include "tolmar/code_page.h"

#include <algorithm>

namespace plant {

namespace {

constexpr unsigned char firstBeyondAscii = 0x80;

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

char upperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

std::string_view TextDecoder::decode(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find('\0'));
    if (tolmar::isAscii(bytes) || tolmar::isValidUtf8(bytes)) {
        return bytes;
    }
    fellBack_ = true;
    converted_.clear();
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < firstBeyondAscii) {
            converted_ += c;
        } else {
            converted_ += static_cast<char>(0xC0U | byte >> 6U);
            converted_ += static_cast<char>(0x80U | (byte & 0x3FU));
        }
    }
    return converted_;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool equalIgnoringCase(std::string_view text, std::string_view upper) {
    return text.size() == upper.size() &&
           std::equal(text.begin(), text.end(), upper.begin(), [](char a, char b) { return upperCase(a) == b; });
}

}  // namespace plant
