// Texts as the inside of JSON strings: UTF-8, with what JSON keeps for itself escaped. What is no text becomes U+FFFD.
#pragma once

#include <string>
#include <string_view>

namespace gltf {

// Appends a text in UTF-16; a half of a surrogate pair that stands alone is no text.
void appendEscaped(std::string& out, std::u16string_view text);
// Appends a text in UTF-8; a byte that is part of no character is no text. Escapes the character 7F, too.
void appendEscaped(std::string& out, std::string_view utf8);

}  // namespace gltf
