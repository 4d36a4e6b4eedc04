#include "obm/progress.h"

#include "frame/progress_slot.h"

namespace pmodel {

namespace {

constexpr int range = 100;
constexpr const char* wholeText = "总进度:";

}  // namespace

void ObmProgress::fetch() {
    progressSlot() = hxcad::getNamedPipeProgressDialog();
}

void ObmProgress::open(const char* title, int bars) {
    if (progressSlot() == nullptr || progressSlot()->isProgressOpen()) {
        return;
    }
    barCount_ = bars;
    progressSlot()->openProgress(range, title, bars);
    if (bars > 2) {
        setText("", bars);
    }
    setText(wholeText, 0);
}

void ObmProgress::setText(const char* text, int bar) {
    if (progressSlot() != nullptr) {
        progressSlot()->setBarText(text, bar);
    }
}

void ObmProgress::setBar(std::size_t part, std::size_t whole, int bar) {
    if (progressSlot() != nullptr) {
        progressSlot()->setBar(percentage(part, whole), bar);
    }
}

void ObmProgress::finish() {
    if (progressSlot() != nullptr && progressSlot()->isProgressOpen()) {
        progressSlot()->close();
    }
    progressSlot() = nullptr;
    barCount_ = 0;
}

}  // namespace pmodel
