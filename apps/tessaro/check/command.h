// `tessaro check`: is an output whole, would its receiver take it. One row a kind of output.
#pragma once

#include "tessaro/terminal/exit_status.h"

#include <filesystem>
#include <span>
#include <string>
#include <vector>

// What is wrong with an output, in UTF-8, one sentence each; none when it is whole.
using Findings = std::vector<std::string>;

struct OutputChecker {
    const char* kind;
    // What the path names and what is looked at, for the help.
    const char* about;
    // A path as it could be, for the help.
    const char* example;
    Findings (*check)(const std::filesystem::path& path);
    // Where a stricter form of the output exists: demands it. Null otherwise.
    Findings (*checkStrictly)(const std::filesystem::path& path) = nullptr;
};

std::span<const OutputChecker> outputCheckers();

// Prints what is wrong; done when nothing is, the input refused otherwise.
ExitStatus checkOutput(const OutputChecker& checker, const std::filesystem::path& path, bool strictly);
