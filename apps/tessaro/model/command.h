// `tessaro model`: are the files of a plant good, what is in them, one model file of them, and models made from
// nothing.
#pragma once

#include "tessaro/terminal/exit_status.h"

#include <cstdint>
#include <filesystem>
#include <vector>

struct ModelOptions {
    std::vector<std::filesystem::path> files;  // of the plant that is read
    std::filesystem::path file;                // that is written
    bool json = false;
    int depth = -1;
    std::uint64_t objects = 1000;
    std::uint64_t seed = 1;
    bool odd = false;
};

ExitStatus checkModel(const ModelOptions& options);
ExitStatus describeModelFile(const ModelOptions& options);
ExitStatus printModelTree(const ModelOptions& options);
ExitStatus convertModel(const ModelOptions& options);
ExitStatus generateModelFile(const ModelOptions& options);
