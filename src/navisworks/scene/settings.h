// Units, view and background of the scene, and its way to a file.
#pragma once

#include "nwcreate/nwcreate.h"

#include <string>

namespace nv {

enum class SceneForm { None, Cache, Document };

// By the last four characters of the path, whose case counts; None for any other ending.
SceneForm sceneFormOf(const std::string& path);

void setUnits(LiNwcScene scene);
// The one view, background and ambient light; then the file. Whether it was written stands in the run report.
void writeScene(LiNwcScene scene, SceneForm form, const std::string& path);

}  // namespace nv
