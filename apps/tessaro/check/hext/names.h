// What the macro files of a folder promise the target about names.
#pragma once

#include "readers/finding.h"

#include <filesystem>

namespace check {

// Run in the target's order: what is entered or referred to has been created by then, nothing is created twice, no name
// is too long. Texts stay in the bytes of the files.
void hextNames(const std::filesystem::path& folder, readers::Findings& findings);

}  // namespace check
