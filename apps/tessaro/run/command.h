// `tessaro run`: commands of the module on a plant model.
#pragma once

#include "tessaro/terminal/exit_status.h"

#include <filesystem>
#include <string>
#include <vector>

// As the command line gives them; empty means not given.
struct RunOptions {
    std::vector<std::string> commands;
    std::vector<std::filesystem::path> model;  // files of the plant, or folders of them
    std::filesystem::path root;
    std::filesystem::path out;
    std::vector<std::string> select;
    std::vector<std::string> deselect;
    std::filesystem::path selectFile;
    std::vector<std::string> set;
    std::vector<std::string> inputs;
    bool interactive = false;
    bool dryRun = false;
    bool trustScripts = false;
    std::filesystem::path report;
    std::string progress = "auto";
    std::filesystem::path logFile;
    bool quiet = false;
    bool verbose = false;
};

ExitStatus runCommands(RunOptions options);

// The two halves of KEY=0|1; false when the text is something else.
bool splitSetting(const std::string& text, std::string& key, bool& on);
