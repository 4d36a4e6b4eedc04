// A small modal dialog of a prompt, an edit field, OK and Cancel.
#pragma once

#include "tolmar/host_ui.h"

#include <string>

class CInputBox {
public:
    // The prompt is in the code page.
    explicit CInputBox(const char* prompt) : prompt_(prompt) {}
    // False when the user cancels.
    bool DoModal() {
        const std::optional<std::string> answer = tolmar::hostUi().inputBox(prompt_);
        text_ = answer.value_or("");
        return answer.has_value();
    }
    // What was entered, in the code page.
    const std::string& text() const { return text_; }

private:
    std::string prompt_;
    std::string text_;
};
