// How names are cut, joined and cleaned.
#pragma once

#include "platform/objects.h"

#include <string>
#include <string_view>

// Replaces in place, byte for byte, white space and ~`*^()+='",./\|? by "_".
void cleanName(std::string& text);

namespace naming {

HxDbObjectId idOf(const HxDbObject* object);  // invalid for null

// Longest stem in front of a suffix that tells the element's type, so that the whole fits HEXT's 51 bytes.
inline constexpr std::size_t stemLength = 46;
std::string stemWith(std::string_view stem, std::string_view suffix, std::size_t length = stemLength);

inline constexpr std::string_view namePrefix = "ORNA_";
std::string_view withoutPrefix(std::string_view name);

void removeBlanks(std::string& text);

}  // namespace naming
