// Bare programs that do what any reader of a model file must do at least. Absolute speeds differ from machine to
// machine; the ratio to these does not.
#pragma once

#include <cstddef>
#include <filesystem>

namespace bench {

// Each reads the whole file anew and gives a number that depends on all it has read, so that nothing is optimised away.
// They throw std::runtime_error when the file is not what they expect.

// Reads the bytes into memory.
std::size_t readBytes(const std::filesystem::path& file);
// Walks the file by simdjson on demand and fills a struct of std::string for each object.
std::size_t walkIntoStrings(const std::filesystem::path& file);
// The same with views into one arena in the place of strings.
std::size_t walkIntoArena(const std::filesystem::path& file);
// Parses the file into a cJSON tree.
std::size_t parseTree(const std::filesystem::path& file);

}  // namespace bench
