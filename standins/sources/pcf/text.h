// The bytes of a piping component file as UTF-8.
//
// Such files say nothing of their encoding: most are ASCII, some UTF-8 with or without a byte order mark, many
// Windows-1252. What is valid UTF-8 is taken as that; everything else as Windows-1252, in which every byte means
// something.
#pragma once

#include <string>
#include <string_view>

namespace plant::pcf {

struct Text {
    std::string utf8;           // without a byte order mark; zero characters have become blanks
    bool wasOtherCode = false;  // the bytes were no UTF-8
    bool hadZeros = false;
};

Text decode(std::string_view bytes);

}  // namespace plant::pcf
