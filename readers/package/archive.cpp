#include "readers/package/archive.h"

#include <algorithm>
#include <fmt/core.h>
#include <memory>
#include <simdjson.h>
#include <unordered_set>
#include <zip.h>

namespace packagecheck {

namespace {

using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::object;

constexpr const char* indexName = "package.json";
constexpr const char* modelTreeName = "modeltree.json";
constexpr const char* sceneEnding = ".glb";
constexpr int instanceType = 2;

struct CloseArchive {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct CloseEntry {
    void operator()(zip_file_t* entry) const { zip_fclose(entry); }
};

std::string textOf(const element& item) {
    return std::string(std::string_view(item.get_string()));
}

std::array<double, 4> colorOf(const element& item) {
    std::array<double, 4> color{};
    for (std::size_t i = 0; i < 4; ++i) {
        color[i] = item.at(i).get_double();
    }
    return color;
}

class Reader {
public:
    Reader(Findings& findings, bool keepAll) : findings_(findings), keepAll_(keepAll) {}

    Package read(const std::filesystem::path& file) {
        int error = 0;
        archive_.reset(zip_open(file.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &error));
        if (archive_ == nullptr) {
            findings_.emplace_back("no whole ZIP archive");
            return {};
        }
        for (zip_int64_t i = 0; i < zip_get_num_entries(archive_.get(), 0); ++i) {
            package_.entries.emplace_back(zip_get_name(archive_.get(), static_cast<zip_uint64_t>(i), ZIP_FL_ENC_RAW));
            unread_.insert(package_.entries.back());
        }
        document(indexName, [this](const object& index) { readIndex(index); });
        for (const std::string& left : unread_) {
            fault("{}: nothing names this entry", left);
        }
        return std::move(package_);
    }

private:
    template <typename... Args>
    void fault(fmt::format_string<Args...> format, Args&&... args) {
        findings_.push_back(fmt::format(format, std::forward<Args>(args)...));
    }

    // False, with a finding, when the entry is missing or damaged; its checksum is tested at its end.
    bool bytesOf(const std::string& name, std::string& bytes) {
        zip_stat_t about;
        const std::unique_ptr<zip_file_t, CloseEntry> entry(zip_fopen(archive_.get(), name.c_str(), 0));
        if (entry == nullptr || zip_stat(archive_.get(), name.c_str(), 0, &about) != 0) {
            fault("{}: missing", name);
            return false;
        }
        unread_.erase(name);
        bytes.resize(about.size);
        const zip_int64_t got = zip_fread(entry.get(), bytes.data(), about.size);
        char more = 0;
        if (got < 0 || static_cast<zip_uint64_t>(got) != about.size || zip_fread(entry.get(), &more, 1) != 0) {
            fault("{}: damaged", name);
            return false;
        }
        return true;
    }

    // Hands a JSON entry to `use`; whatever is not as it should be there becomes a finding.
    template <typename Use>
    void document(const std::string& name, Use&& use) {
        std::string bytes;
        if (!bytesOf(name, bytes)) {
            return;
        }
        simdjson::dom::parser parser;
        try {
            const object top = parser.parse(bytes).get_object();
            use(top);
        } catch (const simdjson::simdjson_error& error) {
            fault("{}: {}", name, error.what());
        }
    }

    void readIndex(const object& index) {
        if (textOf(index["format"]) != "pmodel" || std::int64_t{index["version"]} != 1) {
            fault("{}: format pmodel of version 1 expected", indexName);
        }
        package_.projectName = textOf(index["projectName"]);
        package_.sourceProgram = textOf(index["sourceProgram"]);
        for (const element name : array(index["models"])) {
            readModel(textOf(name));
        }
        if (package_.models.empty()) {
            fault("the package holds no model");
        }
    }

    void readModel(const std::string& name) {
        Model& model = package_.models.emplace_back();
        folder_ = name.substr(0, name.rfind('/') + 1);
        document(name, [&model](const object& index) {
            for (const element view : array(index["views"])) {
                model.views.push_back(textOf(view));
            }
            for (const element file : array(index["files"])) {
                model.files.push_back(textOf(file));
            }
        });
        ids_.clear();
        geometries_.clear();
        for (const std::string& file : model.files) {
            readFile(model, file);
        }
        if (model.views.size() != 2) {
            fault("{}: two views expected", name);
        }
        const bool hasScene = std::any_of(model.files.begin(), model.files.end(),
                                          [](const std::string& file) { return file.ends_with(sceneEnding); });
        if (!hasScene || std::count(model.files.begin(), model.files.end(), modelTreeName) != 1) {
            fault("{}: a model tree and a scene expected", name);
        }
    }

