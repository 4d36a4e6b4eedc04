#pragma once

#include "tessaro/check/command.h"

// An RVM file and the attribute file beside it, which has the same name and the ending .txt: each by itself, and that
// both hold the same tree. A folder stands for all RVM files in it.
// Where the root has its END, the pair has to hold the rest of what `rvmCompat` promises, too.
Findings checkRvmFiles(const std::filesystem::path& path);
// The same, and every pair has to be of that form.
Findings checkStrictRvmFiles(const std::filesystem::path& path);
