#include "frame/progress_slot.h"

#include <exception>

modeling::NamedPipeProgressStatus*& progressSlot() {
    static modeling::NamedPipeProgressStatus* slot = nullptr;
    return slot;
}

int percentage(std::size_t part, std::size_t whole) {
    return whole == 0 ? 0 : static_cast<int>(static_cast<float>(part) / static_cast<float>(whole) * 100.0F);
}

ProgressScope::ProgressScope() {
    progressSlot() = hxcad::getNamedPipeProgressDialog();
}

ProgressScope::~ProgressScope() {
    try {
        close();
    } catch (...) {
        // Already on the way out; a cancel that comes now has nothing left to stop.
    }
    progressSlot() = nullptr;
}

void ProgressScope::close() {
    if (progressSlot() != nullptr) {
        progressSlot()->close();
    }
}

InnerBars::InnerBars(int count) : count_(count), pending_(std::uncaught_exceptions()) {
    auto* progress = progressSlot();
    for (int bar = 1; progress != nullptr && bar <= count_; ++bar) {
        progress->addBar();
    }
    for (int bar = 1; progress != nullptr && bar <= count_; ++bar) {
        progress->setBarText("", bar);
    }
}

InnerBars::~InnerBars() noexcept(false) {
    if (std::uncaught_exceptions() > pending_ || progressSlot() == nullptr) {
        return;
    }
    for (int bar = 0; bar < count_; ++bar) {
        progressSlot()->removeBar();
    }
}
