// Scene files: the meshes of one part of the store with the instances that use them, as binary glTF.
//
// The instance tree's root is node 0 and turns millimetres with Z up into metres with Y up. Every node is named by its
// database id; type, geometry and material stand in its `extras`. The first scene holds all groups, a further one only
// those above its own instances.
#pragma once

#include "obmsdk/mesh_store.h"
#include "obmsdk/obm_tree.h"

#include <map>

namespace obm {

// A node of the instance tree, in the tree's order.
struct InstanceRow {
    const OBMInstanceTreeNode* node = nullptr;
    const GeometryRow* geometry = nullptr;  // null for a node without a mesh
    std::uint32_t parent = 0;               // the root is its own
    std::uint32_t behind = 0;               // the first row that is not below this one
    std::uint32_t material = 0;             // of a node with a mesh
};

struct SceneContent {
    std::vector<InstanceRow> instances;
    std::vector<OBMMaterial*> materials;
};

// Lays the tree out; a status when an instance names a geometry or material that is not there.
using MaterialNumbers = std::map<std::string, std::uint32_t, std::less<>>;
int layOut(const OBMInstanceTreeNode* root, const MeshStore& meshes, const MaterialNumbers& materials,
           std::vector<InstanceRow>& rows);

// Writes the scene of part number `part`.
int writeScene(const std::filesystem::path& file, const SceneContent& content, const MeshStore& meshes,
               std::uint32_t part);

}  // namespace obm
