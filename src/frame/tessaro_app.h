// The module towards its host: one application object that answers the host's messages.
#pragma once

#include "frame/commands.h"
#include "tolmar/module_api.h"

#include <span>

// Framework base. Every operation answers one application message and gets the message's packet.
class TlRxDbxApp {
public:
    TlRxDbxApp() = default;
    virtual ~TlRxDbxApp() = default;
    TlRxDbxApp(const TlRxDbxApp&) = delete;
    TlRxDbxApp& operator=(const TlRxDbxApp&) = delete;

    virtual int onInitApp(void* packet);
    virtual int onUnloadApp(void* packet);
    virtual int onLoadDrawing(void*) { return TlRx::kRetOK; }
    virtual int onUnloadDrawing(void*) { return TlRx::kRetOK; }
    virtual int onInvokeFunction(void*) { return TlRx::kRetOK; }
    // The eleven further messages, 6 to 15 and then 0, numbered from 0.
    virtual int onOther(int, void*) { return TlRx::kRetOK; }
    virtual void registerServerComponents() = 0;

private:
    void* moduleHandle_ = nullptr;
    bool unlockApplication_ = true;
    bool lockDocument_ = true;
};

// Adds tables of declared commands and script functions; this module has none, its commands are handed to TessaroApp.
class TlRxTlxApp : public TlRxDbxApp {};

class TessaroApp final : public TlRxTlxApp {
public:
    // Registers the commands, in order, at initialisation. The table must outlive the application.
    explicit TessaroApp(std::span<const CommandRow> commands) : commands_(commands) {}
    int onInitApp(void* packet) override;
    int onUnloadApp(void* packet) override;
    void registerServerComponents() override {}

private:
    std::span<const CommandRow> commands_;
};

// Calls the operation that belongs to the message; 0 without a call for a message that has none.
int dispatchMessage(TlRxDbxApp& app, unsigned message, void* packet);
