// The lists of objects that the rooms of the macro export hand to each other. Objects are the platform's and outlive a
// run.
#pragma once

#include "platform/objects.h"

#include <map>
#include <set>
#include <vector>

// Pointer containers that order by id, so that the same model gives the same order on every run.
struct ByObjectId {
    bool operator()(const HxDbObject* a, const HxDbObject* b) const { return a->objectId() < b->objectId(); }
};
using ObjectSet = std::set<HxDbObject*, ByObjectId>;
using ObjectMap = std::map<HxDbObject*, std::vector<HxDbObject*>, ByObjectId>;
using ObjectList = std::vector<HxDbObject*>;

// The components of one branch in the order in which they are connected.
using ComponentList = std::vector<HxDbSmrtlnEntity*>;
using PipelineBranches = std::vector<ComponentList>;
// One entry for each pipeline that has a branch.
using BranchTree = std::vector<PipelineBranches>;
