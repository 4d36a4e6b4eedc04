#include "sources/json/faults.h"

#include "plant/refusal.h"

#include <algorithm>

namespace plant {

namespace {

std::size_t sequenceLength(unsigned char first) {
    if (first < 0x80) {
        return 1;
    }
    return first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
}

std::size_t firstBadUtf8(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t length = sequenceLength(static_cast<unsigned char>(text[at]));
        if (length > 1 && !simdjson::validate_utf8(text.data() + at, std::min(length, text.size() - at))) {
            break;
        }
        at += length;
    }
    return std::min(at, text.size());
}

struct Texts {
    std::size_t open;     // the quote that opens a text without an end
    std::size_t control;  // the first control character in a text
};

Texts scanTexts(std::string_view text) {
    Texts found{text.size(), text.size()};
    bool inText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') {
            inText = !inText;
            found.open = inText ? i : text.size();
        } else if (inText && text[i] == '\\') {
            ++i;
        } else if (inText && static_cast<unsigned char>(text[i]) < ' ') {
            found.control = std::min(found.control, i);
        }
    }
    return found;
}

}  // namespace

void refuseDocument(std::string_view text, simdjson::error_code error) {
    switch (error) {
    case simdjson::EMPTY:
        refuse("the file is empty");
    case simdjson::UTF8_ERROR:
        throw Refusal("not UTF-8", Refusal::syntax, firstBadUtf8(text));
    case simdjson::UNCLOSED_STRING:
        throw Refusal("a text without an end", Refusal::syntax, scanTexts(text).open);
    case simdjson::UNESCAPED_CHARS:
        throw Refusal("a control character in a text", Refusal::syntax, scanTexts(text).control);
    default:
        throw Refusal(simdjson::error_message(error), Refusal::syntax, Refusal::end);
    }
}

}  // namespace plant
