// From the selection of the scope dialog to the lists that the macro export works on: managers by kind, pipelines as
// ordered branches of components.
#pragma once

#include "hextinterface/hextbasemethod/object_lists.h"
#include "platform/id_pages.h"

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

// Shows the scope dialog and sorts what was checked. False: cancelled, or nothing selected.
bool classifyModel(ModelScope& scope, ObjectSet& special);
// The branches of each pipeline that has any; shows a bar. A pipeline without branches is told to the run report.
BranchTree extractBranches(const ObjectList& pipelines);
// The branches of one pipeline, in the direction of flow where the model tells it.
PipelineBranches getPipelineBranches(HxDbObject* pipeline);
// Two branches may share an end, which the later one loses. False when a component inside a branch stands in another,
// with its id on the command line. The ids of all components join `componentIds`.
bool checkSharedComponents(BranchTree& branches, IdMarks& componentIds);
// The nozzles among the members of these objects, in their order.
std::vector<HxDbNozzleModel*> collectNozzles(const ObjectList& equipment);
// Branch i gets colour i + 1.
void colourBranches(const PipelineBranches& branches);
