// The progress dialogs: each keeps what it shows, tells the user interface of a change, and raises the cancel.
#include "platform/progress.h"

#include "tolmar/host_ui.h"
#include "tolmar/text.h"

#include <algorithm>
#include <cstdint>

ProgressCancelException::ProgressCancelException() = default;
ProgressCancelException::~ProgressCancelException() = default;
const char* ProgressCancelException::what() const noexcept {
    return "cancelled";
}

namespace {

void throwIfCancelled() {
    if (tolmar::hostUi().cancelRequested()) {
        throw ProgressCancelException();
    }
}

int asPercentage(int value) {
    return std::clamp(value, 0, 100);
}

// Closing raises nothing: whoever catches a cancel closes the dialog.
class NamedPipeProgress final : public modeling::NamedPipeProgressStatus {
public:
    void setBarText(const char* text, int bar) override {
        if (tolmar::ProgressBar* shown = barOf(bar)) {
            assign(shown->text, std::string(tolmar::textOrEmpty(text)));
        }
        show();
    }
    void setText(const char* text) override {
        assign(state_.text, std::string(tolmar::textOrEmpty(text)));
        show();
    }
    void openProgress(int, const char* text, int extraBars) override {
        state_ = {};
        state_.open = true;
        state_.title = tolmar::textOrEmpty(text);
        state_.bars.resize(1 + static_cast<std::size_t>(std::max(extraBars, 0)));
        changed_ = true;
        show();
    }
    void close() override {
        if (state_.open) {
            state_ = closed();
            changed_ = false;
            tolmar::hostUi().progressChanged(state_);
        }
    }
    void setBar(int value, int bar) override {
        if (tolmar::ProgressBar* shown = barOf(bar)) {
            assign(shown->value, asPercentage(value));
        }
        show();
    }
    void addBar() override {
        state_.bars.emplace_back();
        changed_ = true;
        show();
    }
    void removeBar() override {
        if (state_.bars.size() > 1) {
            state_.bars.pop_back();
            changed_ = true;
        }
        show();
    }
    bool isProgressOpen() override { return state_.open; }

private:
    tolmar::ProgressBar* barOf(int bar) {
        const auto index = static_cast<std::size_t>(bar);
        return bar >= 0 && index < state_.bars.size() ? &state_.bars[index] : nullptr;
    }

    template <typename Value>
    void assign(Value& place, const Value& value) {
        changed_ = changed_ || place != value;
        place = value;
    }

    void show() {
        if (state_.open && changed_) {
            tolmar::hostUi().progressChanged(state_);
        }
        changed_ = changed_ && !state_.open;
        throwIfCancelled();
    }

    static tolmar::ProgressState closed() { return {false, {}, {}, {tolmar::ProgressBar{}}}; }

    tolmar::ProgressState state_ = closed();
    bool changed_ = false;
};

class GeneralProgress final : public modeling::GeneralProgressStatus {
public:
    void open(int steps, const char* title) override {
        steps_ = std::max(steps, 0);
        done_ = 0;
        state_ = {true, tolmar::textOrEmpty(title), {}, {tolmar::ProgressBar{}}};
        tolmar::hostUi().progressChanged(state_);
        throwIfCancelled();
    }
    void step() override {
        done_ = std::min(done_ + 1, steps_);
        const int value = steps_ == 0 ? 0 : static_cast<int>(done_ * 100 / steps_);
        if (state_.open && state_.bars[0].value != value) {
            state_.bars[0].value = value;
            tolmar::hostUi().progressChanged(state_);
        }
        throwIfCancelled();
    }
    void close() override {
        if (state_.open) {
            state_ = {};
            tolmar::hostUi().progressChanged(state_);
        }
    }

private:
    tolmar::ProgressState state_;
    std::int64_t steps_ = 0;
    std::int64_t done_ = 0;
};

}  // namespace

modeling::NamedPipeProgressStatus* hxcad::getNamedPipeProgressDialog() {
    static NamedPipeProgress progress;
    return &progress;
}

modeling::GeneralProgressStatus* hxcad::getProgressDialog() {
    static GeneralProgress progress;
    return &progress;
}
