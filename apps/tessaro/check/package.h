// `tessaro check package`.
#pragma once

#include "tessaro/check/command.h"

// A PModel package.
Findings checkPackages(const std::filesystem::path& path);
