#include "forms/scripted_ui.h"

#include "forms/scope_dialog.h"
#include "tolmar/code_page.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <algorithm>

namespace tolmar {

namespace {

OrnLogicButton* checkBoxOf(const OrnLogicForm& form, const std::string& key) {
    for (OrnLogicControl* control : form.controls()) {
        auto* button = dynamic_cast<OrnLogicButton*>(control);
        if (button == nullptr || button->kind() != OrnLogicButton::Kind::CheckBox) {
            continue;
        }
        const scopedialog::Option* option = scopedialog::optionOf(key);
        const bool named = option != nullptr && option->id == button->id();
        if (named || wideToUtf8(button->label()) == key) {
            return button;
        }
    }
    return nullptr;
}

std::string knownOptions() {
    std::string text;
    for (const scopedialog::Option& option : scopedialog::options) {
        text += (text.empty() ? "" : ", ") + std::string(option.key);
    }
    return text;
}

OrnLogicTree* treeOf(const OrnLogicForm& form) {
    for (OrnLogicControl* control : form.controls()) {
        if (auto* tree = dynamic_cast<OrnLogicTree*>(control)) {
            return tree;
        }
    }
    return nullptr;
}

// A file name that every file system takes.
std::string fileNameFor(const std::string& codePageName) {
    std::string name = toUtf8(codePageName);
    for (char& c : name) {
        if (static_cast<unsigned char>(c) < 0x20 || std::string_view("<>:\"/\\|?*").find(c) != std::string_view::npos) {
            c = '_';
        }
    }
    return name.empty() || name == "." || name == ".." ? "project" : name;
}

}  // namespace

ScriptedUi::ScriptedUi(ScriptedAnswers answers, Output output)
    : answers_(std::move(answers)), output_(std::move(output)) {}

void ScriptedUi::say(Channel channel, const std::string& utf8) {
    if (output_) {
        output_(channel, utf8);
    }
}

void ScriptedUi::refuse(const std::string& utf8) {
    if (refusal_.empty()) {
        refusal_ = utf8;
    }
    runReport().ended(RunOutcome::Refused, fromUtf8(utf8));
    say(Channel::Error, utf8);
}

void ScriptedUi::print(const std::string& text) {
    const std::string utf8 = toUtf8(text);
    if (output_) {
        output_(Channel::Print, utf8);
    } else {
        printed_ += utf8;
    }
}

void ScriptedUi::messageBox(const std::string& text, const std::string& title) {
    const std::string box = toUtf8(title.empty() ? text : title + ": " + text);
    if (output_) {
        output_(Channel::Box, box);
    } else {
        boxes_.push_back(box);
    }
}

bool ScriptedUi::targetReady() {
    if (!answers_.target) {
        return false;
    }
    std::error_code error;
    if (dryRun() || std::filesystem::is_directory(*answers_.target, error)) {
        return true;
    }
    std::filesystem::create_directories(*answers_.target, error);
    if (error) {
        say(Channel::Error, answers_.target->string() + ": cannot be made: " + error.message());
    }
    return true;
}

std::optional<std::string> ScriptedUi::fileDialog(const FileDialog& dialog) {
    if (!targetReady()) {
        return std::nullopt;
    }
    std::string name = dialog.fileName;
    if (name.empty()) {
        name = currentProjectName();
    }
    std::string file = fileNameFor(name);
    if (!dialog.defaultExtension.empty() && std::filesystem::path(file).extension() != "." + dialog.defaultExtension) {
        file += "." + dialog.defaultExtension;
    }
    return fromUtf8((*answers_.target / file).string());
}

std::optional<std::string> ScriptedUi::folderDialog(const std::string&) {
    return targetReady() ? std::optional(fromUtf8(answers_.target->string())) : std::nullopt;
}

std::optional<std::string> ScriptedUi::inputBox(const std::string& prompt) {
    if (nextInput_ < answers_.inputs.size()) {
        return fromUtf8(answers_.inputs[nextInput_++]);
    }
    say(Channel::Note, "no answer (--input) is left for the input box \"" + toUtf8(prompt) + "\": cancelled");
    return std::nullopt;
}

bool ScriptedUi::setOption(OrnLogicForm& form, const std::string& key, bool on) {
    const OrnLogicButton* box = checkBoxOf(form, key);
    if (box == nullptr) {
        refuse("the dialog has no option \"" + key + "\"; there are " + knownOptions());
        return false;
    }
    if (!box->enabled()) {
        say(Channel::Note, "option \"" + key + "\" is disabled for this command and stays as it is");
    } else if (box->checked() != on) {
        form.onControlClicked(box->id());
    }
    return true;
}

bool ScriptedUi::setOptions(OrnLogicForm& form) {
    return std::all_of(answers_.options.begin(), answers_.options.end(),
                       [&](const auto& option) { return setOption(form, option.first, option.second); });
}

bool ScriptedUi::selectItems(OrnLogicForm& form) {
    OrnLogicTree* tree = treeOf(form);
    if (tree == nullptr) {
        return true;
    }
    const std::vector<std::string> unmatched = applySelection(form, *tree, answers_.selection);
    for (const std::string& pattern : unmatched) {
        refuse("nothing in the tree matches \"" + pattern + "\"");
    }
    counts_ = countItems(*tree);
    return unmatched.empty();
}

void ScriptedUi::tellScope(const OrnLogicForm& form) {
    say(Channel::Note,
        std::to_string(counts_.checked) + " of " + std::to_string(counts_.items) + " items of the scope would go out");
    const OrnLogicTree* tree = treeOf(form);
    if (!answers_.listItems || tree == nullptr) {
        return;
    }
    visitItems(*tree, [this](OrnLogicTree::Item item) {
        if (item->checked) {
            say(Channel::Note, "  " + itemPath(item));
        }
    });
}

bool ScriptedUi::prepareForm(OrnLogicForm& form) {
    const bool hasPatterns = !answers_.selection.select.empty() || !answers_.selection.deselect.empty();
    return setOptions(form) && (!hasPatterns || selectItems(form));
}

void ScriptedUi::runForm(OrnLogicForm& form) {
    ++formsRun_;
    const bool ready = !answers_.cancelForms && setOptions(form) && selectItems(form);
    if (ready && answers_.dryRun) {
        tellScope(form);
    }
    form.onControlClicked(ready && !answers_.dryRun ? OrnLogicForm::ResultOk : OrnLogicForm::ResultCancel);
}

void ScriptedUi::progressChanged(const ProgressState& state) {
    if (!output_ && state.open) {
        progress_.push_back(state);
    }
}

bool ScriptedUi::cancelRequested() {
    ++questions_;
    return (answers_.cancelAfter > 0 && questions_ >= answers_.cancelAfter) ||
           (answers_.cancelled && answers_.cancelled());
}

}  // namespace tolmar
