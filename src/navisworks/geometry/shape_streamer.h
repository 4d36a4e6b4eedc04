// The shape of an object as geometry nodes.
#pragma once

#include "exportbase/mesher.h"
#include "navisworks/geometry/materials.h"
#include "navisworks/geometry/solid_shapes.h"
#include "platform/objects.h"
#include "platform/primaries.h"
#include "tolmar/entity.h"

#include <memory>
#include <string>
#include <vector>

namespace nv {

// Keeps its buffers from object to object. What adds no geometry stands in the run report.
class ShapeStreamer {
public:
    // Without `keepsWeldText` a weld loses the first text of its shape.
    explicit ShapeStreamer(bool keepsWeldText) : keepsWeldText_(keepsWeldText) {}

    // Adds a node for each item of the object's shape to the group; none for an object without a shape.
    void addShape(const HxDbSmrtlnEntity& object, LiNwcGroup group);

private:
    struct EntityRow;
    static const EntityRow entityRows[];

    const HextPrimary* unwantedText(HextPrimaryView shape) const;
    void addPrimitive(const HextPrimary& primitive);
    void addEntity(const TlDbEntity& entity, const HextPrimary& primitive);
    void addParametric(const TlDbEntity& entity, const HextPrimary& primitive);
    void addText(const TlDbEntity& entity, const HextPrimary& primitive);
    void addPolyline(const TlDbEntity& entity, const HextPrimary& primitive);
    void addLine(const TlDbEntity& entity, const HextPrimary& primitive);
    void addCircle(const TlDbEntity& entity, const HextPrimary& primitive);
    void passOver(const TlDbEntity& entity, const HextPrimary& primitive);
    void addWhole(const TlDbEntity& entity, const HextPrimary& primitive);
    // Gives the shape; null, and nothing is added, when no mesh can be made of it.
    OwnedShape streamSolid(const TlDbEntity& solid, const HextPrimary& primitive, LiNwcMaterial material);
    LiNwcMaterial materialOf(const HextPrimary& primitive, int objectColor);
    void streamBlock(const TlDbEntity& block, const HextPrimary& primitive);
    void streamPart(const TlDbEntity& part);
    void streamFaces(const TlDbSurface& surface);
    void report(const std::string& why) const;

    bool keepsWeldText_;
    // The object in hand.
    const HxDbSmrtlnEntity* object_ = nullptr;
    int color_ = 0;
    LiNwcGroup group_ = nullptr;
    Mesh mesh_;  // of a face
    Materials materials_;
    SolidShapes solids_;
};

// The colour index of an object: its own; a part of a pipe without one has that of the name node that owns it, a weld
// what the configuration gives it.
int objectColor(const HxDbSmrtlnEntity& object);

}  // namespace nv
