// A PModel package read back: a ZIP archive with
//
//   package.json        format "pmodel", version 1, projectName, sourceProgram, models: the index of each model
//   FOLDER/model.json   index of a model: views, files (names in the folder)
//   materials.json      materials: id, name, ambient, diffuse, specular (four numbers from 0 to 1), transparency
//   modeltree.json      trees: name, nodes [parent, databaseId, name, type]; parent is the number of a node ahead, or
//   -1 properties.json     rows [databaseId, category, name, valueType, value]
//   *.glb               scenes (readers/package/glb.h)
//
// Texts are UTF-8. What is missing or of another form becomes a finding; what the parts promise each other is not
// asked.
#pragma once

#include "readers/package/glb.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace readers::package {

struct Material {
    std::string id;
    std::string name;
    std::array<double, 4> ambient{};
    std::array<double, 4> diffuse{};
    std::array<double, 4> specular{};
    double transparency = 0;
};

struct TreeNode {
    std::int64_t parent = -1;
    std::string databaseId;
    std::string name;
    int type = 0;
};

struct Tree {
    std::string name;
    std::vector<TreeNode> nodes;  // parents before children
};

struct Property {
    std::string databaseId;
    std::string category;
    std::string name;
    std::string valueType;
    std::string value;
};

struct ModelIndex {
    std::string file;  // its own name in the archive
    std::vector<std::string> views;
    std::vector<std::string> files;
};

struct Model : ModelIndex {
    std::map<std::string, Material> materials;  // by id
    std::vector<Tree> trees;
    std::vector<Property> properties;
    std::vector<glb::Scene> scenes;
};

struct PackageIndex {
    std::vector<std::string> entries;  // names in the archive's order
    std::vector<std::string> unread;   // those that nothing names, sorted
    std::string projectName;
    std::string sourceProgram;
};

struct Package : PackageIndex {
    std::vector<Model> models;
};

// The parts of a package in the order in which its indexes name them, one at a time; `file` is the entry of a part.
class PackageVisitor {
public:
    PackageVisitor() = default;
    virtual ~PackageVisitor() = default;
    PackageVisitor(const PackageVisitor&) = delete;
    PackageVisitor& operator=(const PackageVisitor&) = delete;

    virtual void startModel(const ModelIndex&) {}
    virtual void material(const std::string& /*file*/, Material&&) {}
    virtual void startTree(std::string&& /*name*/) {}
    virtual void node(const std::string& /*file*/, TreeNode&&) {}
    virtual void property(const std::string& /*file*/, Property&&) {}
    virtual void scene(const std::string& /*file*/, glb::Scene&&) {}
    virtual void endModel() {}
};

// Reads as far as it makes sense; a node whose parent does not stand ahead of it is handed on with the finding.
PackageIndex readPackage(const std::filesystem::path& file, PackageVisitor& visitor, Findings& findings);
// All of it.
Package readPackage(const std::filesystem::path& file, Findings& findings);
// One scene alone, by its entry.
glb::Scene readScene(const std::filesystem::path& file, const std::string& entry, Findings& findings);

}  // namespace readers::package
