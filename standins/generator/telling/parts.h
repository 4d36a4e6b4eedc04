// Tells planned pipelines with everything in them, and the nozzles of equipment.
#pragma once

#include "generator/planning/plan.h"
#include "generator/telling/specs.h"
#include "plant/model_builder.h"

namespace plant::generator {

void tellPipeline(ModelBuilder& model, Library& library, const PipelinePlan& pipeline, Id zone);
// Equipment that has nozzles, straight or bent ones.
struct NozzleOwner {
    Id id;
    std::string_view name;
    std::int16_t color;
};
void tellNozzle(ModelBuilder& model, Library& library, const NozzlePlan& nozzle, const NozzleOwner& owner);

}  // namespace plant::generator
