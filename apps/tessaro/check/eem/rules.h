// What an EEM file and the JSON file beside it promise each other, beyond being readable.
#pragma once

#include "readers/eem/file.h"
#include "readers/eem/side_file.h"

namespace check {

// Names are text of the code page.
void eemNames(const readers::eem::EemContent& content, readers::Findings& findings);
// Both files tell of the same objects, by id and name, in the same order.
void eemPair(const readers::eem::EemContent& content, const std::vector<readers::eem::SideMember>& members,
             readers::Findings& findings);

}  // namespace check
