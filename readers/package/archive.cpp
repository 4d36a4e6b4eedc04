#include "readers/package/archive.h"

#include "readers/mapped_file.h"

#include <fmt/core.h>
#include <memory>
#include <set>
#include <simdjson.h>
#include <zip.h>

namespace readers::package {

namespace {

using simdjson::dom::array;
using simdjson::dom::element;
using simdjson::dom::object;

constexpr const char* indexName = "package.json";
constexpr const char* modelTreeName = "modeltree.json";
constexpr const char* sceneEnding = ".glb";

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

struct FreeZipError {
    zip_error_t error;
    FreeZipError() { zip_error_init(&error); }
    ~FreeZipError() { zip_error_fini(&error); }
};

// A byte of deflated text stands for this many at most: an entry that claims more lies.
constexpr zip_uint64_t mostBytesPerByte = 1032;

class Archive {
public:
    Archive(const std::filesystem::path& file, Findings& findings) : mapped_(file), findings_(findings) {
        if (!mapped_.isGood()) {
            note(findings_, {}, mapped_.fault());
            return;
        }
        // The library takes no bytes for an archive without entries.
        FreeZipError error;
        const std::string_view bytes = mapped_.bytes();
        zip_source_t* source =
            bytes.empty() ? nullptr : zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error.error);
        if (source != nullptr) {
            archive_.reset(zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error.error));
        }
        if (archive_ == nullptr) {
            zip_source_free(source);
            note(findings_, {}, "no whole ZIP archive");
        }
    }

    bool isOpen() const { return archive_ != nullptr; }
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (zip_int64_t i = 0; i < zip_get_num_entries(archive_.get(), 0); ++i) {
            const char* name = zip_get_name(archive_.get(), static_cast<zip_uint64_t>(i), ZIP_FL_ENC_RAW);
            names.emplace_back(name != nullptr ? name : "");
        }
        return names;
    }

    // False, with a finding, when the entry is missing or damaged; its checksum is tested at its end.
    bool read(const std::string& name, std::string& bytes) {
        zip_stat_t about;
        const std::unique_ptr<zip_file_t, CloseEntry> entry(zip_fopen(archive_.get(), name.c_str(), 0));
        if (entry == nullptr || zip_stat(archive_.get(), name.c_str(), 0, &about) != 0) {
            note(findings_, name, "missing");
            return false;
        }
        if (about.comp_size > mapped_.bytes().size() || about.size / mostBytesPerByte > about.comp_size) {
            note(findings_, name, "damaged");
            return false;
        }
        bytes.resize(about.size);
        const zip_int64_t got = zip_fread(entry.get(), bytes.data(), about.size);
        char more = 0;
        if (got < 0 || static_cast<zip_uint64_t>(got) != about.size || zip_fread(entry.get(), &more, 1) != 0) {
            note(findings_, name, "damaged");
            return false;
        }
        return true;
    }

private:
    MappedFile mapped_;
    Findings& findings_;
    std::unique_ptr<zip_t, CloseArchive> archive_;
};

// The findings of a scene name its entry first.
glb::Scene sceneOf(const std::string& entry, std::string&& bytes, Findings& findings) {
    Findings found;
    glb::Scene scene = glb::readGlb(std::move(bytes), found);
    for (const Finding& finding : found) {
        note(findings, entry, sentence(finding));
    }
    return scene;
}

class Reader {
public:
    Reader(const std::filesystem::path& file, PackageVisitor& visitor, Findings& findings)
        : archive_(file, findings), visitor_(visitor), findings_(findings) {}

    PackageIndex read() {
        if (!archive_.isOpen()) {
            return {};
        }
        index_.entries = archive_.names();
        unread_.insert(index_.entries.begin(), index_.entries.end());
        document(indexName, [this](const object& index) { readIndex(index); });
        index_.unread.assign(unread_.begin(), unread_.end());
        return std::move(index_);
    }

private:
    template <typename... Args>
    void fault(const std::string& entry, fmt::format_string<Args...> format, Args&&... args) {
        note(findings_, entry, fmt::format(format, std::forward<Args>(args)...));
    }

