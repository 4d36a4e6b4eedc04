// The command ORNAOUT: an EEM file and a JSON file beside it. docs/eem-format.md tells what is in them.
//
// The room: walk goes through each data tree once, zone to manager to object; content decides what becomes of them,
// shapes or papers by the application module; primitives writes the record of a primitive, by a table of classes; file
// is the byte layer and patches the end of a block. The JSON file grows in step and is written at the end, so that a
// cancelled export has none.
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
