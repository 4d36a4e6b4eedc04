// The OBM SDK: writing PModel packages.
#pragma once

#include "obmsdk/obm_mesh.h"
#include "obmsdk/obm_package.h"
#include "obmsdk/obm_tree.h"
#include "obmsdk/obm_types.h"
