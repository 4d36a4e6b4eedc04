// The host's dialogs with Qt Widgets. Main thread only; the one QApplication of the process stands before.
#pragma once

#include "qt/progress_window.h"
#include "tolmar/host_ui.h"

#include <QElapsedTimer>

class QtUi final : public tolmar::HostUi {
public:
    // What is printed goes to `console`, as do boxes, and the questions for a cancel; its answers to dialogs are what
    // they suggest, and forms open as it prepares them. It must outlive this.
    explicit QtUi(tolmar::HostUi& console) : console_(console) {}

    void print(const std::string& text) override { console_.print(text); }
    void messageBox(const std::string& text, const std::string& title) override;
    std::optional<std::string> fileDialog(const tolmar::FileDialog& dialog) override;
    std::optional<std::string> folderDialog(const std::string& title) override;
    std::optional<std::string> inputBox(const std::string& prompt) override;
    void runForm(OrnLogicForm& form) override;
    void progressChanged(const tolmar::ProgressState& state) override;
    bool cancelRequested() override;

private:
    // Lets windows react, at most so often that it costs nothing.
    void breathe();

    tolmar::HostUi& console_;
    ProgressWindow progress_;
    QElapsedTimer sinceBreath_;
};
