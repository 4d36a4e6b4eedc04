#include "hextinterface/hextbasemethod/limited_text.h"

#include <algorithm>

namespace {

constexpr int wideByteUnits = 4;

bool isAsciiByte(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

// Appends what fits of `text` to `out` and gives the number of bytes read.
std::size_t collect(std::string& out, std::string_view text, int limit) {
    std::size_t at = 0;
    for (int count = 0; at < text.size() && count < limit; ++at) {
        const char c = text[at];
        if (c == '\r' || c == '\n') {
            continue;
        }
        count += isAsciiByte(c) ? 1 : wideByteUnits;
        if (count >= limit && !isAsciiByte(c)) {
            break;
        }
        out += c;
    }
    return at;
}

// Puts the delimiters around what stands in `out` from `start` on.
void quoteFrom(std::string& out, std::size_t start) {
    const std::string_view text = std::string_view(out).substr(start);
    char delimiter = '\'';
    if (text.find('\'') != std::string_view::npos) {
        if (text.find('|') == std::string_view::npos) {
            delimiter = '|';
        } else {
            std::replace(out.begin() + static_cast<std::ptrdiff_t>(start), out.end(), '\'', '"');
        }
    }
    out.insert(start, 1, delimiter);
    out += delimiter;
}

}  // namespace

void appendLimitedText(std::string& out, std::string_view text, int limit) {
    const std::size_t start = out.size();
    collect(out, text, std::min(limit, maxTextUnits));
    quoteFrom(out, start);
}

std::string limitedText(std::string_view text, int limit) {
    std::string quoted;
    appendLimitedText(quoted, text, limit);
    return quoted;
}

std::vector<std::string> limitedPieces(std::string_view text) {
    std::vector<std::string> pieces;
    do {
        std::string& piece = pieces.emplace_back();
        text.remove_prefix(collect(piece, text, maxTextUnits));
        quoteFrom(piece, 0);
    } while (!text.empty());
    return pieces;
}
