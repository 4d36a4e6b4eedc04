// The meshes of a 3D package: their data goes to working files at once, in the form in which scene files hold it; what
// stays in memory is a row for each mesh.
//
// A store has parts, one for each scene file. Of a part there are four working files: positions, facets and normals as
// they stand in the scene's binary chunk, and the text of its accessors.
#pragma once

#include "gltf/json_text.h"
#include "obmsdk/obm_mesh.h"
#include "obmsdk/working_file.h"

#include <array>
#include <filesystem>
#include <string>
#include <tsl/robin_map.h>
#include <vector>

namespace obm {

inline constexpr std::uint32_t noMesh = 0xFFFFFFFF;

// A mesh as a scene sees it.
struct GeometryRow {
    std::uint32_t part = 0;
    std::uint32_t accessor = noMesh;  // the first of two or three: positions, facets, normals; noMesh without facets
    bool hasNormals = false;
};

// Buffer views of a scene, in the order of their data in the binary chunk. Views without data are left out, so normals
// come last.
enum View : std::size_t { PositionView = 0, FacetView = 1, NormalView = 2, ViewCount = 3 };

struct ScenePart {
    std::filesystem::path base;  // the working files' path but for their ending
    std::array<std::uint64_t, ViewCount> sizes{};
    std::uint32_t accessors = 0;

    std::filesystem::path viewFile(std::size_t view) const;
    std::filesystem::path accessorFile() const;
    std::uint64_t binSize() const { return sizes[PositionView] + sizes[FacetView] + sizes[NormalView]; }
};

class MeshStore {
public:
    // Working files go into `folder`.
    void open(std::filesystem::path folder) { folder_ = std::move(folder); }
    void setLimit(std::uint64_t bytes) { limit_ = bytes; }
    int add(const OBMTriangleMesh& mesh);
    // Closes the working files; 0 when all of them are whole.
    int finish();
    const std::vector<ScenePart>& parts() const { return parts_; }
    // Null for an id that no mesh has; valid until the next mesh is added.
    const GeometryRow* find(const std::string& geometryId) const;
    // Removes the working files of a part.
    void removeFiles(std::size_t part) const;

private:
    void beginPart();
    bool endPart();
    void write(const OBMTriangleMesh& mesh, GeometryRow& row);
    void writePositions(const std::vector<OBMFloat3>& vertices);
    void writeFacets(const std::vector<OBMInt3>& facets, std::size_t vertexCount);
    void writeNormals(const std::vector<OBMFloat3>& normals);
    void flush(View view);
    gltf::JsonText& beginAccessor(std::size_t view, int componentType, std::size_t count);

    std::filesystem::path folder_;
    std::uint64_t limit_ = std::uint64_t{1} << 30U;
    std::vector<ScenePart> parts_;
    std::array<WorkingFile, ViewCount> viewFiles_;
    WorkingFile accessorFile_;
    std::string text_;  // accessors on their way into the file
    gltf::JsonText json_{text_};
    std::string bytes_;
    tsl::robin_map<std::string, GeometryRow> rows_;
    bool isPartOpen_ = false;
    bool failed_ = false;
};

}  // namespace obm
