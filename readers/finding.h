// What is wrong with a file, as every reader tells it: a value that the caller prints, counts or compares.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace readers {

// `place` is where in the file: a byte ("at 0x1F4"), a line ("line 17"), a member ("member 5") or a part of its tree
// ("nodes[17]"); empty for the file as a whole. Both texts are in the bytes of the file.
struct Finding {
    std::string place;
    std::string text;
};
using Findings = std::vector<Finding>;

// Nobody reads thousands, and a hostile file must not fill the memory with them: more are not kept.
inline constexpr std::size_t mostFindings = 100;
void note(Findings& findings, std::string place, std::string text);

std::string atByte(std::uint64_t offset);
std::string atLine(std::size_t line);
std::string atItem(const char* array, std::size_t index);

// "place: text".
std::string sentence(const Finding& finding);

}  // namespace readers
