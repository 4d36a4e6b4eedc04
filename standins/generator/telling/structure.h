// Tells what stands around the pipes: racks, foundations, grids, supports, ducts and trays.
#pragma once

#include "generator/planning/plan.h"
#include "generator/telling/specs.h"
#include "plant/model_builder.h"

#include <span>
#include <vector>

namespace plant::generator {

// Where a unit's structure goes and what it is called.
struct Place {
    Id in;
    int number;
    Point origin;
};

// A place on a pipe where a support may hold it.
struct SupportPoint {
    Id pipe;
    Point at;
    Vector along;
    int size;
};

// Where the objects go, and who hands out what they need.
struct Target {
    ModelBuilder& model;
    Ids& ids;
    Library& library;
};

// Each gives the number of smart objects that it told, which is at most `count`.
int tellRack(const Target& to, const Place& place, int count);
int tellFoundations(const Target& to, const Place& place, std::span<const Point> under);
int tellGrid(const Target& to, const Place& place, int count);
int tellDucts(const Target& to, const Place& place);
int tellTrays(const Target& to, const Place& place);
// A drawing that carries host content.
int tellDrawing(const Target& to, const Place& place);
int tellSupports(const Target& to, const Place& place, std::span<const SupportPoint> points);

}  // namespace plant::generator
