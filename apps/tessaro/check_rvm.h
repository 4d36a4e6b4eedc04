#pragma once

#include "check_command.h"

// An RVM file and the attribute file beside it, which has the same name and the ending .txt: each by itself, and that
// both hold the same tree. A folder stands for all RVM files in it.
Findings checkRvmFiles(const std::filesystem::path& path);
