// Loading of a module by the host, step by step: the file, its symbols, its interface version, message 1; and unloading
// in reverse.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace tolmar {

class LoadedModule {
public:
    // Null with a message in UTF-8 that names the step that failed: the file, a symbol, the version or the
    // initialisation.
    static std::unique_ptr<LoadedModule> load(const std::filesystem::path& file, std::string& error);
    // Sends the unload message, then releases the library.
    ~LoadedModule();
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;
    // An exported function by name; null when there is none.
    void* symbol(const char* name) const;

private:
    LoadedModule() = default;
    void* library_ = nullptr;
    int (*entry_)(unsigned, void*) = nullptr;
    bool initialised_ = false;
};

}  // namespace tolmar
