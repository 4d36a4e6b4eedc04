#include "tolmar/module_api.h"

#include "tolmar/case_fold.h"
#include "tolmar/text.h"

#include <algorithm>
#include <set>

TLRX_DEFINE_ROOT(TlEdCommandStack);

namespace {

enum CommandStatus { CommandOk = 0, CommandInvalid = 1, CommandStandsAlready = 2, CommandUnknown = 3 };

class SystemRegistry final : public TlRxDictionary {
public:
    TlRxObject* at(const char* name) override {
        return name != nullptr && std::string_view(name) == TLAD_REGISTERED_COMMANDS ? &commands_ : nullptr;
    }

private:
    TlEdCommandStack commands_;
};

// The host keeps a module until it unloads it itself, so the wishes change nothing.
class DynamicLinker final : public TlRxDynamicLinker {
public:
    void lockApplication(void*) override {}
    void unlockApplication(void*) override {}
};

}  // namespace

int TlEdCommandStack::addCommand(const char* group, const char* globalName, const char* localName, unsigned flags,
                                 TlEdCommandHandler handler, void*, int functionCode, void*, const TlEdCommand** out) {
    if (group == nullptr || globalName == nullptr || *globalName == '\0' || handler == nullptr) {
        return CommandInvalid;
    }
    if (lookup(globalName) != nullptr) {
        return CommandStandsAlready;
    }
    auto command = std::make_unique<TlEdCommand>();
    command->group = group;
    command->globalName = globalName;
    command->localName = localName == nullptr ? globalName : localName;
    command->flags = flags;
    command->handler = handler;
    command->functionCode = functionCode;
    if (out != nullptr) {
        *out = command.get();
    }
    commands_.push_back(std::move(command));
    return CommandOk;
}

int TlEdCommandStack::removeGroup(const char* group) {
    const std::string_view name = tolmar::textOrEmpty(group);
    const std::size_t removed = std::erase_if(
        commands_, [name](const auto& command) { return tolmar::equalWithoutAsciiCase(command->group, name); });
    return removed > 0 ? CommandOk : CommandUnknown;
}

const TlEdCommand* TlEdCommandStack::lookup(std::string_view globalName) const {
    const auto place = std::find_if(commands_.begin(), commands_.end(), [globalName](const auto& command) {
        return tolmar::equalWithoutAsciiCase(command->globalName, globalName);
    });
    return place == commands_.end() ? nullptr : place->get();
}

TlRxDictionary* tlrxSysRegistry() {
    static SystemRegistry registry;
    return &registry;
}

TlRxDynamicLinker* tlrxDynamicLinker() {
    static DynamicLinker linker;
    return &linker;
}

void tlrxRegisterAppMDIAware(void*) {}

void* tlrxRegisterService(const char* name) {
    static std::set<std::string> services;
    return const_cast<std::string*>(&*services.emplace(tolmar::textOrEmpty(name)).first);
}

// Class records are complete at compile time.
void tlrxBuildClassHierarchy() {}
