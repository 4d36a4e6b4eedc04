// `tessaro run XDBOUT`: the module's exported function for other modules of the process, its arrays as JSON.
#pragma once

#include "plant/model.h"
#include "tolmar/module_loader.h"

#include <filesystem>

inline constexpr const char* xdbFunctionName = "XDBOUT";

struct XdbCall {
    const tolmar::LoadedModule* module = nullptr;
    // Folder of the JSON file, which takes the project's name; empty: standard output.
    std::filesystem::path out;
    bool strict = false;
    // Whose manager the user picks in a form; null: the current manager is the one that the model says.
    plant::Model* choosesFrom = nullptr;
};

// Tells the run report how it went.
void callXdbFunction(const XdbCall& call);
