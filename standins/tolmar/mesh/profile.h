// The profile of a revolved body as points, and how fine the ring of each point is divided.
#pragma once

#include "tolmar/mesh/scratch.h"
#include "tolmar/mesh/strip.h"

namespace tolmar {

// A chord of the profile. The surface swells beyond it by at most `sag`, to the outside or (`hollow`) to the inside;
// `radial` is the part of its unit normal that points away from the axis.
struct ProfileChord {
    double sag;
    double radial;
    bool hollow;
};

struct Profile {
    // The body's, or a little larger where the mesh may swell.
    PlainBuffer<OutlinePiece> pieces;
    // Chord i leads from point i of `scratch.region` to the next of its loop.
    PlainBuffer<ProfileChord> chords;
    // The most that the ring's own chords may stand off their circle, by what is known of the point alone.
    PlainBuffer<double> limits;
    PlainBuffer<Ring> rings;
    bool touching = false;
};

// Fills `scratch.region`, with triangles where the profile is not convex or the turn not whole, and the profile.
MeshStatus makeProfile(const RevolvedBody& body, double tolerance, MeshScratch& scratch, Profile& profile);

}  // namespace tolmar
