// A user interface that remembers what it is told and says no to everything.
#pragma once

#include "tolmar/host_ui.h"

class UiDouble final : public tolmar::HostUi {
public:
    void print(const std::string& text) override { printed += text; }
    void messageBox(const std::string& text, const std::string&) override { boxes.push_back(text); }
    std::optional<std::string> fileDialog(const tolmar::FileDialog&) override { return std::nullopt; }
    std::optional<std::string> folderDialog(const std::string&) override { return std::nullopt; }
    std::optional<std::string> inputBox(const std::string&) override { return std::nullopt; }
    void runForm(OrnLogicForm&) override {}
    void progressChanged(const tolmar::ProgressState&) override {}
    bool cancelRequested() override { return cancel; }

    std::string printed;
    std::vector<std::string> boxes;
    bool cancel = false;
};
