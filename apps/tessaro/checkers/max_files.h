// Checks the two files of MAXOUT: each by itself, and that both hold the same tree.
#pragma once

#include <string>
#include <vector>

namespace maxcheck {

// What is wrong, with the place. Empty for a good pair. Bytes are those of the files, in any code page whose ASCII
// characters are ASCII.
std::vector<std::string> checkGeometry(const std::string& bytes);
std::vector<std::string> checkProperties(const std::string& bytes);
// Of two files that are good by themselves.
std::vector<std::string> checkPair(const std::string& geometry, const std::string& properties);

}  // namespace maxcheck
