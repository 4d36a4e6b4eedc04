// Everything a user would have seen or clicked, as one interface of the host. The program installs an implementation;
// without one, nothing is shown and every dialog counts as cancelled.
//
// Texts are in the code page.
#pragma once

#include <optional>
#include <string>
#include <vector>

class OrnLogicForm;

namespace tolmar {

struct FileDialog {
    bool save = true;
    std::string defaultExtension;
    std::string fileName;
    std::string filter;
    bool overwritePrompt = true;
    std::string title;
};

struct ProgressBar {
    std::string text;
    int value = 0;
};
struct ProgressState {
    bool open = false;
    std::string title;
    std::string text;
    std::vector<ProgressBar> bars;
};

class HostUi {
public:
    virtual ~HostUi() = default;
    // A line or part of a line on the command line.
    virtual void print(const std::string& text) = 0;
    virtual void messageBox(const std::string& text, const std::string& title) = 0;
    virtual std::optional<std::string> fileDialog(const FileDialog& dialog) = 0;
    virtual std::optional<std::string> folderDialog(const std::string& title) = 0;
    virtual std::optional<std::string> inputBox(const std::string& prompt) = 0;
    // Fills an initialised form with the answers that are known beforehand, for whoever shows it next. False when one
    // of them does not fit; the run then counts as refused.
    virtual bool prepareForm(OrnLogicForm&) { return true; }
    // Runs the form until it ends; its result is the form's own.
    virtual void runForm(OrnLogicForm& form) = 0;
    virtual void progressChanged(const ProgressState& state) = 0;
    // True once the user has asked to stop. Asked at every progress call and by the script host.
    virtual bool cancelRequested() = 0;
};

// The implementation in force; `setHostUi(nullptr)` puts the silent one back. Not owned.
HostUi& hostUi();
void setHostUi(HostUi* ui);

// Message box of the host: the style is ignored but for keeping on top, which every box here does.
inline constexpr unsigned messageBoxTopMost = 0x40000;
void messageBox(const std::string& text, const std::string& title = {}, unsigned style = messageBoxTopMost);

}  // namespace tolmar