    void readFile(Model& model, const std::string& file) {
        const std::string path = folder_ + file;
        if (file == "materials.json") {
            document(path, [&](const object& top) { readMaterials(model, path, top); });
        } else if (file == modelTreeName) {
            document(path, [&](const object& top) { readTrees(model, path, top); });
        } else if (file == "properties.json") {
            document(path, [&](const object& top) { readProperties(model, path, top); });
        } else if (file.ends_with(sceneEnding)) {
            readScene(model, path);
        } else {
            fault("{}: of no known kind", path);
        }
    }

    void readMaterials(Model& model, const std::string& path, const object& top) {
        for (const element item : array(top["materials"])) {
            Material material;
            material.name = textOf(item["name"]);
            material.ambient = colorOf(item["ambient"]);
            material.diffuse = colorOf(item["diffuse"]);
            material.specular = colorOf(item["specular"]);
            material.transparency = item["transparency"].get_double();
            if (!model.materials.try_emplace(textOf(item["id"]), material).second) {
                fault("{}: material {} stands there twice", path, textOf(item["id"]));
            }
        }
    }

    void readTrees(Model& model, const std::string& path, const object& top) {
        for (const element item : array(top["trees"])) {
            Tree& tree = model.trees.emplace_back();
            tree.name = textOf(item["name"]);
            for (const element row : array(item["nodes"])) {
                readTreeNode(tree, path, row);
            }
        }
    }

    void readTreeNode(Tree& tree, const std::string& path, const element& row) {
        TreeNode node{row.at(0).get_int64(), textOf(row.at(1)), textOf(row.at(2)),
                      static_cast<int>(std::int64_t{row.at(3)})};
        const auto number = static_cast<std::int64_t>(tree.nodes.size());
        if (node.parent >= number || (node.parent < 0) != (number == 0)) {
            fault("{}: node {} has no parent ahead of it", path, number);
        }
        if (node.databaseId.empty() || !ids_.insert(node.databaseId).second) {
            fault("{}: database id {} is empty or stands there twice", path, node.databaseId);
        }
        tree.nodes.push_back(std::move(node));
    }

    void readProperties(Model& model, const std::string& path, const object& top) {
        for (const element row : array(top["rows"])) {
            Property property{textOf(row.at(0)), textOf(row.at(1)), textOf(row.at(2)), textOf(row.at(3)),
                              textOf(row.at(4))};
            if (!ids_.contains(property.databaseId)) {
                fault("{}: a property of {}, which no tree holds", path, property.databaseId);
            }
            if (keepAll_) {
                model.properties.push_back(std::move(property));
            }
        }
    }

    void readScene(Model& model, const std::string& path) {
        std::string bytes;
        Findings found;
        if (bytesOf(path, bytes)) {
            glbcheck::Scene scene = glbcheck::readGlb(std::move(bytes), found);
            checkInstances(model, scene, found);
            if (keepAll_) {
                model.scenes.push_back(std::move(scene));
            }
        }
        for (const std::string& text : found) {
            fault("{}: {}", path, text);
        }
    }

    // Every node but the root stands in the model tree; every instance in a material of the package; and a geometry in
    // one scene alone.
    void checkInstances(const Model& model, const glbcheck::Scene& scene, Findings& found) {
        std::set<std::string> geometries;
        for (const glbcheck::Node& node : scene.nodes) {
            if (node.parent != glbcheck::none && !ids_.contains(node.name)) {
                found.push_back(fmt::format("node {} stands in no tree", node.name));
            }
            if (node.type != instanceType) {
                continue;
            }
            if (!model.materials.contains(node.material)) {
                found.push_back(fmt::format("material {} is not there", node.material));
            }
            geometries.insert(node.geometry);
        }
        for (const std::string& geometry : geometries) {
            if (geometry.empty() || !geometries_.insert(geometry).second) {
                found.push_back(fmt::format("geometry {} has no id or stands in another scene, too", geometry));
            }
        }
    }

    Findings& findings_;
    bool keepAll_;
    std::unique_ptr<zip_t, CloseArchive> archive_;
    Package package_;
    std::set<std::string> unread_;
    std::string folder_;
    std::unordered_set<std::string> ids_;
    std::unordered_set<std::string> geometries_;
};

}  // namespace

Package readPackage(const std::filesystem::path& file, Findings& findings, bool keepAll) {
    return Reader(findings, keepAll).read(file);
}

}  // namespace packagecheck
