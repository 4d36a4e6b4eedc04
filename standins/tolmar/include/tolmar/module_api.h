// What a module and the host agree on: messages, result codes, the command stack and the system registry.
#pragma once

#include "tolmar/rx.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Interface version that the host checks at load.
inline constexpr unsigned tlrxApiVersion = 0x07E90000;

namespace TlRx {
enum AppRetCode { kRetOK = 0, kRetError = 3 };
enum AppMsgCode : unsigned {
    kLastMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5,
};
}  // namespace TlRx

using TlEdCommandHandler = void (*)();

struct TlEdCommand {
    std::string group;
    std::string globalName;
    std::string localName;
    unsigned flags = 0;  // 0: modal
    TlEdCommandHandler handler = nullptr;
    int functionCode = -1;
};

// The host's commands, in the order in which they were added.
class TlEdCommandStack : public TlRxObject {
    TLRX_CLASS(TlEdCommandStack)
public:
    TlEdCommandStack() : TlRxObject(classRecord) {}
    // 0 on success; a name that stands already is refused with another status. `context` and `resource` are not used;
    // `out`, when given, gets the command, owned by the stack.
    int addCommand(const char* group, const char* globalName, const char* localName, unsigned flags,
                   TlEdCommandHandler handler, void* context = nullptr, int functionCode = -1, void* resource = nullptr,
                   const TlEdCommand** out = nullptr);
    // 0 on success, another status when there is no such group.
    int removeGroup(const char* group);
    // By global name, without regard to case; null when there is none. Valid until the stack changes.
    const TlEdCommand* lookup(std::string_view globalName) const;
    const std::vector<std::unique_ptr<TlEdCommand>>& commands() const { return commands_; }

private:
    std::vector<std::unique_ptr<TlEdCommand>> commands_;
};

inline constexpr const char* TLAD_REGISTERED_COMMANDS = "TLAD_REGISTERED_COMMANDS";

// Named objects of the system; not owned.
class TlRxDictionary {
public:
    virtual ~TlRxDictionary() = default;
    virtual TlRxObject* at(const char* name) = 0;
};
TlRxDictionary* tlrxSysRegistry();

// Loading of modules into memory and their wishes about it; both calls take the packet of the message.
class TlRxDynamicLinker {
public:
    virtual ~TlRxDynamicLinker() = default;
    virtual void lockApplication(void* packet) = 0;
    virtual void unlockApplication(void* packet) = 0;
};
TlRxDynamicLinker* tlrxDynamicLinker();

void tlrxRegisterAppMDIAware(void* packet);
// A handle that stays valid until the process ends.
void* tlrxRegisterService(const char* name);
void tlrxBuildClassHierarchy();
