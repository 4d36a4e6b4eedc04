// Runs OBMOUT in this process and reads the package back through the program's checker.
#pragma once

#include "obm/command.h"
#include "support/export_test.h"
#include "tessaro/check/package/rules.h"

#include <algorithm>
#include <map>
#include <zip.h>

inline std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

// An entry of an archive.
inline std::string entryOf(const std::filesystem::path& archive, const std::string& name) {
    int error = 0;
    zip_t* zip = zip_open(archive.c_str(), ZIP_RDONLY, &error);
    zip_stat_t about;
    if (zip == nullptr || zip_stat(zip, name.c_str(), 0, &about) != 0) {
        ADD_FAILURE() << archive << " has no entry " << name;
        return {};
    }
    std::string bytes(about.size, '\0');
    zip_file_t* file = zip_fopen(zip, name.c_str(), 0);
    EXPECT_EQ(zip_fread(file, bytes.data(), bytes.size()), static_cast<zip_int64_t>(bytes.size()));
    zip_fclose(file);
    zip_discard(zip);
    return bytes;
}

// Puts the scenes of a whole package where the glTF validator takes them up when all tests are through.
inline void keepForTheJudge(const std::filesystem::path& archive, const std::vector<std::string>& entries) {
    static int count = 0;
    std::filesystem::create_directories(TESSARO_JUDGED_DIR);
    for (const std::string& name : entries) {
        if (name.ends_with(".glb")) {
            const std::string file = "obm-" + std::to_string(count++) + ".glb";
            std::ofstream(std::filesystem::path(TESSARO_JUDGED_DIR) / file, std::ios::binary) << entryOf(archive, name);
        }
    }
}

// A package read back, with what is wrong with it.
struct ReadPackage {
    explicit ReadPackage(const std::filesystem::path& file) {
        readers::Findings found;
        check::packageParts(file, found);
        std::transform(found.begin(), found.end(), std::back_inserter(findings), readers::sentence);
        package = readers::package::readPackage(file, found);
    }
    const readers::package::Model& model() const { return package.models.at(0); }
    const readers::glb::Scene& scene() const { return model().scenes.at(0); }
    const std::vector<readers::package::TreeNode>& nodes() const { return model().trees.at(0).nodes; }

    // The tree, a node a line, indented, each with the materials of its meshes.
    std::string outline() const {
        std::map<std::string, std::string> materials;
        for (const readers::glb::Scene& part : model().scenes) {
            for (const readers::glb::Node& node : part.nodes) {
                materials[node.name] += node.type == 2 ? " " + node.material : "";
            }
        }
        std::string text;
        std::vector<std::size_t> depths;
        for (const readers::package::TreeNode& node : nodes()) {
            depths.push_back(node.parent < 0 ? 0 : depths[static_cast<std::size_t>(node.parent)] + 1);
            text += std::string(depths.back(), ' ') + node.name + materials[node.databaseId] + "\n";
        }
        return text;
    }
    // "name=value" of the first record of that name, in the order in which they stand.
    std::string propertiesOf(const std::string& name) const {
        const auto at =
            std::find_if(nodes().begin(), nodes().end(), [&](const auto& node) { return node.name == name; });
        std::string text;
        for (const readers::package::Property& property : model().properties) {
            if (at != nodes().end() && property.databaseId == at->databaseId) {
                text += property.name + "=" + property.value + "\n";
            }
        }
        return text;
    }

    std::vector<std::string> findings;
    readers::package::Package package;
};

inline std::string box(const std::string& members = "") {
    return R"({"type":"HextBox3D","point":[0,0,0],"xLength":1,"yLength":2,"zLength":3)" + members + "}";
}
inline std::string cylinder(const std::string& members = "") {
    return R"({"type":"HextCylinder3D","startPoint":[0,0,0],"endPoint":[0,0,9],"diameter":4)" + members + "}";
}
inline const std::string translucent = R"(,"material":"hext_temp_material")";
inline std::string shape(const std::string& primitives) {
    return R"(,"primitives":[)" + primitives + "]";
}
// An object of the tree.
inline std::string object(int id, const char* type, int parent, const std::string& members = "") {
    return (id == 2 ? R"({"id":)" : R"(,{"id":)") + std::to_string(id) + R"(,"class":")" + type + R"(","in":)" +
           std::to_string(parent) + R"(,"name":"N)" + std::to_string(id) + "\"" + members + "}";
}

class ObmRun : public ExportTest<TestUi> {
protected:
    ObmRun() {
        ui.answer = target().string();
        script("function getNodeName(t) return plant.displayName(t.objid) or '' end\n");
    }

    std::filesystem::path target() const { return out() / "plant.pmodel"; }
    void load(const std::string& objects) {
        ExportTest::load(objects, R"({"name":"P","projectItems":{"name":"Item"}})");
    }
    void run() {
        ui.boxes.clear();
        tolmar::runReport().clear();
        obmout();
    }
    // A run that gives a whole package.
    ReadPackage exported() {
        run();
        EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出结束"});
        ReadPackage read(target());
        EXPECT_EQ(joined(read.findings), "");
        EXPECT_EQ(filesOut(), std::vector<std::string>{"plant.pmodel"}) << "the working folder is gone";
        keepForTheJudge(target(), read.package.entries);
        return read;
    }
    std::string outline() { return exported().outline(); }
    // Checks exactly the items with these labels, whatever their parents are.
    void checkOnly(const std::vector<std::u16string>& labels) {
        ui.onForm = [labels](OrnLogicForm& form) {
            TestUi::eachItem(form, [&](OrnLogicTree::Item item) {
                const bool wanted = std::find(labels.begin(), labels.end(), item->label) != labels.end();
                OrnLogicTree::setChecked(item, wanted);
            });
            form.onControlClicked(OrnLogicForm::ResultOk);
        };
    }
};
