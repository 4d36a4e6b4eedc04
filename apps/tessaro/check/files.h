// Which files a checker is to look at.
#pragma once

#include "tessaro/check/command.h"

#include <initializer_list>

// The files of a path, sorted: the file itself, or those of a folder. Only files with one of the endings (in lower
// case, with their dot) count; letter case does not. Without any, `findings` says why, with `kind` in it ("RVM file").
std::vector<std::filesystem::path> filesToCheck(const std::filesystem::path& path, const char* kind,
                                                std::initializer_list<const char*> endings, Findings& findings);

// False, with a finding, when the file cannot be read.
bool readToCheck(const std::filesystem::path& file, std::string& bytes, Findings& findings);
