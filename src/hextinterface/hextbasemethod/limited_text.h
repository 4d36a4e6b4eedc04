// Free texts as quoted macro arguments of limited length.
//
// Lengths are in units: an ASCII byte counts 1, any other byte 4. Carriage returns and line feeds are dropped. A text
// without "'" stands between two "'", one with "'" but no "|" between two "|"; in a text with both every "'" becomes a
// double quote. A cut may split a two-byte character.
#pragma once

#include <string>
#include <string_view>
#include <vector>

inline constexpr int maxTextUnits = 120;
// Bytes that always fit.
inline constexpr std::size_t shortestLimitedText = 29;

// `limit` is at most maxTextUnits.
std::string limitedText(std::string_view text, int limit = maxTextUnits);
// The same appended to `out`.
void appendLimitedText(std::string& out, std::string_view text, int limit = maxTextUnits);

// The whole text as quoted pieces of at most maxTextUnits each, one after the other; one piece "''" for an empty text.
std::vector<std::string> limitedPieces(std::string_view text);
