// Hands a finished export tree to a 3D package, in this order: materials, model tree, instance tree, properties.
#pragma once

#include "obm/record.h"

class OBM3dPackage;

namespace pmodel {

// One material for each of materialCodes, in ascending order.
void writeMaterials(OBM3dPackage& package);
void writeModelTree(OBM3dPackage& package, const ObmNode& root);
void writeInstanceTree(OBM3dPackage& package, const ObmNode& root);
// Each record before its children, its properties by name.
void writeProperties(OBM3dPackage& package, const ObmNode& root);

}  // namespace pmodel
