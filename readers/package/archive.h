// Reader of PModel packages that trusts nothing: what a receiver would stumble over becomes a finding. It shares no
// code with the writer.
#pragma once

#include "readers/package/glb.h"

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace packagecheck {

using glbcheck::Findings;

struct Material {
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

struct Model {
    std::vector<std::string> views;
    std::vector<std::string> files;
    std::map<std::string, Material> materials;  // by id
    std::vector<Tree> trees;
    // When they are kept.
    std::vector<Property> properties;
    std::vector<glbcheck::Scene> scenes;
};

struct Package {
    std::vector<std::string> entries;  // names in the archive's order
    std::string projectName;
    std::string sourceProgram;
    std::vector<Model> models;
};

// Reads as far as it makes sense. Texts are UTF-8. `keepAll` keeps properties and scenes, too.
Package readPackage(const std::filesystem::path& file, Findings& findings, bool keepAll = false);

}  // namespace packagecheck
