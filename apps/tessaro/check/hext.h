#pragma once

#include "tessaro/check/command.h"

// The folder temp/hext of an installation root after HEXTOUT: the files that every run writes are there, and every text
// file of the folder has lines in CR LF, characters of the code page and no zero bytes; and, run in the target's order,
// every element that is entered or referred to has been created by then, once, with a name that is not too long.
Findings checkHextFolder(const std::filesystem::path& folder);
