// Size and place of told primitives: solids through the platform's own meshes, meshes as they stand.
#pragma once

#include "platform/primitives.h"

#include <string>
#include <vector>

struct Measured {
    std::string className;
    double volume = 0;  // signed: negative when it is inside out
    double area = 0;
    HxGePoint3D low;
    HxGePoint3D high;
    bool isMade = false;
};

Measured measure(const HextPrimary& primitive);

// The ends of a line of the host; empty for anything else.
std::vector<HxGePoint3D> lineEnds(const HextPrimary& primitive);
