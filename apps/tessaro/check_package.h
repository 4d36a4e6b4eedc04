// `tessaro check package`.
#pragma once

#include "check_command.h"

// A PModel package.
Findings checkPackages(const std::filesystem::path& path);
