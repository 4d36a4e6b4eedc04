// A user interface that answers every question from a script: the command line of the program, or a test.
#pragma once

#include "forms/tree_selection.h"
#include "tolmar/host_ui.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tolmar {

// The answers. Texts are UTF-8.
struct ScriptedAnswers {
    // Answers file and folder dialogs: the folder itself, or the project's name with the dialog's ending in it. Made
    // when it is first asked for. None: such dialogs are cancelled.
    std::optional<std::filesystem::path> target{};
    // Answers of input boxes, in order; beyond the last the box is cancelled.
    std::vector<std::string> inputs{};
    // Option check boxes of a form to set: the key in the option file or the label, and the state.
    std::vector<std::pair<std::string, bool>> options{};
    // Items of the form's tree; see applySelection.
    TreeSelection selection{};
    // Forms are filled, counted and then cancelled.
    bool dryRun = false;
    // A dry run names every checked item by its path.
    bool listItems = false;
    // Every form is cancelled at once.
    bool cancelForms = false;
    // From this question on, counted from 1, cancelRequested is true; 0: never.
    long cancelAfter = 0;
    // Asked too, when set.
    std::function<bool()> cancelled{};
};

class ScriptedUi : public HostUi {
public:
    enum class Channel { Print, Box, Note, Error };
    // Takes what is said, in UTF-8: parts of lines as printed, whole boxes, and notes of this class as lines without an
    // end.
    using Output = std::function<void(Channel channel, const std::string& utf8)>;

    explicit ScriptedUi(ScriptedAnswers answers = {}, Output output = {});

    void print(const std::string& text) override;
    void messageBox(const std::string& text, const std::string& title) override;
    std::optional<std::string> fileDialog(const FileDialog& dialog) override;
    std::optional<std::string> folderDialog(const std::string& title) override;
    std::optional<std::string> inputBox(const std::string& prompt) override;
    // Sets options, and items where there are patterns.
    bool prepareForm(OrnLogicForm& form) override;
    void runForm(OrnLogicForm& form) override;
    void progressChanged(const ProgressState& state) override;
    bool cancelRequested() override;

    // Everything printed, all boxes as "title: text" or "text", and all states of the progress with an open dialog;
    // kept only without an Output.
    const std::string& printed() const { return printed_; }
    const std::vector<std::string>& boxes() const { return boxes_; }
    const std::vector<ProgressState>& progress() const { return progress_; }
    // Why an answer could not be given, in UTF-8; empty when all could. The form in question was cancelled, and the
    // run report counts the run as refused.
    const std::string& refusal() const { return refusal_; }
    // Items of the last form's tree and how many of them were checked at its end.
    const TreeCounts& lastCounts() const { return counts_; }
    // Forms run so far.
    int formsRun() const { return formsRun_; }

private:
    void say(Channel channel, const std::string& utf8);
    void refuse(const std::string& utf8);
    bool targetReady();
    bool setOptions(OrnLogicForm& form);
    bool setOption(OrnLogicForm& form, const std::string& key, bool on);
    bool selectItems(OrnLogicForm& form);
    void tellScope(const OrnLogicForm& form);

    ScriptedAnswers answers_;
    Output output_;
    std::size_t nextInput_ = 0;
    long questions_ = 0;
    int formsRun_ = 0;
    std::string printed_;
    std::vector<std::string> boxes_;
    std::vector<ProgressState> progress_;
    std::string refusal_;
    TreeCounts counts_;
};

}  // namespace tolmar
