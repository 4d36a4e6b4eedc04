// Geometry nodes: one stream each, a material, and their place in a group.
#pragma once

#include "exportbase/mesher.h"
#include "navisworks/geometry/materials.h"
#include "tolmar/entity.h"

namespace nv {

// Each adds one node to the group. That of a mesh gives its shape, for showing it again.
OwnedShape streamMesh(const MeshView& mesh, LiNwcMaterial material, LiNwcGroup group);
void streamPolyline(const TlDbPolyline& polyline, LiNwcMaterial material, LiNwcGroup group);
void streamLine(const TlDbLine& line, LiNwcGroup group);
void streamCircle(const TlDbCircle& circle, LiNwcGroup group);
void streamText(const TlDbText& text, LiNwcMaterial material, LiNwcGroup group);

// Where a text stands: its axes and its place, raised a little above the plane that it is written on.
struct TextFrame {
    TlGeVector3d x;
    TlGeVector3d y;
    TlGeVector3d normal;
    TlGePoint3d origin;
};
TextFrame textFrame(const TlDbText& text);

}  // namespace nv
