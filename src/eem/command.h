// The command ORNAOUT: an EEM file and a JSON file beside it. docs/eem-format.md tells what is in them.
#pragma once

#include "eem/file.h"

#include <cstdint>
#include <string_view>

// Asks for the file, then exports.
void ornaout();

namespace eem {

// The export to a file; shows the scope dialog. `path` is in the code page, `limit` the most bytes of the file. What
// goes wrong is told to the user and the run report; nothing is thrown.
void exportTo(std::string_view path, std::uint64_t limit = largestFile);

}  // namespace eem
