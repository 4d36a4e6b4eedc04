// Solids of a part, from its ends and standard sizes: files of this kind hold no shapes. Pipes, elbows, tees and
// reducers stand as they are; of flanges, valves and the like rim, hub, body and wheel have usual proportions.
#pragma once

#include "plant/model_builder.h"
#include "sources/pcf/parts.h"

#include <optional>

namespace plant::pcf {

// The arc of a bent part: where its straight ends stop and what it turns about. Nothing when its ends span no arc.
struct Arc {
    HxGePoint3D start;
    HxGePoint3D end;
    HxGePoint3D centre;
    double radius = 0;
    double angle = 0;  // radians
};
std::optional<Arc> arcOf(const Part& part);

// What the shape of a part needs besides its ends.
struct Drawn {
    const Part& part;
    std::uint8_t first = 0;  // the slot that is point 1: the face of a flange, the wide end of a reducer
    bool flanged[2] = {};    // slots of the run that end in a flange of their own
    HxGeVector3D across;     // hand wheel; unit vector across the run
};
void tellShape(const Drawn& drawn, ModelBuilder& builder);

// Bolts around the face of a flange whose outward direction is `out`.
void tellBoltShape(const HxGePoint3D& face, const HxGeVector3D& out, const standards::PipeSize& size, int count,
                   ModelBuilder& builder);

// A block under (or, at a pipe that stands, beside) a pipe, of the pipe's size: where a support is, not what it looks
// like.
void tellSupportShape(const Part& pipe, const HxGePoint3D& at, ModelBuilder& builder);

}  // namespace plant::pcf
