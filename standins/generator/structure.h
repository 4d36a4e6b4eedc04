// Writes what stands around the pipes: racks, foundations, grids, supports, ducts and trays.
#pragma once

#include "generator/output.h"
#include "generator/plan.h"
#include "generator/random.h"
#include "generator/specs.h"

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

// Each gives the number of smart objects that it wrote, which is at most `count`.
int writeRack(Output& out, Ids& ids, const Place& place, int count);
int writeFoundations(Output& out, Ids& ids, const Place& place, const std::vector<Point>& under);
int writeGrid(Output& out, Ids& ids, const Place& place, int count);
int writeDucts(Output& out, Ids& ids, const Place& place);
int writeTrays(Output& out, Ids& ids, const Place& place);
// A drawing that carries host content.
int writeDrawing(Output& out, Ids& ids, const Place& place);
int writeSupports(Output& out, Ids& ids, Library& library, const Place& place, std::span<const SupportPoint> points);

}  // namespace plant::generator
