#include "tolmar/module_loader.h"

#include "tolmar/module_api.h"

#include <cstdio>
#include <dlfcn.h>
#include <exception>
#include <set>

namespace tolmar {

namespace {

using ApiVersion = unsigned (*)();

std::string hexText(unsigned value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", value);
    return text;
}

std::string lastLoaderError() {
    const char* text = ::dlerror();
    return text == nullptr ? "unknown error" : text;
}

TlEdCommandStack& commandStack() {
    return *TlEdCommandStack::cast(tlrxSysRegistry()->at(TLAD_REGISTERED_COMMANDS));
}

// Removes the commands beyond the first `count`: their handlers go with the library.
void dropCommandsFrom(std::size_t count) {
    std::set<std::string> groups;
    const auto& commands = commandStack().commands();
    for (std::size_t i = count; i < commands.size(); ++i) {
        groups.insert(commands[i]->group);
    }
    for (const std::string& group : groups) {
        commandStack().removeGroup(group.c_str());
    }
}

// The empty text when the module took the message.
std::string sendInitialisation(int (*entry)(unsigned, void*), void* packet) {
    try {
        const int result = entry(TlRx::kInitAppMsg, packet);
        return result == TlRx::kRetOK ? "" : "initialisation failed with result " + std::to_string(result);
    } catch (const std::exception& error) {
        return std::string("initialisation failed: ") + error.what();
    } catch (...) {
        return "initialisation failed";
    }
}

}  // namespace

std::unique_ptr<LoadedModule> LoadedModule::load(const std::filesystem::path& file, std::string& error) {
    std::unique_ptr<LoadedModule> module(new LoadedModule);
    const auto refuse = [&](const std::string& why) {
        error = file.string() + ": " + why;
        return nullptr;
    };
    std::error_code status;
    if (!std::filesystem::is_regular_file(file, status)) {
        return refuse("no such module file");
    }
    module->library_ = ::dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module->library_ == nullptr) {
        return refuse("cannot be loaded: " + lastLoaderError());
    }
    module->entry_ = reinterpret_cast<int (*)(unsigned, void*)>(module->symbol("tlrxEntryPoint"));
    if (module->entry_ == nullptr) {
        return refuse("symbol tlrxEntryPoint missing");
    }
    const auto version = reinterpret_cast<ApiVersion>(module->symbol("tlrxGetApiVersion"));
    if (version == nullptr) {
        return refuse("symbol tlrxGetApiVersion missing");
    }
    if (version() != tlrxApiVersion) {
        return refuse("interface version " + hexText(version()) + ", " + hexText(tlrxApiVersion) + " expected");
    }
    const std::size_t commandsBefore = commandStack().commands().size();
    const std::string failure = sendInitialisation(module->entry_, module.get());
    if (!failure.empty()) {
        dropCommandsFrom(commandsBefore);
        return refuse(failure);
    }
    module->initialised_ = true;
    return module;
}

LoadedModule::~LoadedModule() {
    if (initialised_) {
        try {
            entry_(TlRx::kUnloadAppMsg, this);
        } catch (...) {
            // The library goes in any case.
        }
    }
    if (library_ != nullptr) {
        ::dlclose(library_);
    }
}

void* LoadedModule::symbol(const char* name) const {
    return ::dlsym(library_, name);
}

}  // namespace tolmar
