#include "frame/tessaro_app.h"

#include "platform/attribute_cache.h"
#include "scripts/script_host.h"

namespace {

constexpr unsigned lastMessage = 15;
constexpr unsigned firstOther = 6;

// Module-wide values of the initialisation.
void* appPacket = nullptr;
void* tessaroService = nullptr;

TlEdCommandStack* commandStack() {
    return TlEdCommandStack::cast(tlrxSysRegistry()->at(TLAD_REGISTERED_COMMANDS));
}

}  // namespace

int TlRxDbxApp::onInitApp(void* packet) {
    moduleHandle_ = packet;
    TlRxDynamicLinker* linker = tlrxDynamicLinker();
    if (unlockApplication_) {
        linker->unlockApplication(packet);
    }
    if (lockDocument_) {
        linker->lockApplication(packet);
    }
    registerServerComponents();
    tlrxBuildClassHierarchy();
    return TlRx::kRetOK;
}

int TlRxDbxApp::onUnloadApp(void*) {
    return TlRx::kRetOK;
}

int TessaroApp::onInitApp(void* packet) {
    const int result = TlRxTlxApp::onInitApp(packet);
    tlrxRegisterAppMDIAware(packet);
    appPacket = packet;
    tessaroService = tlrxRegisterService("Tessaro");
    for (const CommandRow& command : commands_) {
        if (TlEdCommandStack* stack = commandStack()) {
            stack->addCommand(commandGroup, command.name, command.name, 0, command.handler, nullptr, -1, nullptr,
                              nullptr);
        }
    }
    return result;
}

int TessaroApp::onUnloadApp(void* packet) {
    const int result = TlRxTlxApp::onUnloadApp(packet);
    if (TlEdCommandStack* stack = commandStack()) {
        stack->removeGroup(commandGroup);
    }
    destroyScriptHost();
    // It looks into the model, which the host may replace before the module comes back.
    clearBomCache();
    return result;
}

int dispatchMessage(TlRxDbxApp& app, unsigned message, void* packet) {
    switch (message) {
    case TlRx::kInitAppMsg:
        return app.onInitApp(packet);
    case TlRx::kUnloadAppMsg:
        return app.onUnloadApp(packet);
    case TlRx::kLoadDwgMsg:
        return app.onLoadDrawing(packet);
    case TlRx::kUnloadDwgMsg:
        return app.onUnloadDrawing(packet);
    case TlRx::kInvkSubrMsg:
        return app.onInvokeFunction(packet);
    case TlRx::kLastMsg:
        return app.onOther(static_cast<int>(lastMessage - firstOther + 1), packet);
    default:
        return message <= lastMessage ? app.onOther(static_cast<int>(message - firstOther), packet) : 0;
    }
}
