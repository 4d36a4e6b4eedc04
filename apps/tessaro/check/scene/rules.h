// What a scene promises its viewers, beyond being readable.
#pragma once

#include "readers/scene/reader.h"

namespace check {

// Everything that numbers promise: what they name is there, is whole and fits.
void sceneNumbers(const readers::scene::Scene& scene, readers::Findings& findings);

}  // namespace check
