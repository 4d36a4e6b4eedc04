// Geometry nodes: one stream each, a material, and their place in a group.
#pragma once

#include "exportbase/mesher.h"
#include "navisworks/handles.h"
#include "tolmar/entity.h"

namespace nv {

// Colour of what has none.
inline constexpr int usualColor = 7;
inline constexpr double opaque = 1.0;

struct Paint {
    int color = usualColor;  // index of the palette; outside 0..255 the colour is white
    double opacity = opaque;
};

// Each adds one node to the group.
void streamMesh(const MeshView& mesh, const Paint& paint, LiNwcGroup group);
void streamPolyline(const TlDbPolyline& polyline, LiNwcGroup group);
void streamLine(const TlDbLine& line, LiNwcGroup group);
void streamCircle(const TlDbCircle& circle, LiNwcGroup group);
void streamText(const TlDbText& text, LiNwcGroup group);

// Where a text stands: its axes and its place, raised a little above the plane that it is written on.
struct TextFrame {
    TlGeVector3d x;
    TlGeVector3d y;
    TlGeVector3d normal;
    TlGePoint3d origin;
};
TextFrame textFrame(const TlDbText& text);

}  // namespace nv
