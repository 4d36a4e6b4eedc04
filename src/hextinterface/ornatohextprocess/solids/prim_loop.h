// Loops of straight edges with fillets, and how outlines with arcs become such loops.
//
// A loop knows no arc. A fillet of radius R in a corner whose edges are tangent to a circle of radius R is the arc
// between the two tangent points, so every arc becomes a chain of such corners.
#pragma once

#include "platform/primitives.h"

#include <string>
#include <vector>

struct PVertex {
    const char* loopName = "";  // first argument of the vertex's macro call, a variable
    HxGePoint3D position;       // in the frame of the solid, Z 0 in the outline's plane
    double frad = 0;            // fillet radius; 0 for a sharp corner

    PVertex() = default;
    explicit PVertex(const HxGePoint3D& at, double radius = 0) : position(at), frad(radius) {}
};

struct PLoop {
    const char* owner = "";  // first argument of the loop's macro call, a variable
    std::vector<PVertex> vertices;
};

void writeLoop(std::string& out, PLoop& loop);
void writeVertex(std::string& out, const PVertex& vertex);

enum class ArcExtent { Part, WholeCircle };

// The arc from p1 through p2 to p3, or the whole circle through them: first the vertex p1, for an arc last the vertex
// p3, both sharp, between them the filleted corners. Three points on one line give the edge from p1 to p3, or one
// vertex where these are equal.
std::vector<PVertex> arcVertices(const HxGePoint3D& p1, const HxGePoint3D& p2, const HxGePoint3D& p3,
                                 ArcExtent extent = ArcExtent::Part);

// Raw arc middles (kind 7) become middles (kind 3). They lie on the circle through their neighbours and themselves, so
// their points stay. A raw middle that stands first or last is dropped.
HextVertexList settleArcMiddles(const HextVertexList& list);

struct OutlineLoop {
    std::vector<PVertex> vertices;
    // A closing arc (kind 5) that is not followed by at least three vertices is not made; its loop closes by a straight
    // edge.
    bool closingArcLost = false;
};

// The loop of a list without raw arc middles. Any points will do; the loop comes in the same coordinates.
OutlineLoop outlineToLoop(const HextVertexList& list);
