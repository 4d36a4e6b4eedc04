// From the selection of the scope dialog to the lists that the macro export works on: managers by kind, pipelines as
// ordered branches of components.
#pragma once

#include "platform/id_pages.h"
#include "platform/objects.h"

#include <cstdint>
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

using ComponentList = std::vector<HxDbSmrtlnEntity*>;
using PipelineBranches = std::vector<ComponentList>;
// One entry for each pipeline that has a branch.
using BranchTree = std::vector<PipelineBranches>;

struct ModelScope {
    ObjectList pipelines;
    ObjectMap containers;  // structures, and pipelines with Hvac or Cable objects, with those objects
    ObjectList equipment;
    ObjectList supports;
    ObjectMap grids;
    ObjectList strays;  // objects under no manager, which are in no list
};

// "Hvac" and "Cable" objects: exported with the structures and left out of pipes. Module-wide.
ObjectSet& specialSet();
// Colour keys in use, high byte the class, low byte the colour index. Grows as long as the module is loaded.
std::set<std::uint16_t>& usedColours();

enum class ColourClass : std::uint16_t { Pipeline = 1, Structure = 2, Equipment = 3, Support = 4, Window = 6 };
void useColour(ColourClass colourClass, int index);

// Shows the scope dialog and sorts what was checked. False: cancelled, or nothing selected.
bool classifyModel(ModelScope& scope, ObjectSet& special);
// Fills `branches`; shows a bar.
void extractBranches(const ObjectList& pipelines, BranchTree& branches);
// The branches of one pipeline, in the direction of flow where the model tells it.
void getPipelineBranches(HxDbObject* pipeline, PipelineBranches& out);
// Two branches may share an end, which the later one loses. False when a component inside a branch stands in another,
// with its id on the command line. The ids of all components join `componentIds`.
bool checkSharedComponents(BranchTree& branches, IdMarks& componentIds);
void collectNozzles(const ObjectList& equipment, std::vector<HxDbNozzleModel*>& out);
// Branch i gets colour i + 1.
void colourBranches(const PipelineBranches& branches);
