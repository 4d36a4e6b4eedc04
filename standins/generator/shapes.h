// The shape of the objects in a pipe.
#pragma once

#include "generator/output.h"
#include "generator/plan.h"

namespace plant::generator {

// The member "primitives" of a part.
void writeShape(Output& out, const Part& part, const PipelinePlan& pipeline);
// The bolts of the joint at the face of a flange.
void writeBoltShape(Output& out, const Part& flange);
// Centre of an instrument balloon.
Point balloonCenter(const Part& balloon);

}  // namespace plant::generator
