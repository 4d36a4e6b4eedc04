#include "frame/tree_bars.h"

#include "frame/progress_slot.h"

#include <algorithm>

namespace {

constexpr int range = 100;
constexpr const char* totalText = "总进度:";
// Bars of the dialog that a world opens; its last one starts without a label.
constexpr int allBars = 3;
// With fewer bars, zones have none above them.
constexpr int barsWithZones = 2;

}  // namespace

const TreeLevel* levelOf(std::span<const TreeLevel> levels, const HxDbObject& object) {
    const auto at = std::find_if(levels.begin(), levels.end(),
                                 [&object](const TreeLevel& level) { return object.isKindOf(level.type); });
    return at != levels.end() ? &*at : nullptr;
}

const char* nameOf(const TreeLevel& level, const HxDbObject& object) {
    const char* name = object.getDisplayName();
    return name != nullptr ? name : level.nameless;
}

void TreeBars::open(int bars, const char* title) {
    if (progressSlot()->isProgressOpen()) {
        return;
    }
    barCount_ = bars;
    progressSlot()->openProgress(range, title, bars);
    if (bars == allBars) {
        progressSlot()->setBarText("", allBars);
    }
    progressSlot()->setBarText(totalText, 0);
}

void TreeBars::enter(const TreeLevel& level, const HxDbObject& object, const char* title) {
    if (progressSlot() == nullptr) {
        return;
    }
    open(level.bars, title);
    if (barCount_ > level.bars) {
        progressSlot()->setBarText(nameOf(level, object), barCount_ - level.bars);
    }
}

void TreeBars::setBar(std::size_t part, std::size_t whole, int bar) const {
    if (progressSlot() != nullptr) {
        progressSlot()->setBar(percentage(part, whole), bar);
    }
}

void TreeBars::startSite(std::size_t sons) {
    sonsOfSite_ = sons;
    zonesDone_ = 0;
}

void TreeBars::zoneDone() {
    if (barCount_ >= barsWithZones) {
        setBar(++zonesDone_, sonsOfSite_, barCount_ - barsWithZones);
    }
}

void TreeBars::managerDone(std::size_t done, std::size_t all) {
    setBar(done, all, barCount_ - 1);
}

void TreeBars::objectDone(std::size_t done, std::size_t all) {
    setBar(done, all, barCount_);
}

void TreeBars::resetManagers() {
    setBar(0, 1, barCount_ - 1);
}

void TreeBars::resetObjects() {
    setBar(0, 1, barCount_);
}

void TreeBars::close() {
    if (progressSlot() != nullptr && progressSlot()->isProgressOpen()) {
        progressSlot()->close();
    }
    barCount_ = 0;
}
