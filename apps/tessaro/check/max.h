#pragma once

#include "tessaro/check/command.h"

// A geometry file of MAXOUT (.orna) and the property file beside it, which has the same name and the ending .xml: each
// by itself, and that both hold the same tree. A folder stands for all geometry files in it.
Findings checkMaxFiles(const std::filesystem::path& path);
