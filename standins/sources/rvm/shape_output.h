// Where converted primitives go: an object of a builder, in one colour and material.
#pragma once

#include "plant/model_builder.h"
#include "sources/rvm/facets.h"
#include "sources/rvm/surface_mesh.h"

#include <string>

namespace plant::rvm {

class ShapeOutput {
public:
    explicit ShapeOutput(ModelBuilder& builder) : builder_(&builder) {}

    // Colour index, 0 for that of the object; an obstruction volume, such as insulation, or a solid.
    void setLook(int color, bool isObstruction) {
        color_ = color;
        material_ = isObstruction ? obstructionMaterial : nullptr;
    }
    void put(HextPrimary3D& solid);
    // As an entity of the host, which more exports take than a line of the platform's.
    void putLine(const Point& start, const Point& end);
    // As an entity of the host that holds a mesh. Coordinates of entities keep a ten-thousandth of a millimetre.
    void put(const SurfaceMesh& mesh);
    // For primitives whose mesh does not outlive their conversion.
    SurfaceMesh& scratchMesh() { return scratch_; }
    FacetReader& facetReader() { return facets_; }
    // Points of all meshes made of curved surfaces so far.
    std::size_t& surfacePoints() { return surfacePoints_; }

private:
    void beginEntity(std::string& text, std::string_view type) const;

    ModelBuilder* builder_;
    int color_ = 0;
    const char* material_ = nullptr;
    SurfaceMesh scratch_;
    FacetReader facets_;
    std::size_t surfacePoints_ = 0;
};

}  // namespace plant::rvm
