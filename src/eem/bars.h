// The progress dialog of one tree of an EEM export: a bar for the objects of a manager, and above it a bar for each
// level of the tree from the one that opened the dialog.
#pragma once

#include "platform/objects.h"

#include <cstddef>

namespace eem {

// A level of the tree that shows in the dialog.
struct TreeLevel {
    const HxRxClass* type;
    int bars;              // of a dialog that this level opens
    const char* nameless;  // label of an object without a name
};

// Any operation but the destructor may raise the cancel. Needs a progress object in the slot.
class TreeBars {
public:
    explicit TreeBars(const char* title) : title_(title) {}
    TreeBars(const TreeBars&) = delete;
    TreeBars& operator=(const TreeBars&) = delete;

    // Opens the dialog unless it is open, and labels the level's bar unless it is the topmost.
    void enter(const TreeLevel& level, const HxDbObject& object);
    // A site is entered, with this many sons; and one of its zones is done.
    void startSite(std::size_t sons);
    void zoneDone();
    void managerDone(std::size_t done, std::size_t all);
    void objectDone(std::size_t done, std::size_t all);
    // The bars of managers and objects, back to the start.
    void resetManagers();
    void resetObjects();
    void close();

private:
    void open(int bars);

    const char* title_;
    int barCount_ = 0;
    std::size_t sonsOfSite_ = 0;
    std::size_t zonesDone_ = 0;
};

}  // namespace eem
