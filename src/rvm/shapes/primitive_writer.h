// Primitives of an object as chunks of an RVM file, each in a group of its own.
#pragma once

#include "platform/primitives.h"
#include "rvm/format/sibling_names.h"
#include "rvm/format/writer.h"
#include "rvm/shapes/facet_source.h"
#include "rvm/shapes/primitive_shape.h"

#include <string>
#include <string_view>
#include <vector>

class TlDbBlockReference;

namespace rvm {

struct PrimitiveRow;

class PrimitiveWriter {
public:
    // `compat`: boxes are filled, spheres carry their diameter, names are unique in the object.
    PrimitiveWriter(RvmFile& file, bool compat) : file_(file), compat_(compat) {}

    // The object that the coming lists belong to, for the run report. The name must outlive the lists.
    void startObject(std::int64_t id, std::string_view name);

    // One list of primitives, all of them with or all without the obstruction material. Returns the number of bytes
    // written. A primitive that cannot be written leaves no bytes and a line in the run report.
    std::size_t writePrimitiveList(HextPrimaryView list, bool isObstruction, std::uint32_t material);

private:
    // How often a class has been met in the list in hand.
    struct ClassUse {
        const TlRxClass* type;
        const PrimitiveRow* row;
        int count;
    };
    using Shaper = void (*)(const HextPrimary& primitive, PrimitiveShape& shape);

    ClassUse& useOf(const TlRxClass* type);
    void nameGroup(std::string_view stem, int number);
    void writeGroup(const HextPrimary& primitive, ClassUse& use, bool isObstruction, std::uint32_t material);
    bool writeContent(const HextPrimary& primitive, const PrimitiveRow& row, bool isObstruction);
    bool writePrimitive(const HextPrimary& primitive, Shaper shaper, bool isObstruction);
    bool writeShape(bool isObstruction);
    bool writeFacetPrimitive(const HextPrimary& primitive, bool isObstruction);
    bool writeSerialEntity(const HextPrimary& primitive, bool isObstruction);
    bool refuseClass(const HextPrimary& primitive);
    void clearMesh();
    bool writeMesh(bool isObstruction);
    std::size_t triangleCount() const;
    bool packVertices();
    void writeTriangles(std::size_t solid, const char* vertices);
    Box meshBox() const;
    void writeBlock(const HextPrimary& primitive);
    void writeParts(const TlDbEntity& block);
    void writePart(const TlDbEntity& part);
    void reportTrouble(std::string_view name) const;

    RvmFile& file_;
    bool compat_;
    std::int64_t ownerId_ = 0;
    std::string_view ownerName_;
    std::vector<ClassUse> uses_;
    int partCount_ = 0;
    std::string name_;
    SiblingNames siblings_;
    PrimitiveShape shape_;
    MeshIndices indices_;
    MeshPositions positions_;
    MeshNormals normals_;
    std::vector<char> packed_;
    MeshTrouble trouble_ = nullptr;
};

}  // namespace rvm
