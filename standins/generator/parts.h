// Writes planned pipelines with everything in them.
#pragma once

#include "generator/output.h"
#include "generator/plan.h"
#include "generator/specs.h"

namespace plant::generator {

void writePipeline(Output& out, Library& library, const PipelinePlan& pipeline, Id zone);
// A straight or bent nozzle of an equipment.
struct NozzleOwner {
    Id id;
    std::string_view name;
    int color;
};
void writeNozzle(Output& out, Library& library, const NozzlePlan& nozzle, const NozzleOwner& owner);
// Begins an object of a tree: id, class, parent.
Output& beginObject(Output& out, Id id, std::string_view className, Id in);

}  // namespace plant::generator
