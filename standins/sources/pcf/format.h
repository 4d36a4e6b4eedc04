// The row of piping component files in the table of formats (sources/source.h). All of a plant's are told together,
// since lines go on from file to file. sys/sources.json of the installation root says more of types, sizes and
// insulation.
#pragma once

#include "sources/source.h"

namespace plant::pcf {

bool isPcf(std::string_view start, const std::filesystem::path& path);
void readPcf(SourceFile& file);

}  // namespace plant::pcf
