// Points and vectors of the plant model: millimetres in world coordinates.
#pragma once

#include "tolmar/ge.h"

using HxGePoint3D = TlGePoint3d;
using HxGeVector3D = TlGeVector3d;
