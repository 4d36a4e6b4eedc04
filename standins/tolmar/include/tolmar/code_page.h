// Text between the system's code page (8-bit, GBK or UTF-8 by the build constant TESSARO_CODE_PAGE), UTF-8 and UTF-16.
//
// ASCII text takes a fast path. What has no counterpart becomes "?", and nothing throws.
#pragma once

#include <string>
#include <string_view>

namespace tolmar {

std::string toUtf8(std::string_view codePageText);
std::string fromUtf8(std::string_view utf8);
std::u16string toWide(std::string_view codePageText);
std::string fromWide(std::u16string_view wide);
std::string wideToUtf8(std::u16string_view wide);
std::u16string utf8ToWide(std::string_view utf8);
bool isAscii(std::string_view text);
bool isValidUtf8(std::string_view text);

}  // namespace tolmar
