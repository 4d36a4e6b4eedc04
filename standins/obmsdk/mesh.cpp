#include "obmsdk/obm_mesh.h"

#include <utility>

namespace {

// A mesh that was destroyed last, kept for its storage: meshes come and go one at a time.
OBMTriangleMesh*& spareMesh() {
    static OBMTriangleMesh* spare = nullptr;
    return spare;
}

// Storage beyond this goes back to the system.
constexpr std::size_t keptVertices = 100'000;

}  // namespace

OBMTriangleMesh* OBMTriangleMesh::create() {
    OBMTriangleMesh* spare = std::exchange(spareMesh(), nullptr);
    return spare != nullptr ? spare : new OBMTriangleMesh;
}

void OBMTriangleMesh::destroy() {
    if (spareMesh() != nullptr || vertices_.capacity() > keptVertices || facets_.capacity() > 2 * keptVertices) {
        delete this;
        return;
    }
    clear();
    spareMesh() = this;
}

void OBMTriangleMesh::clear() {
    geometryId_.clear();
    vertices_.clear();
    facets_.clear();
    normals_.clear();
}

OBMMaterial* OBMMaterial::create() {
    return new OBMMaterial;
}

void OBMMaterial::destroy() {
    delete this;
}
