#include "tolmar/host_ui.h"

namespace tolmar {

namespace {

class SilentUi final : public HostUi {
public:
    void print(const std::string&) override {}
    void messageBox(const std::string&, const std::string&) override {}
    std::optional<std::string> fileDialog(const FileDialog&) override { return std::nullopt; }
    std::optional<std::string> folderDialog(const std::string&) override { return std::nullopt; }
    std::optional<std::string> inputBox(const std::string&) override { return std::nullopt; }
    void runForm(OrnLogicForm&) override {}
    void progressChanged(const ProgressState&) override {}
    bool cancelRequested() override { return false; }
};

HostUi*& uiInForce() {
    static SilentUi silent;
    static HostUi* ui = &silent;
    if (ui == nullptr) {
        ui = &silent;
    }
    return ui;
}

}  // namespace

HostUi& hostUi() {
    return *uiInForce();
}

void setHostUi(HostUi* ui) {
    uiInForce() = ui;
}

void messageBox(const std::string& text, const std::string& title, unsigned) {
    hostUi().messageBox(text, title);
}

}  // namespace tolmar
