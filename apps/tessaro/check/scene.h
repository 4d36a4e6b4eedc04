#pragma once

#include "tessaro/check/command.h"

// A scene in binary glTF with the buffer files beside it. A folder stands for all scenes in it (.nwc, .nwd, .glb).
Findings checkSceneFiles(const std::filesystem::path& path);
