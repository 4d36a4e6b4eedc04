#include "eem/bars.h"

#include "frame/progress_slot.h"

namespace eem {

namespace {

constexpr int range = 100;
constexpr const char* totalText = "总进度:";
// Bars of the dialog that a world opens; its last one starts without a label.
constexpr int allBars = 3;
// With fewer bars, zones have none above them.
constexpr int barsWithZones = 2;

modeling::NamedPipeProgressStatus& progress() {
    return *progressSlot();
}

}  // namespace

void TreeBars::open(int bars) {
    if (progress().isProgressOpen()) {
        return;
    }
    barCount_ = bars;
    progress().openProgress(range, title_, bars);
    if (bars == allBars) {
        progress().setBarText("", allBars);
    }
    progress().setBarText(totalText, 0);
}

void TreeBars::enter(const TreeLevel& level, const HxDbObject& object) {
    open(level.bars);
    if (barCount_ > level.bars) {
        const char* name = object.getDisplayName();
        progress().setBarText(name != nullptr ? name : level.nameless, barCount_ - level.bars);
    }
}

void TreeBars::startSite(std::size_t sons) {
    sonsOfSite_ = sons;
    zonesDone_ = 0;
}

void TreeBars::zoneDone() {
    if (barCount_ >= barsWithZones) {
        ++zonesDone_;
        progress().setBar(percentage(zonesDone_, sonsOfSite_), barCount_ - barsWithZones);
    }
}

void TreeBars::managerDone(std::size_t done, std::size_t all) {
    progress().setBar(percentage(done, all), barCount_ - 1);
}

void TreeBars::objectDone(std::size_t done, std::size_t all) {
    progress().setBar(percentage(done, all), barCount_);
}

void TreeBars::resetManagers() {
    progress().setBar(0, barCount_ - 1);
}

void TreeBars::resetObjects() {
    progress().setBar(0, barCount_);
}

void TreeBars::close() {
    if (progress().isProgressOpen()) {
        progress().close();
    }
    barCount_ = 0;
}

}  // namespace eem
