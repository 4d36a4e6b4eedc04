// Which files a checker is to look at.
#pragma once

#include "readers/mapped_file.h"
#include "readers/object.h"
#include "tessaro/check/command.h"

#include <initializer_list>

// The files of a path, sorted: the file itself, or those of a folder. Only files with one of the endings (in lower
// case, with their dot) count; letter case does not. Without any, `findings` says why, with `kind` in it ("RVM file").
std::vector<std::filesystem::path> filesToCheck(const std::filesystem::path& path, const char* kind,
                                                std::initializer_list<const char*> endings, Findings& findings);

// False, with a finding, when the file cannot be read.
bool canBeRead(const readers::MappedFile& mapped, const std::filesystem::path& file, Findings& findings);

// What a reader or a rule found in a file, a sentence each. `toUtf8` turns its texts into UTF-8; null when they are.
void addFindings(const std::filesystem::path& file, const readers::Findings& found, Findings& findings,
                 readers::ToUtf8 toUtf8 = nullptr);
