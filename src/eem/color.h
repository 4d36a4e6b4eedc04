// The colour word behind each solid of an EEM file.
#pragma once

#include <cstdint>

namespace eem {

// The word of a material code (exportbase/material_code): red in bits 0 to 7, green in 8 to 15, blue in 16 to 23, and
// 0x33 in bits 24 to 31 for an obstruction. The inverse of colour index c is the colour of index 255 - c. An index
// outside the table gives black.
std::uint32_t colorWord(std::int64_t code);

}  // namespace eem
