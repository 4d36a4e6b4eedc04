#include "tessaro/run/module_file.h"

#include <cstdlib>

#ifndef TESSARO_MODULE_DIR
#define TESSARO_MODULE_DIR "../lib/tessaro"
#endif

std::filesystem::path moduleFile() {
    if (const char* named = std::getenv("TESSARO_MODULE"); named != nullptr && *named != '\0') {
        return named;
    }
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    std::filesystem::path file;
    for (const char* place : {".", "../lib", "../lib/tessaro", TESSARO_MODULE_DIR}) {
        file = (folder / place / "libtessaro.so").lexically_normal();
        if (std::filesystem::exists(file, error)) {
            return file;
        }
    }
    return file;
}

std::unique_ptr<tolmar::LoadedModule> loadModule(std::string& error) {
    return tolmar::LoadedModule::load(moduleFile(), error);
}

const TlEdCommandStack& registeredCommands() {
    return *TlEdCommandStack::cast(tlrxSysRegistry()->at(TLAD_REGISTERED_COMMANDS));
}
