// File names made of a user's texts.
#pragma once

#include <string>
#include <string_view>

// Characters that a file system refuses become "_". Texts are in the code page.
std::string safeFileName(std::string_view name);
