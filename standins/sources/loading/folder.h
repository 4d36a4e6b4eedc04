// The files that a plant is read from, where some of them are named by their folder.
#pragma once

#include <filesystem>
#include <span>
#include <vector>

namespace plant {

// Every file as it stands; a folder as the files in it, not in folders below it, whose first bytes a source recognises,
// by name. What goes with another file, such as an attribute text, is none of them. A folder without any
// stays, so that it is refused as a file that cannot be read.
std::vector<std::filesystem::path> filesOfPlant(std::span<const std::filesystem::path> named);

}  // namespace plant
