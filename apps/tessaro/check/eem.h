#pragma once

#include "tessaro/check/command.h"

// An EEM file and the JSON file beside it, which has the same name and the ending .json: each by itself, and that both
// tell of the same objects. A folder stands for all EEM files in it.
Findings checkEemFiles(const std::filesystem::path& path);
