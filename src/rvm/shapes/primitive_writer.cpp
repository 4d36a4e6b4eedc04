#include "rvm/shapes/primitive_writer.h"

#include "platform/entities.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "rvm/format/big_endian.h"
#include "rvm/shapes/object_material.h"
#include "tolmar/host_ui.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <memory>

// Parameters of a facet list:  word triangles, then for each triangle  word 1 (polygons of the patch), word 3
// (vertices), and for each of the three vertices  3 floats position, 3 floats normal.

namespace rvm {

namespace {

constexpr std::size_t wordSize = 4;
constexpr std::size_t vertexSize = 6 * wordSize;
constexpr std::size_t triangleSize = 2 * wordSize + 3 * vertexSize;
constexpr std::size_t trianglesAtOnce = 2048;
constexpr std::uint32_t polygonsOfPatch = 1;
constexpr std::uint32_t verticesOfPolygon = 3;

constexpr const char* notFinite = "a coordinate or size is not finite";
constexpr const char* noOutputForm = "its class has no output form";
constexpr const char* notReadable = "its host content cannot be read";
constexpr const char* notMeshed = "the part of a block cannot be meshed";
constexpr const char* noParts = "the block falls into no parts";

enum class Way { Direct, Facets, Block };

std::size_t vertexCount(const std::vector<double>& coordinates) {
    return (coordinates.size() - 1) / 3;
}

std::size_t triangleCountOf(const std::vector<std::uint32_t>& indices) {
    return (indices.size() - 1) / 3;
}

}  // namespace

// The way that a class takes, and for the direct way what makes its shape.
struct PrimitiveRow {
    const TlRxClass* type;
    Way way;
    void (*shaper)(const HextPrimary& primitive, PrimitiveShape& shape);
};

namespace {

template <typename Class, auto Shape>
PrimitiveRow direct() {
    return {Class::desc(), Way::Direct, [](const HextPrimary& primitive, PrimitiveShape& shape) {
                Shape(static_cast<const Class&>(primitive), shape);
            }};
}

const PrimitiveRow primitiveRows[] = {
    direct<HextCylinder3D, cylinderShape>(),   direct<HextBox3D, boxShape>(),
    direct<HextTorus3D, torusShape>(),         direct<HextConcone3D, coneShape>(),
    direct<HextEcone3D, eccentricConeShape>(), direct<HextOval3D, dishShape>(),
    direct<HextSphere3D, sphereShape>(),       {HextAcadBlockReference::desc(), Way::Block, nullptr},
};
const PrimitiveRow facetRow{nullptr, Way::Facets, nullptr};
const PrimitiveRow unknownRow{nullptr, Way::Direct, nullptr};

// The row of the nearest class at or above `type`; facet_source knows the polygon bodies.
const PrimitiveRow* rowOf(const TlRxClass* type) {
    for (; type != nullptr; type = type->parent()) {
        for (const PrimitiveRow& row : primitiveRows) {
            if (row.type == type) {
                return &row;
            }
        }
        if (isPolygonBody(type)) {
            return &facetRow;
        }
    }
    return &unknownRow;
}

// Packs vertices; false when a number is not finite in single precision.
bool pack(const std::vector<double>& positions, const std::vector<double>& normals, char* at) {
    float sum = 0;
    for (std::size_t i = 0; i < 3 * vertexCount(positions); i += 3) {
        for (const std::vector<double>* list : {&positions, &normals}) {
            for (std::size_t k = i; k < i + 3; ++k) {
                const auto value = static_cast<float>((*list)[k]);
                sum += value * 0.0F;
                at = putFloat(at, value);
            }
        }
    }
    return sum == 0;
}

}  // namespace

void PrimitiveWriter::startObject(std::int64_t id, std::string_view name) {
    ownerId_ = id;
    ownerName_ = name;
    siblings_.clear();
}

std::size_t PrimitiveWriter::writePrimitiveList(HextPrimaryView list, bool isObstruction, std::uint32_t material) {
    const std::uint64_t start = file_.offset();
    uses_.clear();
    partCount_ = 0;
    for (const HextPrimary* primitive : list) {
        ClassUse& use = useOf(primitive->isA());
        trouble_ = nullptr;
        if (use.row->way == Way::Block) {
            writeBlock(*primitive);
        } else {
            writeGroup(*primitive, use, isObstruction, material);
        }
    }
    return static_cast<std::size_t>(file_.offset() - start);
}

PrimitiveWriter::ClassUse& PrimitiveWriter::useOf(const TlRxClass* type) {
    for (ClassUse& use : uses_) {
        if (use.type == type) {
            return use;
        }
    }
    return uses_.emplace_back(ClassUse{type, rowOf(type), 0});
}

void PrimitiveWriter::nameGroup(std::string_view stem, int number) {
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    name_.assign(stem).append(digits, end);
    if (compat_) {
        name_ = siblings_.unique(name_);
    }
}

void PrimitiveWriter::writeGroup(const HextPrimary& primitive, ClassUse& use, bool isObstruction,
                                 std::uint32_t material) {
    nameGroup(use.type->name(), ++use.count);
    const std::uint64_t mark = file_.mark();
    file_.writeGroupBegin(name_, material);
    if (writeContent(primitive, *use.row, isObstruction)) {
        file_.writeGroupEnd();
    } else {
        file_.takeBack(mark);
    }
    reportTrouble(name_);
}

bool PrimitiveWriter::writeContent(const HextPrimary& primitive, const PrimitiveRow& row, bool isObstruction) {
    if (row.way == Way::Facets) {
        return writeFacetPrimitive(primitive, isObstruction);
    }
    return row.shaper != nullptr ? writePrimitive(primitive, row.shaper, isObstruction) : refuseClass(primitive);
}

bool PrimitiveWriter::refuseClass(const HextPrimary& primitive) {
    tolmar::messageBox(std::string(primitive.isA()->name()) + "不是可输出体元");
    trouble_ = noOutputForm;
    return false;
}

bool PrimitiveWriter::writePrimitive(const HextPrimary& primitive, Shaper shaper, bool isObstruction) {
    shaper(primitive, shape_);
    return writeShape(isObstruction);
}

bool PrimitiveWriter::writeShape(bool isObstruction) {
    if (!shape_.isFinite()) {
        trouble_ = notFinite;
        return false;
    }
    PrimitiveHead head{shape_.kind, isObstruction, &shape_.matrix, {}, shape_.parameterCount * wordSize};
    if (compat_) {
        head.box = localBox(shape_);
        shape_.parameters[0] *= shape_.kind == kindSphere ? 2.0F : 1.0F;
    }
    file_.writePrimitiveHead(head);
    char* at = file_.room(shape_.parameterCount * wordSize);
    for (const float parameter : shape_.used()) {
        at = putFloat(at, parameter);
    }
    return true;
}

bool PrimitiveWriter::writeFacetPrimitive(const HextPrimary& primitive, bool isObstruction) {
    if (primitive.isKindOf(HextPrimaryAcadEntity::desc())) {
        return writeSerialEntity(primitive, isObstruction);
    }
    clearMesh();
    return meshPrimitive(primitive, indices_, positions_, normals_, &trouble_) && writeMesh(isObstruction);
}

bool PrimitiveWriter::writeSerialEntity(const HextPrimary& primitive, bool isObstruction) {
    const std::unique_ptr<TlDbEntity> entity(
        hxcad::setEntitySerialString(static_cast<const HextPrimaryAcadEntity&>(primitive).getSer()));
    if (entity == nullptr) {
        trouble_ = notReadable;
        return false;
    }
    if (const TlDbLine* line = TlDbLine::cast(entity.get())) {
        lineShape(line->startPoint(), line->endPoint(), shape_);
        return writeShape(isObstruction);
    }
    clearMesh();
    return meshEntity(*entity, indices_, positions_, normals_, &trouble_) && writeMesh(isObstruction);
}

void PrimitiveWriter::clearMesh() {
    indices_.clear();
    positions_.clear();
    normals_.clear();
}

bool PrimitiveWriter::writeMesh(bool isObstruction) {
    if (!packVertices()) {
        trouble_ = notFinite;
        return false;
    }
    const std::size_t count = triangleCount();
    PrimitiveHead head{kindFacets, isObstruction, &facetMatrix(), {}, wordSize + triangleSize * count};
    if (compat_) {
        head.box = meshBox();
    }
    file_.writePrimitiveHead(head);
    file_.writeWord(static_cast<std::uint32_t>(count));
    const char* vertices = packed_.data();
    for (std::size_t solid = 0; solid < indices_.size(); ++solid) {
        writeTriangles(solid, vertices);
        vertices += vertexSize * vertexCount(positions_[solid]);
    }
    return true;
}

std::size_t PrimitiveWriter::triangleCount() const {
    std::size_t count = 0;
    for (std::size_t solid = 0; solid < indices_.size(); ++solid) {
        count += triangleCountOf(indices_[solid]);
    }
    return count;
}

// Every vertex once, in the form in which the triangles repeat it.
bool PrimitiveWriter::packVertices() {
    std::size_t count = 0;
    for (std::size_t solid = 0; solid < positions_.size(); ++solid) {
        count += vertexCount(positions_[solid]);
    }
    packed_.resize(vertexSize * count);
    char* at = packed_.data();
    bool finite = true;
    for (std::size_t solid = 0; solid < positions_.size(); ++solid) {
        finite = pack(positions_[solid], normals_[solid], at) && finite;
        at += vertexSize * vertexCount(positions_[solid]);
    }
    return finite;
}

void PrimitiveWriter::writeTriangles(std::size_t solid, const char* vertices) {
    const std::vector<std::uint32_t>& indices = indices_[solid];
    const std::size_t total = triangleCountOf(indices);
    const std::uint32_t* index = indices.data();
    for (std::size_t done = 0; done < total;) {
        const std::size_t now = std::min(trianglesAtOnce, total - done);
        char* at = file_.room(triangleSize * now);
        for (std::size_t i = 0; i < now; ++i, index += 3) {
            at = putWord(putWord(at, polygonsOfPatch), verticesOfPolygon);
            for (int corner = 0; corner < 3; ++corner, at += vertexSize) {
                std::memcpy(at, vertices + vertexSize * index[corner], vertexSize);
            }
        }
        done += now;
        file_.settle();
    }
}

Box PrimitiveWriter::meshBox() const {
    Box box{};
    bool first = true;
    for (std::size_t solid = 0; solid < positions_.size(); ++solid) {
        const std::vector<double>& positions = positions_[solid];
        for (std::size_t i = 0; i < 3 * vertexCount(positions); ++i) {
            const auto value = static_cast<float>(positions[i]);
            const std::size_t axis = i % 3;
            box[axis] = first ? value : std::min(box[axis], value);
            box[axis + 3] = first ? value : std::max(box[axis + 3], value);
            first = first && axis != 2;
        }
    }
    return box;
}

void PrimitiveWriter::writeBlock(const HextPrimary& primitive) {
    const std::unique_ptr<TlDbEntity> entity(transHextPrimary(&primitive));
    if (entity == nullptr) {
        trouble_ = notReadable;
        reportTrouble(primitive.isA()->name());
        return;
    }
    writeParts(*entity);
}

void PrimitiveWriter::writeParts(const TlDbEntity& block) {
    std::vector<TlDbEntity*> exploded;
    if (block.explode(exploded) != Tl::eOk) {
        trouble_ = noParts;
        reportTrouble(block.isA()->name());
        return;
    }
    std::vector<std::unique_ptr<TlDbEntity>> parts(exploded.begin(), exploded.end());
    for (std::unique_ptr<TlDbEntity>& part : parts) {
        hxcad::hextPrintf("\n%s", part->isA()->name());
        if (part->isKindOf(TlDbBlockReference::desc())) {
            writeParts(*part);
        } else {
            writePart(*part);
        }
        part.reset();
    }
}

void PrimitiveWriter::writePart(const TlDbEntity& part) {
    nameGroup("aent", ++partCount_);
    const std::uint64_t mark = file_.mark();
    file_.writeGroupBegin(name_, rvmMaterial(part.colorIndex()));
    clearMesh();
    trouble_ = meshSolid(part, indices_, positions_, normals_) ? nullptr : notMeshed;
    if (writeMesh(false)) {
        file_.writeGroupEnd();
    } else {
        file_.takeBack(mark);
    }
    reportTrouble(name_);
}

void PrimitiveWriter::reportTrouble(std::string_view name) const {
    if (trouble_ != nullptr) {
        std::string what = ownerName_.empty() ? std::string() : std::string(ownerName_) + "/";
        reportLeftOut({HxDbObjectId(ownerId_), what.append(name), "primitive"}, trouble_);
    }
}

}  // namespace rvm
