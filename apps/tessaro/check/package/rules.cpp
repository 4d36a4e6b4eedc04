#include "tessaro/check/package/rules.h"

#include <algorithm>
#include <set>
#include <unordered_set>

namespace check {

namespace {

using namespace readers::package;

class Rules final : public PackageVisitor {
public:
    explicit Rules(readers::Findings& findings) : findings_(findings) {}

private:
    void fault(const std::string& place, std::string text) { readers::note(findings_, place, std::move(text)); }

    void startModel(const ModelIndex& index) override {
        index_ = index;
        ids_.clear();
        geometries_.clear();
        materials_.clear();
    }
    void material(const std::string& file, Material&& material) override {
        if (!materials_.insert(material.id).second) {
            fault(file, "material " + material.id + " stands there twice");
        }
    }
    void node(const std::string& file, TreeNode&& node) override {
        if (node.databaseId.empty() || !ids_.insert(node.databaseId).second) {
            fault(file, "database id " + node.databaseId + " is empty or stands there twice");
        }
    }
    void property(const std::string& file, Property&& property) override {
        if (!ids_.contains(property.databaseId)) {
            fault(file, "a property of " + property.databaseId + ", which no tree holds");
        }
    }
    // Every node but the root stands in the model tree; every instance in a material of the package; and a geometry in
    // one scene alone.
    void scene(const std::string& file, readers::glb::Scene&& scene) override {
        std::set<std::string> geometries;
        for (const readers::glb::Node& node : scene.nodes) {
            if (node.parent != readers::glb::none && !ids_.contains(node.name)) {
                fault(file, "node " + node.name + " stands in no tree");
            }
            if (node.type != readers::glb::instanceType) {
                continue;
            }
            if (!materials_.contains(node.material)) {
                fault(file, "material " + node.material + " is not there");
            }
            geometries.insert(node.geometry);
        }
        for (const std::string& geometry : geometries) {
            if (geometry.empty() || !geometries_.insert(geometry).second) {
                fault(file, "geometry " + geometry + " has no id or stands in another scene, too");
            }
        }
    }
    void endModel() override {
        if (index_.views.size() != 2) {
            fault(index_.file, "two views expected");
        }
        const auto isScene = [](const std::string& file) { return file.ends_with(".glb"); };
        if (std::none_of(index_.files.begin(), index_.files.end(), isScene) ||
            std::count(index_.files.begin(), index_.files.end(), "modeltree.json") != 1) {
            fault(index_.file, "a model tree and a scene expected");
        }
    }

    readers::Findings& findings_;
    ModelIndex index_;
    std::unordered_set<std::string> ids_;
    std::unordered_set<std::string> geometries_;
    std::unordered_set<std::string> materials_;
};

}  // namespace

void packageParts(const std::filesystem::path& file, readers::Findings& findings) {
    Rules rules(findings);
    const PackageIndex index = readPackage(file, rules, findings);
    for (const std::string& left : index.unread) {
        readers::note(findings, left, "nothing names this entry");
    }
}

}  // namespace check
