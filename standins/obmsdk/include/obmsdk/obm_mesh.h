// Triangle meshes and materials, as a caller fills them before they go to a 3D package.
//
// Coordinates are millimetres with Z up, in the frame of the instances that show the mesh. Nothing is checked here:
// OBM3dPackage::addMesh says what cannot be used.
#pragma once

#include "obmsdk/obm_types.h"

#include <array>
#include <vector>

class OBMSDK_API OBMTriangleMesh {
public:
    // Empty. The storage of a mesh that was destroyed serves the next, so meshes may come and go one by one.
    static OBMTriangleMesh* create();
    void destroy();

    // By which instances name the mesh; one of its own for each mesh of a package.
    void setGeometryId(obm::Id id) { geometryId_ = id; }
    const std::string& getGeometryId() const { return geometryId_; }
    // Vertices count from 0 in the order in which they come.
    void addVertice(const OBMFloat3& vertex) { vertices_.push_back(vertex); }
    // Counter-clockwise seen from outside.
    void addFacet(const OBMInt3& facet) { facets_.push_back(facet); }
    // One for each vertex, in the same order, or none at all; any other number counts as none.
    void addNormal(const OBMFloat3& normal) { normals_.push_back(normal); }

    const std::vector<OBMFloat3>& vertices() const { return vertices_; }
    const std::vector<OBMInt3>& facets() const { return facets_; }
    const std::vector<OBMFloat3>& normals() const { return normals_; }

private:
    OBMTriangleMesh() = default;
    ~OBMTriangleMesh() = default;
    void clear();

    std::string geometryId_;
    std::vector<OBMFloat3> vertices_;
    std::vector<OBMInt3> facets_;
    std::vector<OBMFloat3> normals_;
};

class OBMSDK_API OBMMaterial {
public:
    // Colours by the light that they answer to; black but for a white Diffuse until they are set.
    enum TexType : int { Ambient = 0, Diffuse = 1, Specular = 2 };

    static OBMMaterial* create();
    void destroy();

    void setName(obm::Id name) { name_ = name; }
    // By which instances name the material; one of its own for each material of a package.
    void setId(obm::Id id) { id_ = id; }
    void setTextureColor(TexType kind, const OBMColor& color) { colors_[kind] = color; }
    // 0 is opaque, 1 invisible.
    void setTransparency(float value) { transparency_ = value; }

    const std::string& name() const { return name_; }
    const std::string& id() const { return id_; }
    const OBMColor& textureColor(TexType kind) const { return colors_[kind]; }
    float transparency() const { return transparency_; }

private:
    OBMMaterial() = default;
    ~OBMMaterial() = default;

    std::string name_;
    std::string id_;
    std::array<OBMColor, 3> colors_ = {{{0, 0, 0, 1}, {1, 1, 1, 1}, {0, 0, 0, 1}}};
    float transparency_ = 0;
};
