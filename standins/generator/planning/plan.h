// A part of a plant as it is planned, before it is written: pipelines with their parts, nozzles, supports.
//
// Plans are filled, written and emptied one unit at a time, so that memory does not grow with the plant.
#pragma once

#include "generator/planning/rounding.h"
#include "generator/planning/tables.h"

#include "tolmar/ge.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace plant::generator {

using Point = TlGePoint3d;
using Vector = TlGeVector3d;
using Id = std::int64_t;

inline constexpr Vector east{1, 0, 0};
inline constexpr Vector north{0, 1, 0};
inline constexpr Vector up{0, 0, 1};

// A unit vector across `v`, level where that can be.
Vector acrossOf(const Vector& v);

inline constexpr double weldGap = 2;
inline constexpr double gasketThickness = 3;

// Hands out the ids of managers and smart objects.
class Ids {
public:
    Id next() { return next_++; }
    // Everything below `id` is taken.
    void skipTo(Id id) { next_ = id; }

private:
    Id next_ = 100001;
};

struct PlanPoint {
    int no = 0;
    std::int8_t flow = 0;
    Id to = 0;
    Point at;
};

// One object in a pipe.
struct Part {
    Family family = Family::Pipe;
    Ends ends = Ends::Weld;
    Layout layout = Layout::Even;
    std::uint8_t size1 = 0;  // rows of pipeSizes
    std::uint8_t size2 = 0;
    bool fieldWeld = false;
    std::uint8_t pointCount = 0;
    Id id = 0;
    Id bolts = 0;    // the bolt set on a flange
    int number = 0;  // of tag, weld or balloon
    double length = 0;
    double bendRadius = 0;  // in nominal sizes
    int angle = 0;
    Vector along;   // in the order in which the pipe was laid
    Vector across;  // hand wheel, branch or offset
    std::array<PlanPoint, 5> points;

    PlanPoint& add(int no, const Point& at) {
        PlanPoint& point = points[pointCount++];
        point = {no, 0, 0, at};
        return point;
    }
    // Where the point of a number stands; the number is there.
    std::size_t slotOf(int no) const {
        std::size_t slot = 0;
        while (points[slot].no != no) {
            ++slot;
        }
        return slot;
    }
    const Point& at(int no) const { return points[slotOf(no)].at; }
};

struct NozzlePlan {
    Id id = 0;
    Id equipment = 0;  // number of the equipment in its unit
    int number = 0;
    int size = 0;
    bool bent = false;
    Point inner;   // on the vessel
    Point corner;  // origin: the middle of a straight nozzle, the corner of a bent one
    Point face;
    Vector along;  // out of the face
    Id to = 0;     // what hangs at the face
    int faceFlow = 0;
};

struct PipelinePlan {
    Id id = 0;
    Id in = 0;
    int number = 0;
    std::string name;  // and line number, which two pipelines may share
    int service = 0;
    int pipingClass = 0;
    bool insulated = false;
    int welds = 0;
    int boltSets = 0;
    std::vector<Part> parts;
    std::vector<std::vector<Id>> branches;
    Point start;
    Point end;

    const PipingClass& type() const { return pipingClasses[pipingClass]; }
    const Service& carries() const { return services[service]; }
    int objects() const { return static_cast<int>(parts.size()) + boltSets; }
};

}  // namespace plant::generator
