// What a source reports, as remarks of the load.
#pragma once

#include "plant/model.h"
#include "sources/report.h"

#include <string>
#include <vector>

namespace plant {

// Every finding that was kept, how many more there are of a code, and the balance of each kind. `name` stands for the
// file where nothing else tells a place.
void addRemarks(const SourceReport& report, const std::string& name, std::vector<LoadRemark>& remarks);

}  // namespace plant
