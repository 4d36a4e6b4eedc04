// What a manager holds, in the parts in which exports write it. Shared by exports that walk managers.
#pragma once

#include "platform/objects.h"

#include <functional>
#include <vector>

// Objects that go out together, headed by the attributes of `id`, whose tree node is `node`.
struct ContentPart {
    HxDbObjectId id;
    std::vector<HxDbObject*> objects;
    const HxDbTreeNode* node = nullptr;
};

// A manager without managers below it is one part with every object below its node. Otherwise its own node and each
// node of a manager below it that passes `isSelected` gives a part with the objects that hang there and not at a
// manager further down; the own node of a HextStruct or HextSupport gives none, and its objects go into the run report.
// Parts may be empty.
std::vector<ContentPart> managerContents(HxDbObject* manager, HxDbTreeNode* node,
                                         const std::function<bool(const HxDbTreeNode*)>& isSelected);
