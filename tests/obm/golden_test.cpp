// The example plant's package against an expected summary: the tree with the materials and triangles of every record
// and the number of its properties. TESSARO_REBASE=1 writes it anew.
#include "fixture.h"
#include "support/golden.h"

namespace {

// What hangs at each database id: " m3:28" for a mesh of 28 triangles, " +5" for five properties.
std::map<std::string, std::string> contents(const readers::package::Model& model) {
    std::map<std::string, std::string> texts;
    for (const readers::glb::Node& node : model.scenes.at(0).nodes) {
        if (node.mesh != readers::glb::none) {
            const std::uint32_t indices = model.scenes[0].meshes[node.mesh].indices;
            texts[node.name] +=
                " " + node.material + ":" + std::to_string(model.scenes[0].accessors[indices].count / 3);
        }
    }
    std::map<std::string, int> counts;
    for (const readers::package::Property& property : model.properties) {
        ++counts[property.databaseId];
    }
    for (const auto& [id, count] : counts) {
        texts[id] += " +" + std::to_string(count);
    }
    return texts;
}

std::string summary(const ReadPackage& read) {
    std::map<std::string, std::string> texts = contents(read.model());
    std::string text;
    std::vector<std::size_t> depths;
    for (const readers::package::TreeNode& node : read.nodes()) {
        depths.push_back(node.parent < 0 ? 0 : depths[static_cast<std::size_t>(node.parent)] + 1);
        text += std::string(depths.back(), ' ') + node.name + texts[node.databaseId] + "\n";
    }
    return text;
}

class ObmGolden : public ObmRun {};

TEST_F(ObmGolden, TheExamplePlantGivesTheExpectedPackage) {
    root.takeInstallation();
    loadText(exampleText("pump-station.json"));
    expectGolden("obm", "pump-station.txt", summary(exported()));
}

}  // namespace
