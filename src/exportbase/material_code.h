// The material code of a solid, by which OBMOUT and ORNAOUT tell colours and looks apart: an index of the colour table,
// plus obstructionCode for a solid of the obstruction material, plus inverseCode for one in the inverse colour.
//
// colorIndexOf gives the index of an object, objectColor what all of its primitives share, materialCode the code of
// one. The inverse colour marks fittings, and on a pipe all that is no cylinder, such as its insulation.
#pragma once

#include "platform/objects.h"
#include "platform/primitives.h"

#include <cstdint>

inline constexpr int obstructionCode = 500;
inline constexpr int inverseCode = 1000;

// The object's own colour index. A component of a pipe without one (0) takes that of its pipeline.
int colorIndexOf(const HxDbSmrtlnEntity& object, int pipelineColor);

struct ObjectColor {
    std::int64_t baseCode = 0;  // material code of a plain primitive
    bool isPipe = false;        // everything but the pipe's cylinders goes out in the inverse colour
};
// `index` is taken as it is: one beyond the colour table would read as a flag of the code.
ObjectColor objectColor(const HxDbSmrtlnEntity& object, int index);

std::int64_t materialCode(const HextPrimary& primitive, const ObjectColor& color);
