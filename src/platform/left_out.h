// What an export leaves out, told to the run report: the one way from the module to tolmar::runReport().passedOver.
//
// Whatever was selected and is not written makes one entry, told where that is decided. An entry says what is left out
// (a LeftOutThing: which object, under which name, as which kind of thing) and why (a LeftOutReason). Both are looked
// at during the call only, so that texts may be temporaries. Texts are in the code page.
#pragma once

#include "platform/objects.h"

#include <string>
#include <string_view>

// A sentence fragment such as "it has no shape".
struct LeftOutReason {
    LeftOutReason(const char* why) : text(why) {}
    LeftOutReason(const std::string& why) : text(why) {}
    LeftOutReason(std::string_view why) : text(why) {}

    std::string_view text;
};

// What is left out: an object, or a part, row or line that belongs to one. `what` names the kind of thing in a word or
// two: "object", "node", "primitive", "catalogue entry".
struct LeftOutThing {
    // An object under its display name; null stands for a thing without object, id 0 and no name.
    LeftOutThing(const HxDbObject* object, std::string_view what);
    // The same under another name, such as that of its row or pipe; empty for a thing that has none.
    LeftOutThing(const HxDbObject* object, std::string_view name, std::string_view what);
    // An object that does not open, or a thing that has no object at all: an invalid id is told as 0.
    LeftOutThing(HxDbObjectId id, std::string_view name, std::string_view what);

    const HxDbObject* object = nullptr;  // null where only the id is known
    HxDbObjectId id;
    std::string_view name;
    std::string_view what;
};

// One entry. Entries stand in the order of the calls; equal ones are not joined.
void reportLeftOut(const LeftOutThing& thing, const LeftOutReason& why);
// An object under its display name; `object` may be null.
void reportLeftOut(const HxDbObject* object, std::string_view what, const LeftOutReason& why);
// A node of the tree: told with the node's name, and with the id of the object that it stands for, not its own.
void reportLeftOutNode(const HxDbTreeNode& node, std::string_view what, const LeftOutReason& why);
