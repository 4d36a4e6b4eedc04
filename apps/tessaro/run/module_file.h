// The module that the program loads.
#pragma once

#include "tolmar/module_api.h"
#include "tolmar/module_loader.h"

#include <filesystem>
#include <memory>
#include <string>

// Where the module lies: the environment variable TESSARO_MODULE, else libtessaro.so beside the program, in ../lib or
// in
// ../lib/tessaro. The first of these that exists, or the last one tried.
std::filesystem::path moduleFile();

// The module, ready for commands; null with a message in UTF-8.
std::unique_ptr<tolmar::LoadedModule> loadModule(std::string& error);

// The host's commands.
const TlEdCommandStack& registeredCommands();