    bool bytesOf(const std::string& name, std::string& bytes) {
        const bool isGood = archive_.read(name, bytes);
        unread_.erase(name);
        return isGood;
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
            fault(name, "{}", error.what());
        }
    }

    void readIndex(const object& index) {
        if (textOf(index["format"]) != "pmodel" || std::int64_t{index["version"]} != 1) {
            fault(indexName, "format pmodel of version 1 expected");
        }
        index_.projectName = textOf(index["projectName"]);
        index_.sourceProgram = textOf(index["sourceProgram"]);
        bool hasModel = false;
        for (const element name : array(index["models"])) {
            hasModel = true;
            readModel(textOf(name));
        }
        if (!hasModel) {
            fault({}, "the package holds no model");
        }
    }

    void readModel(const std::string& name) {
        ModelIndex model;
        model.file = name;
        folder_ = name.substr(0, name.rfind('/') + 1);
        document(name, [&model](const object& index) {
            for (const element view : array(index["views"])) {
                model.views.push_back(textOf(view));
            }
            for (const element file : array(index["files"])) {
                model.files.push_back(textOf(file));
            }
        });
        visitor_.startModel(model);
        for (const std::string& file : model.files) {
            readFile(file);
        }
        visitor_.endModel();
    }

    void readFile(const std::string& file) {
        const std::string path = folder_ + file;
        if (file == "materials.json") {
            document(path, [&](const object& top) { readMaterials(path, top); });
        } else if (file == modelTreeName) {
            document(path, [&](const object& top) { readTrees(path, top); });
        } else if (file == "properties.json") {
            document(path, [&](const object& top) { readProperties(path, top); });
        } else if (file.ends_with(sceneEnding)) {
            std::string bytes;
            if (bytesOf(path, bytes)) {
                visitor_.scene(path, sceneOf(path, std::move(bytes), findings_));
            }
        } else {
            fault(path, "of no known kind");
        }
    }

    void readMaterials(const std::string& path, const object& top) {
        for (const element item : array(top["materials"])) {
            Material material;
            material.name = textOf(item["name"]);
            material.ambient = colorOf(item["ambient"]);
            material.diffuse = colorOf(item["diffuse"]);
            material.specular = colorOf(item["specular"]);
            material.transparency = item["transparency"].get_double();
            material.id = textOf(item["id"]);
            visitor_.material(path, std::move(material));
        }
    }

    void readTrees(const std::string& path, const object& top) {
        for (const element item : array(top["trees"])) {
            visitor_.startTree(textOf(item["name"]));
            std::int64_t number = 0;
            for (const element row : array(item["nodes"])) {
                readTreeNode(number++, path, row);
            }
        }
    }

    void readTreeNode(std::int64_t number, const std::string& path, const element& row) {
        TreeNode node{row.at(0).get_int64(), textOf(row.at(1)), textOf(row.at(2)),
                      static_cast<int>(std::int64_t{row.at(3)})};
        if (node.parent >= number || (node.parent < 0) != (number == 0)) {
            fault(path, "node {} has no parent ahead of it", number);
        }
        visitor_.node(path, std::move(node));
    }

    void readProperties(const std::string& path, const object& top) {
        for (const element row : array(top["rows"])) {
            visitor_.property(
                path, {textOf(row.at(0)), textOf(row.at(1)), textOf(row.at(2)), textOf(row.at(3)), textOf(row.at(4))});
        }
    }

    Archive archive_;
    PackageVisitor& visitor_;
    Findings& findings_;
    PackageIndex index_;
    std::set<std::string> unread_;
    std::string folder_;
};

class Collector final : public PackageVisitor {
public:
    std::vector<Model> models;

private:
    void startModel(const ModelIndex& index) override { static_cast<ModelIndex&>(models.emplace_back()) = index; }
    void material(const std::string&, Material&& material) override {
        std::string id = material.id;
        models.back().materials.try_emplace(std::move(id), std::move(material));
    }
    void startTree(std::string&& name) override { models.back().trees.push_back({std::move(name), {}}); }
    void node(const std::string&, TreeNode&& node) override {
        models.back().trees.back().nodes.push_back(std::move(node));
    }
    void property(const std::string&, Property&& property) override {
        models.back().properties.push_back(std::move(property));
    }
    void scene(const std::string&, glb::Scene&& scene) override { models.back().scenes.push_back(std::move(scene)); }
};

}  // namespace

PackageIndex readPackage(const std::filesystem::path& file, PackageVisitor& visitor, Findings& findings) {
    return Reader(file, visitor, findings).read();
}

Package readPackage(const std::filesystem::path& file, Findings& findings) {
    Collector collector;
    Package package;
    static_cast<PackageIndex&>(package) = readPackage(file, collector, findings);
    package.models = std::move(collector.models);
    return package;
}

glb::Scene readScene(const std::filesystem::path& file, const std::string& entry, Findings& findings) {
    Archive archive(file, findings);
    std::string bytes;
    return archive.isOpen() && archive.read(entry, bytes) ? sceneOf(entry, std::move(bytes), findings) : glb::Scene();
}

}  // namespace readers::package
