// The points and geometry of one component in the catalogue.
#pragma once

#include "hextinterface/hextbasemethod/component_geometry.h"
#include "hextinterface/hextcata/item.h"
#include "hextinterface/hextcata/stream.h"
#include "platform/primitives.h"

#include <string>
#include <vector>

// Fills the item's points from the object's connection points. The exceptions of the component classes pass.
void fillPoints(CataItem& item, const HxDbSmrtlnEntity* object);

struct CataCompGeometry {
    CataPoints points;
    std::vector<const HextPrimary*> primitives;
    const HxDbSmrtlnEntity* object = nullptr;
    std::string className;
    LocalFrame frame;
    std::string refText;
};

// Sets the local frame and the axial words of the points, by `className`.
void computeFrame(CataCompGeometry& geometry);

// The primitive loop and the point lines. A primitive that cannot be translated is reported and left out.
void writeGeometry(CataCompGeometry& geometry, CataStream& out, std::string_view gmseName, std::string_view ptseName);

enum class AttachmentKind { Pipe, Component };
// The records of an attachment point on a pipe or on a component.
CataPoints attachmentPoints(AttachmentKind kind, double outerDiameter, const std::string& endType);
