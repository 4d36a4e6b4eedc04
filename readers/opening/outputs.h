// Any output as plant objects, told by its name: the one way in for whoever does not care for formats.
#pragma once

#include "readers/object.h"

#include <filesystem>

namespace readers {

// Hands out the objects of
//
//   NAME.rvm                   with the attribute file NAME.txt beside it
//   NAME.nwc, .nwd, .glb       with the buffer files beside it
//   NAME.pmodel
//   NAME.eem                   with NAME.json beside it
//   NAME.orna                  with NAME.xml beside it
//   a folder with "uda.txt"    the macro files of HEXTOUT
//
// A file beside it that is missing is a finding; the objects come without what it holds. False, with a finding, when
// the path names no output. `toUtf8` is for the formats that are in a code page (EEM, MAXOUT, HEXTOUT).
bool readOutput(const std::filesystem::path& path, ToUtf8 toUtf8, const ObjectVisitor& visit, Findings& findings);

}  // namespace readers
