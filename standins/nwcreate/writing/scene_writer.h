// A scene as files: binary glTF, and further buffer files beside it where one is not enough.
#pragma once

#include "nwcreate/writing/node_tree.h"

#include <string>
#include <string_view>

namespace nwcreate {

// Writes over what is there; tells the run report. False when not all could be written: then nothing is left.
bool writeScene(Library& lib, SceneStore& store, std::u16string_view title, const std::string& codePagePath);

}  // namespace nwcreate
