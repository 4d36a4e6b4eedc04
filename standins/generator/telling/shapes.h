// The shapes of the objects in a pipe, told as primitives of the object that is open.
#pragma once

#include "generator/planning/plan.h"
#include "plant/model_builder.h"

namespace plant::generator {

void tellShape(ModelBuilder& model, const Part& part, const PipelinePlan& pipeline);
// The bolts of the joint at the face of a flange.
void tellBoltShape(ModelBuilder& model, const Part& flange);
// Centre of an instrument balloon.
Point balloonCenter(const Part& balloon);

}  // namespace plant::generator
