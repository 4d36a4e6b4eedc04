// Checks the two files of MAXOUT: each by itself, and that both hold the same tree.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace maxcheck {

// What is wrong, with the line. Empty for a good file. Bytes are those of the files, in any code page whose ASCII
// characters are ASCII. The files are read through once; nothing of them is kept.
std::vector<std::string> checkGeometry(std::string_view bytes);
std::vector<std::string> checkProperties(std::string_view bytes);
// Of two files that are good by themselves. Ids and names of the objects of the property file are kept.
std::vector<std::string> checkPair(std::string_view geometry, std::string_view properties);

}  // namespace maxcheck
