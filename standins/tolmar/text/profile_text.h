// Changes in the text of a profile file: sections in brackets, lines of key and value, comments behind semicolons.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolmar {

// The sections and values of the text and nothing else, a line each, so that the reader sees what the function below
// sees: headings that do not end, zero bytes and single carriage returns mean the same to both.
std::string plainProfile(std::string_view text);

// The text with one value set, everything else as it was; a null value removes the key. Lines end as the first line of
// the text does, in CR LF when there is none.
std::string withProfileValue(std::string_view text, std::string_view section, std::string_view key,
                             std::optional<std::string_view> value);

}  // namespace tolmar
