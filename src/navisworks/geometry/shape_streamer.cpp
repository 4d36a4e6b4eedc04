#include "navisworks/geometry/shape_streamer.h"

#include "navisworks/geometry/node.h"
#include "platform/entities.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/smrtln.h"
#include "tolmar/brep.h"

#include <algorithm>
#include <utility>

namespace nv {

namespace {

using EntityPtr = std::unique_ptr<TlDbEntity>;

constexpr const char* notMeshed = "it cannot be divided into triangles";
constexpr double obstructionOpacity = 0.2;
constexpr unsigned inverseColorFlag = 0x10000;
constexpr int firstOwnColor = 1;
constexpr int lastOwnColor = 254;
// Sub-entities that carry the colours of faces.
constexpr int faceType = 1;
constexpr int firstFaceIndex = 5;
constexpr int faceIndexStep = 4;

bool isOwnColor(int color) {
    return color >= firstOwnColor && color <= lastOwnColor;
}

int paintColor(int objectColor, int primitiveColor) {
    if (isOwnColor(primitiveColor)) {
        return primitiveColor;
    }
    return isOwnColor(objectColor) ? objectColor : usualColor;
}

double opacityOf(const HextPrimary& primitive) {
    return isObstruction(primitive) ? obstructionOpacity : opaque;
}

// Takes entities over from a list of plain pointers.
std::vector<EntityPtr> owned(const std::vector<TlDbEntity*>& entities) {
    std::vector<EntityPtr> result;
    result.reserve(entities.size());
    for (TlDbEntity* entity : entities) {
        result.emplace_back(entity);
    }
    return result;
}

std::string className(const TlRxObject& object) {
    return object.isA()->name();
}

}  // namespace

struct ShapeStreamer::EntityRow {
    const TlRxClass* type;
    void (ShapeStreamer::*add)(const TlDbEntity& entity, const HextPrimary& primitive);
};
// The first row that the entity is a kind of counts.
const ShapeStreamer::EntityRow ShapeStreamer::entityRows[] = {
    {ORNACadPrimary3D::desc(), &ShapeStreamer::addParametric},
    {TlDbText::desc(), &ShapeStreamer::addText},
    {TlDbPolyline::desc(), &ShapeStreamer::addPolyline},
    {TlDbLine::desc(), &ShapeStreamer::addLine},
    {TlDbCircle::desc(), &ShapeStreamer::addCircle},
    {TlDbBlockReference::desc(), &ShapeStreamer::streamBlock},
    {TlDbCurve::desc(), &ShapeStreamer::passOver},
    {TlDbHatch::desc(), &ShapeStreamer::passOver},
    {TlDbEntity::desc(), &ShapeStreamer::addWhole},
};

int objectColor(const HxDbSmrtlnEntity& object) {
    int color = object.getColorIdx();
    if (color == 0 && object.isKindOf(HxDbTubeModelSpec::desc())) {
        const HextNameNode* owner = openAs<HextNameNode>(object.getOwnerId());
        color = owner != nullptr ? owner->getColorIdx() : 0;
    }
    short configured = 0;
    const HxDbTubeWeld* weld = HxDbTubeWeld::cast(&object);
    return weld != nullptr && smrtln::getCurrentWeldConfigColor(weld, configured) ? configured : color;
}

void ShapeStreamer::addShape(const HxDbSmrtlnEntity& object, LiNwcGroup group) {
    object_ = &object;
    group_ = group;
    color_ = objectColor(object);
    HextPrimaryView shape;
    if (viewPrimaries(&object, shape, true, true) != Hext::eOk) {
        reportLeftOut(&object, "object", "it has no shape");
        return;
    }
    const HextPrimary* const unwanted = unwantedText(shape);
    for (const HextPrimary* primitive : shape) {
        if (primitive != unwanted) {
            addPrimitive(*primitive);
        }
    }
}

// The text that a weld loses; null when there is none.
const HextPrimary* ShapeStreamer::unwantedText(HextPrimaryView shape) const {
    if (keepsWeldText_ || !object_->isKindOf(HxDbTubeWeld::desc())) {
        return nullptr;
    }
    const auto text = std::find_if(shape.begin(), shape.end(), [](const HextPrimary* primitive) {
        return primitive->isKindOf(HextPrimaryText::desc());
    });
    return text != shape.end() ? *text : nullptr;
}

// Flags stand on host content alone, so a solid with a key is never drawn in the inverse colour.
void ShapeStreamer::addPrimitive(const HextPrimary& primitive) {
    if (solids_.look(primitive)) {
        solids_.addKnown(materialOf(primitive, color_), group_);
        return;
    }
    if (const EntityPtr entity{transHextPrimary(&primitive)}) {
        addEntity(*entity, primitive);
    } else {
        report(className(primitive) + ": its host content cannot be read");
    }
}

void ShapeStreamer::addEntity(const TlDbEntity& entity, const HextPrimary& primitive) {
    const EntityRow* row = std::find_if(std::begin(entityRows), std::end(entityRows),
                                        [&entity](const EntityRow& r) { return entity.isKindOf(r.type); });
    (this->*row->add)(entity, primitive);
}

void ShapeStreamer::addParametric(const TlDbEntity& entity, const HextPrimary& primitive) {
    const auto& parametric = static_cast<const ORNACadPrimary3D&>(entity);
    const bool isInverse = parametric.checkGsFlag(inverseColorFlag);
    const LiNwcMaterial material = materialOf(primitive, isInverse ? hxcad::getInverseColor(color_) : color_);
    TlDb3dSolid* made = nullptr;
    const Tl::ErrorStatus status = parametric.getSolid(made);
    const EntityPtr solid(made);
    if (status != Tl::eOk || solid == nullptr) {
        report(className(primitive) + ": " + tlErrorText(status));
        return;
    }
    solids_.remember(streamSolid(*solid, primitive, material));
}

void ShapeStreamer::addText(const TlDbEntity& entity, const HextPrimary&) {
    const auto& text = static_cast<const TlDbText&>(entity);
    streamText(text, materials_.of({text.colorIndex(), opaque}), group_);
}

void ShapeStreamer::addPolyline(const TlDbEntity& entity, const HextPrimary&) {
    const auto& polyline = static_cast<const TlDbPolyline&>(entity);
    streamPolyline(polyline, materials_.of({polyline.colorIndex(), opaque}), group_);
}

void ShapeStreamer::addLine(const TlDbEntity& entity, const HextPrimary&) {
    streamLine(static_cast<const TlDbLine&>(entity), group_);
}

void ShapeStreamer::addCircle(const TlDbEntity& entity, const HextPrimary&) {
    streamCircle(static_cast<const TlDbCircle&>(entity), group_);
}

void ShapeStreamer::passOver(const TlDbEntity& entity, const HextPrimary&) {
    report(className(entity) + ": this kind of entity has no place in a scene");
}

void ShapeStreamer::addWhole(const TlDbEntity& entity, const HextPrimary& primitive) {
    streamSolid(entity, primitive, materialOf(primitive, color_));
}

LiNwcMaterial ShapeStreamer::materialOf(const HextPrimary& primitive, int objectColor) {
    return materials_.of({paintColor(objectColor, primitive.getColor()), opacityOf(primitive)});
}

OwnedShape ShapeStreamer::streamSolid(const TlDbEntity& solid, const HextPrimary& primitive, LiNwcMaterial material) {
    const MeshView mesh = meshInPlace(solid);
    if (mesh.positions.empty()) {
        report(className(primitive) + ": " + notMeshed);
        return {};
    }
    return streamMesh(mesh, material, group_);
}

void ShapeStreamer::streamBlock(const TlDbEntity& block, const HextPrimary&) {
    std::vector<TlDbEntity*> exploded;
    const Tl::ErrorStatus status = block.explode(exploded);
    const std::vector<EntityPtr> parts = owned(exploded);
    if (status != Tl::eOk) {
        report(className(block) + ": " + tlErrorText(status));
        return;
    }
    for (const EntityPtr& part : parts) {
        if (const TlDbSurface* surface = TlDbSurface::cast(part.get())) {
            streamFaces(*surface);
        } else {
            streamPart(*part);
        }
    }
}

void ShapeStreamer::streamPart(const TlDbEntity& part) {
    const MeshView mesh = meshInPlace(part);
    if (mesh.positions.empty()) {
        report(className(part) + " in a block: " + notMeshed);
        return;
    }
    streamMesh(mesh, materials_.of({part.subentColor(faceType, firstFaceIndex).colorIndex(), opaque}), group_);
}

// A failure has said so on the command line and ends the walk. A face that is a point has no triangles and no node.
void ShapeStreamer::streamFaces(const TlDbSurface& surface) {
    TlBrBrep brep;
    if (const TlBr::ErrorStatus status = brep.set(surface); status != TlBr::eOk) {
        hxcad::hextPrintf("\nError br.set(*p3DSolid) = %d", static_cast<int>(status));
        report(className(surface) + ": " + notMeshed);
        return;
    }
    TlBrBrepFaceTraverser faces;
    faces.setBrep(brep);
    for (int index = firstFaceIndex; !faces.done(); faces.next(), index += faceIndexStep) {
        TlBrFace face;
        mesh_.clear();
        if (faces.getFace(face) != TlBr::eOk || !meshFace(face, mesh_)) {
            report(className(surface) + ": " + notMeshed);
            return;
        }
        if (mesh_.vertexCount() > 0) {
            const int color = surface.subentColor(faceType, index).colorIndex();
            streamMesh({mesh_.positions, mesh_.indices}, materials_.of({color, opaque}), group_);
        }
    }
}

void ShapeStreamer::report(const std::string& why) const {
    reportLeftOut(object_, "primitive", why);
}

}  // namespace nv
