// The levels of a data tree as exports name and show them, and the progress dialog of the exports that walk a tree
// level by level: a bar for the objects of a manager, and above it a bar for each level of the tree from the one that
// opened the dialog.
//
// One TreeBars for one tree after the other: enter for every world, site, zone and directory that the walk meets,
// startSite and zoneDone, managerDone and objectDone as the walk goes on, close at the end of the tree.
#pragma once

#include "platform/objects.h"

#include <cstddef>
#include <span>

// A level of the tree that shows in the dialog.
struct TreeLevel {
    const HxRxClass* type;
    int bars;              // of a dialog that this level opens
    const char* nameless;  // name of an object without one
};

namespace treelevels {
inline constexpr TreeLevel world{&HextWorld::classRecord, 3, "ORNA_WORLD"};
inline constexpr TreeLevel site{&HextSite::classRecord, 2, "ORNA_SITE"};
inline constexpr TreeLevel zone{&HextZone::classRecord, 1, "ORNA_ZONE"};
inline constexpr TreeLevel directory{&HextZoneDirectory::classRecord, 1, "ORNA_ZONEDIR"};
}  // namespace treelevels

// The first of the levels that the object is of; null when it is of none.
const TreeLevel* levelOf(std::span<const TreeLevel> levels, const HxDbObject& object);

// The name under which an object of a level shows.
const char* nameOf(const TreeLevel& level, const HxDbObject& object);

// Works on the progress object in the slot; without one, nothing shows. Any operation but the destructor may raise the
// cancel.
class TreeBars {
public:
    TreeBars() = default;
    TreeBars(const TreeBars&) = delete;
    TreeBars& operator=(const TreeBars&) = delete;

    // Opens the dialog under a title unless it is open, and labels the level's bar unless it is the topmost.
    void enter(const TreeLevel& level, const HxDbObject& object, const char* title);
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
    void open(int bars, const char* title);
    void setBar(std::size_t part, std::size_t whole, int bar) const;

    int barCount_ = 0;
    std::size_t sonsOfSite_ = 0;
    std::size_t zonesDone_ = 0;
};
