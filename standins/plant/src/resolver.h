// What can be done only when all objects of a model are known: references, connections from the other side, databases,
// ids of nodes.
#pragma once

#include "model_data.h"

namespace plant {

// Throws a Refusal with the place of what is wrong.
void resolveModel(Model& model);

}  // namespace plant
