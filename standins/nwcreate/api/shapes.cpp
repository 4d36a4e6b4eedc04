// Shapes that come again.
#include "nwcreate/writing/node_tree.h"

using namespace nwcreate;

namespace {

bool isSinglePiece(const NodeRecord& node) {
    return node.isGeometry && node.store != nullptr && node.stream == noSlot && node.shape.pieces.size() == 1 &&
           node.shape.texts.empty();
}

// The number of a material in the scene, noNumber for none; false when the handle is no material.
bool findMaterial(const Library& lib, LiNwcMaterial material, SceneStore& store, std::uint32_t& number) {
    number = noNumber;
    if (material == nullptr) {
        return true;
    }
    auto* found = lib.attributes.find(material);
    if (found == nullptr || !found->record.isMaterial) {
        return false;
    }
    number = found->record.numberIn(store);
    return true;
}

}  // namespace

LiNwcShape LiNwcGeometryShape(LiNwcGeometry geometry) {
    LiNwcShape result = nullptr;
    withRecord(__func__, &Library::nodes, geometry, [&](Library& lib, NodeSlot& node) {
        if (isSinglePiece(node.record)) {
            auto& slot = lib.shapes.create();
            slot.record.store = node.record.store;
            slot.record.piece = node.record.shape.pieces[0];
            slot.record.origin = node.record.shape.origin;
            result = give(lib, lib.shapes, slot);
        }
        return LI_NWC_OK;
    });
    return result;
}

LiNwcStatus LiNwcShapeDestroy(LiNwcShape shape) {
    return destroyPlain(__func__, &Library::shapes, shape);
}

LiNwcStatus LiNwcGroupAddShape(LiNwcGroup group, LiNwcShape shape, LiNwcMaterial material, double x, double y,
                               double z) {
    const char* const call = __func__;
    return withGroup(call, group, [&](Library& lib, NodeSlot& parent) -> LiNwcStatus {
        auto* found = lib.shapes.find(shape);
        if (found == nullptr) {
            return badHandle(call);
        }
        ShapeRecord& record = found->record;
        if (record.store == nullptr) {
            return badOrder(call, "the scene of the shape is gone");
        }
        const Vec3 origin = record.origin + Vec3{x, y, z};
        if (parent.record.store != record.store || !arePlaces(origin)) {
            return badValue(call, "the group is of another scene, or the place is none");
        }
        std::uint32_t number = noNumber;
        if (!findMaterial(lib, material, *record.store, number)) {
            return badHandle(call);
        }
        const std::uint32_t mesh = record.store->meshNumber({&record.piece, 1}, number);
        parent.record.children.push_back({record.store->addShapeNode(mesh, origin), true});
        return LI_NWC_OK;
    });
}
