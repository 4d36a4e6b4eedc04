#include "obm/objects.h"

#include "exportbase/left_out_shapes.h"
#include "exportbase/material_code.h"
#include "exportbase/object_properties.h"
#include "obmsdk/obmsdk.h"
#include "platform/attribute_cache.h"
#include "platform/entities.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/smrtln.h"
#include "platform/tree_walker.h"
#include "scripts/node_name.h"

#include <algorithm>
#include <memory>
#include <string_view>

namespace pmodel {

namespace {

constexpr int highestColor = 255;
constexpr float weldTolerance = 1e-6F;
constexpr const char* colorKey = "color";

// What lies below a grid stays out.
void gatherWithoutGrids(HxDbTreeNode* node, std::vector<HxDbObject*>& out) {
    out.clear();
    TreeWalker walker(node);
    for (walker.next(); !walker.done(); walker.next()) {
        HxDbObject* object = objectOfNode(walker.current());
        if (object != nullptr && object->isKindOf(HextAxiss::desc())) {
            walker.skipChildren();
        } else if (object != nullptr) {
            out.push_back(object);
        }
    }
}

void gather(HxDbTreeNode* node, std::vector<HxDbObject*>& out) {
    getAllSubObjects(node, out, nullptr);
    if (std::any_of(out.begin(), out.end(), [](const HxDbObject* o) { return o->isKindOf(HextAxiss::desc()); })) {
        gatherWithoutGrids(node, out);
    }
    if (out.empty()) {
        getTreeNodeObject(node, out, nullptr);
    }
}

// Welds and stops are nothing but places in a pipe.
bool isMark(const HxDbSmrtlnEntity& object) {
    return object.isKindOf(HxDbTubeWeld::desc()) || object.isKindOf(HxDbTubeStop::desc());
}

// A colour that the table does not have would read as flags of the code.
ObjectColor colorOf(const HxDbSmrtlnEntity& object, int pipelineColor) {
    const int index = colorIndexOf(object, pipelineColor);
    return objectColor(object, index < 0 || index > highestColor ? 0 : index);
}

using EntityPtr = std::unique_ptr<TlDbEntity>;

std::vector<EntityPtr> entitiesOf(const HextPrimaryArray& list) {
    const TransHextPrimary entities(list);
    return {entities.get().begin(), entities.get().end()};
}

struct DestroyMesh {
    void operator()(OBMTriangleMesh* mesh) const { mesh->destroy(); }
};

OBMFloat3 single(const double* v) {
    return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

OBMFloat3 unitOf(const double* sum) {
    const HxGeVector3D unit = HxGeVector3D(sum[0], sum[1], sum[2]).normal();
    return {static_cast<float>(unit.x), static_cast<float>(unit.y), static_cast<float>(unit.z)};
}

void fill(OBMTriangleMesh& out, const Mesh& mesh) {
    for (std::size_t i = 0; i < mesh.positions.size(); i += 3) {
        out.addVertice(single(&mesh.positions[i]));
    }
    for (std::size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
        out.addFacet({static_cast<int>(mesh.indices[i]), static_cast<int>(mesh.indices[i + 1]),
                      static_cast<int>(mesh.indices[i + 2])});
    }
    for (std::size_t i = 0; i < mesh.vertexCount(); ++i) {
        if (mesh.normalCounts[i] > 0) {
            out.addNormal(unitOf(&mesh.normalSums[3 * i]));
        }
    }
}

}  // namespace

int ObmObjects::addBomData(const HxDbObject& object, ObmNode& record) {
    smrtln::getObjectBomData(&object, bomData_);
    for (const KVParams& attribute : bomData_) {
        value_.clear();
        appendKvText(value_, attribute);
        tree_.setProperty(record, attribute.description, value_);
    }
    const KVParams* color = hxcom::findKVParamArray(bomData_, colorKey);
    return color != nullptr && object.isKindOf(HextPipeline::desc()) ? integerOf(kvText(*color)) : 0;
}

bool ObmObjects::addScriptProperties(const HxDbObject& object, ObmNode& record) {
    getObjectProperties(object.objectId(), params_);
    for (const KVParams& property : params_) {
        value_.clear();
        appendKvText(value_, property);
        tree_.setProperty(record, propertyKey(&object, property.key), value_);
    }
    return !params_.empty();
}

void ObmObjects::writeObjects(HxDbTreeNode* node, ObmNode& record, int color) {
    gather(node, objects_);
    for (std::size_t i = 0; i < objects_.size(); ++i) {
        bars_.objectDone(i + 1, objects_.size());
        const HxDbSmrtlnEntity* object = HxDbSmrtlnEntity::cast(objects_[i]);
        if (object == nullptr || isMark(*object)) {
            reportNoSmartObject(objects_[i]);
            continue;
        }
        if (object->isKindOf(HxDbNonTube::desc())) {
            color = object->getColorIdx();
        }
        writeObject(*object, record, color);
        if (const HxDbTubeModelSpec* component = HxDbTubeModelSpec::cast(object)) {
            writeBoltSet(*component, record);
        }
    }
    bars_.resetObjects();
}

void ObmObjects::writeObject(const HxDbSmrtlnEntity& object, ObmNode& parent, int color) {
    ObmNode& record = tree_.add(parent, nodeName(&object, true));
    addScriptProperties(object, record);
    const Hext::ErrorStatus status = getPrimaries(&object, shape_.list(), false, false);
    if (status != Hext::eOk) {
        reportLeftOut(&object, "object", status == eNotWanted ? "bolts have no shape in a package" : "it has no shape");
        return;
    }
    writeShape(object, record, colorOf(object, color));
    freeHextPrimaryArray(shape_.list());
}

// The record alone: a bolt set has neither properties nor a shape here.
void ObmObjects::writeBoltSet(const HxDbTubeModelSpec& flange, ObmNode& parent) {
    if (const HxDbBoltNutModel* set = smrtln::getAttachBoltNut(&flange)) {
        tree_.add(parent, nodeName(set, true));
    }
}

// Items that are no solids, such as lines and texts, have no place in a package; the run report has them.
void ObmObjects::writeShape(const HxDbSmrtlnEntity& object, ObmNode& record, const ObjectColor& color) {
    std::vector<EntityPtr> entities = entitiesOf(shape_.list());
    for (std::size_t i = 0; i < entities.size(); ++i) {
        const HextPrimary& primitive = *shape_.list()[i];
        const EntityPtr entity = std::move(entities[i]);
        if (const char* trouble =
                writePrimitive(entity.get(), record, static_cast<int>(materialCode(primitive, color)))) {
            leftOut_.add(primitive, primitive.isKindOf(HextPrimary3D::desc()) ? trouble : "it is no solid");
        }
    }
    leftOut_.report(object);
}

const char* ObmObjects::writePrimitive(const TlDbEntity* entity, ObmNode& record, int code) {
    const ORNACadPrimary3D* parametric = ORNACadPrimary3D::cast(entity);
    if (parametric == nullptr) {
        return entity != nullptr ? "its host content is no parametric solid" : "its host content cannot be read";
    }
    TlDb3dSolid* made = nullptr;
    const Tl::ErrorStatus status = parametric->getSolid(made);
    const std::unique_ptr<TlDb3dSolid> solid(made);
    if (status != Tl::eOk || solid == nullptr) {
        return tlErrorText(status);
    }
    mesh_.clear();
    if (!meshSolidNormals(*solid, mesh_)) {
        return "its solid cannot be meshed";
    }
    if (const char* trouble = addMesh(record)) {
        return trouble;
    }
    record.materials.push_back(code);
    materialCodes().insert(code);
    return nullptr;
}

const char* ObmObjects::addMesh(ObmNode& record) {
    const std::unique_ptr<OBMTriangleMesh, DestroyMesh> mesh(OBMTriangleMesh::create());
    mesh->setGeometryId(nextObmId());
    fill(*mesh, mesh_);
    const int status = package_.addMesh(mesh.get(), true, false, weldTolerance);
    if (status != OBMOk) {
        return obmStatusText(status);
    }
    record.geometryIds.push_back(mesh->getGeometryId());
    return nullptr;
}

}  // namespace pmodel
