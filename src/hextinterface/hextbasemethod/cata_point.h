// One point of a catalogue component.
#pragma once

#include "platform/geometry.h"

#include <cstdint>
#include <string>
#include <vector>

struct CataPoint {
    HxGePoint3D worldPoint;  // world position of a computed point; zero for the others
    HxGePoint3D pos;
    std::int32_t id = 0;         // number within the set
    std::string type = "PTAXI";  // "PTAXI": an axial point; any other text: a cartesian one
    std::string con = "0";       // connection type
    double bore = 0;
    std::string paxi = "X";  // axial direction
    std::string dir;         // direction text of a cartesian point
    double dist = 0;         // along `paxi`
};
using CataPoints = std::vector<CataPoint>;
