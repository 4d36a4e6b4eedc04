// The JSON file beside an EEM file, read back:
//
//   file   = { id: member, ... }
//   member = { "attr": { key: text, ... }, "cls": text, "name": text }
//
// Members stand in the order of the blocks. Texts are in the code page.
#pragma once

#include "readers/finding.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace readers::eem {

struct SideMember {
    std::string key;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string className;
    std::string name;
};

std::vector<SideMember> readSideFile(std::string_view bytes, Findings& findings);

}  // namespace readers::eem
