// `tessaro model`: is a model file good, what is in it, and models made from nothing.
#pragma once

#include "tessaro/terminal/exit_status.h"

#include <cstdint>
#include <filesystem>

struct ModelOptions {
    std::filesystem::path file;
    bool json = false;
    int depth = -1;
    std::uint64_t objects = 1000;
    std::uint64_t seed = 1;
    bool odd = false;
};

ExitStatus checkModel(const ModelOptions& options);
ExitStatus describeModelFile(const ModelOptions& options);
ExitStatus printModelTree(const ModelOptions& options);
ExitStatus generateModelFile(const ModelOptions& options);
