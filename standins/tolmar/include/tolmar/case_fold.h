// Case folding of single UTF-16 units: Latin, Greek, Cyrillic, Armenian and full-width letters. One unit folds to one
// unit; everything else stays as it is. Independent of the locale.
#pragma once

#include <string>
#include <string_view>

namespace tolmar {

char16_t foldCaseBeyondAscii(char16_t unit);

inline char16_t foldCase(char16_t unit) {
    if (unit < 0x80) {
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
    }
    return foldCaseBeyondAscii(unit);
}

// Order without regard to case, unit by unit.
bool lessWithoutCase(std::u16string_view a, std::u16string_view b);

// ASCII letters only; for names of sections, keys and commands.
bool equalWithoutAsciiCase(std::string_view a, std::string_view b);

}  // namespace tolmar
