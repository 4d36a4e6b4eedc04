// The OBM SDK: writing PModel packages, in the place of a closed library.
//
// A caller fills plain objects (a mesh, a material, a node, a property) and hands them to a 3D package. What is handed
// over goes to working files at once, in the form in which the package will hold it; `write` composes the scenes from
// those files, `save` packs everything into the archive. Where the SDK differs from the closed one stands at the call.
#pragma once

#include "obmsdk/obm_mesh.h"
#include "obmsdk/obm_package.h"
#include "obmsdk/obm_tree.h"
#include "obmsdk/obm_types.h"
