#include "nwcreate/writing/scene_writer.h"

#include "gltf/glb.h"
#include "gltf/json_text.h"
#include "nwcreate/writing/node_json.h"
#include "tolmar/code_page.h"
#include "tolmar/file.h"
#include "tolmar/paths.h"
#include "tolmar/run_report.h"

namespace nwcreate {

namespace {

// Letters, digits and "-._~" stay, all other bytes of the UTF-8 text become "%XX".
std::string uriOf(std::string_view utf8) {
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    constexpr const char* digits = "0123456789ABCDEF";
    std::string uri;
    for (const char c : utf8) {
        if (plain.find(c) != std::string_view::npos) {
            uri += c;
        } else {
            uri += '%';
            uri += digits[static_cast<unsigned char>(c) >> 4U];
            uri += digits[static_cast<unsigned char>(c) & 15U];
        }
    }
    return uri;
}

// The JSON of the scene: what is composed now, with spools in between.
class SceneJson {
public:
    SceneJson(Library& lib, SceneStore& store, std::u16string_view title)
        : store_(store), open_(composeOpenNodes(lib, store)) {
        composeViews();
        composeRoot(title);
        composeHead(title);
    }

    // `firstFile`: the first buffer that is a file of its own. Buffer files are named by their number from 1 on.
    void setBuffers(std::string_view stem, std::size_t firstFile) {
        buffers_.clear();
        const std::size_t count = store_.shapes.bufferCount();
        if (count == 0) {
            return;
        }
        buffers_ = ",\"buffers\":[";
        gltf::JsonText json(buffers_);
        for (std::size_t i = 0; i < count; ++i) {
            json.beginObject().key("byteLength").number(store_.shapes.bufferSize(i));
            if (i >= firstFile) {
                const std::string number = std::to_string(i - firstFile + 1);
                json.key("uri").escaped(uriOf(std::string(stem) + "." + number + ".bin"));
            }
            json.endObject();
        }
        buffers_ += "],\"bufferViews\":[" + store_.shapes.viewJson() + "]";
    }

    std::uint64_t size() {
        std::uint64_t total = 0;
        forEachPart([&total](std::string_view text) { total += text.size(); },
                    [&total](const Spool& spool) { total += spool.size(); });
        return total;
    }

    bool write(tolmar::OutputFile& file) {
        bool good = true;
        forEachPart([&file](std::string_view text) { file.write(text); },
                    [&](Spool& spool) { good = good && spool.copyTo(file); });
        return good;
    }

private:
    template <typename OnText, typename OnSpool>
    void forEachPart(OnText&& onText, OnSpool&& onSpool) {
        onText(head_);
        onText(buffers_);
        if (store_.meshCount() > 0) {
            onText(R"(,"accessors":[)");
            onSpool(store_.shapes.accessorJson());
            onText(R"(],"meshes":[)");
            onSpool(store_.meshJson());
            onText("]");
        }
        onText(R"(,"nodes":[)");
        onSpool(store_.nodeJson());
        onText(store_.nodeCount() > 0 ? "," : "");
        onText(open_.json);
        onText("]}");
    }

    std::uint32_t addNode() {
        open_.json += open_.json.empty() ? "" : ",";
        return store_.nodeCount() + open_.count++;
    }

    std::uint32_t composeView(const View& view, std::string_view name) {
        const std::uint32_t number = addNode();
        writeViewNode(view, name, cameraCount_++, open_.json);
        open_.roots.push_back(number);
        return number;
    }

    void composeViews() {
        const SceneSettings& settings = store_.settings;
        if (settings.homeView) {
            homeNode_ = composeView(*settings.homeView, "Home view");
        }
        if (settings.currentView) {
            currentNode_ = settings.currentView == settings.homeView
                               ? homeNode_
                               : composeView(*settings.currentView, "Current view");
        }
    }

    // Turns the scene, whose Z is up, so that Y is.
    void composeRoot(std::u16string_view title) {
        constexpr double half = 0.7071067811865476;
        constexpr std::array<double, 4> turn = {-half, 0, 0, half};
        rootNode_ = addNode();
        gltf::JsonText json(open_.json);
        json.beginObject().key("name").string(title.empty() ? u"Scene" : title).key("rotation").decimals(turn);
        if (!open_.roots.empty()) {
            json.key("children").beginArray();
            for (const std::uint32_t root : open_.roots) {
                json.number(root);
            }
            json.endArray();
        }
        json.endObject();
    }

    void composeSettings(gltf::JsonText& json) const {
        const SceneSettings& settings = store_.settings;
        json.key("extras").beginObject().key("units").escaped("millimetres");
        if (settings.background) {
            json.key("background").beginArray();
            for (const Vec3& color : *settings.background) {
                json.decimals(color);
            }
            json.endArray();
        }
        if (settings.ambient) {
            json.key("ambient").decimals(*settings.ambient);
        }
        if (currentNode_ != noNumber) {
            json.key("currentView").number(currentNode_);
        }
        if (homeNode_ != noNumber) {
            json.key("homeView").number(homeNode_);
        }
        json.endObject();
    }

    // Everything before the buffers; the object stays open.
    void composeHead(std::u16string_view title) {
        gltf::JsonText json(head_);
        json.beginObject().key("asset").beginObject().key("generator").escaped("Tessaro " TESSARO_VERSION);
        json.key("version").escaped("2.0").endObject().key("scene").number(0).key("scenes").beginArray().beginObject();
        if (!title.empty()) {
            json.key("name").string(title);
        }
        json.key("nodes").beginArray().number(rootNode_).endArray();
        composeSettings(json);
        json.endObject().endArray();
        if (cameraCount_ > 0) {
            json.key("cameras").beginArray();
            for (std::uint32_t i = 0; i < cameraCount_; ++i) {
                json.list(R"({"type":"perspective","perspective":{"yfov":0.8,"znear":0.01}})");
            }
            json.endArray();
        }
        if (!store_.materialJson().empty()) {
            json.key("materials").beginArray().list(store_.materialJson()).endArray();
        }
    }

    SceneStore& store_;
    OpenNodes open_;
    std::string head_;
    std::string buffers_;
    std::uint32_t cameraCount_ = 0;
    std::uint32_t currentNode_ = noNumber;
    std::uint32_t homeNode_ = noNumber;
    std::uint32_t rootNode_ = 0;
};

// The files of one scene: either all of them come to stand, or none.
class SceneFiles {
public:
    SceneFiles(SceneStore& store, SceneJson& json, const std::string& path) : store_(store), json_(json), path_(path) {
        const std::string name = tolmar::fileNameOf(path);
        const std::string base = name.substr(0, name.rfind('.'));
        stemUtf8_ = tolmar::toUtf8(base);
        beside_ = path.substr(0, path.size() - name.size()) + base;
    }

    bool write() {
        const std::uint64_t limit = store_.fileLimit();
        firstFile_ = 1;
        json_.setBuffers(stemUtf8_, firstFile_);
        if (sceneSize() > limit) {
            firstFile_ = 0;
            json_.setBuffers(stemUtf8_, firstFile_);
        }
        if (!store_.failure().empty()) {
            return refuse(store_.failure());
        }
        if (sceneSize() > limit) {
            return refuse("the tree of the scene has " + std::to_string(json_.size()) + " bytes, a file at most " +
                          std::to_string(limit));
        }
        for (std::size_t i = firstFile_; i < store_.shapes.bufferCount(); ++i) {
            if (!writeBuffer(i)) {
                return removeWritten();
            }
        }
        // The scene comes last, so that a scene that stands is whole.
        return writeGlb() || removeWritten();
    }

private:
    bool hasBinary() const { return firstFile_ == 1 && store_.shapes.bufferCount() > 0; }
    std::uint64_t binarySize() const { return hasBinary() ? store_.shapes.bufferSize(0) : 0; }

    std::uint64_t sceneSize() { return gltf::glbSize(json_.size(), binarySize()); }

    static bool open(tolmar::OutputFile& file, const std::string& path) {
        const bool isOpen = file.open(path, tolmar::FileMode::Binary);
        file.deleteWhenFailed();
        return isOpen;
    }

    // Closes a file; `isCopied` says whether all could be read back from the spools.
    bool finish(tolmar::OutputFile& file, const std::string& path, bool isCopied) {
        if (!isCopied) {
            file.fail(store_.failure());
        }
        if (!file.close()) {
            return false;
        }
        written_.push_back(path);
        return true;
    }

    bool writeBuffer(std::size_t buffer) {
        const std::string path = beside_ + "." + std::to_string(buffer - firstFile_ + 1) + ".bin";
        tolmar::OutputFile file;
        return open(file, path) && finish(file, path, store_.shapes.copyBuffer(buffer, file));
    }

    bool writeGlb() {
        tolmar::OutputFile file;
        if (!open(file, path_)) {
            return false;
        }
        const std::uint64_t jsonSize = json_.size();
        const std::uint64_t binSize = binarySize();
        file.write(gltf::glbHead(jsonSize, binSize));
        bool good = json_.write(file);
        file.write(std::string(gltf::padded(jsonSize) - jsonSize, ' '));
        if (good && hasBinary()) {
            file.write(gltf::glbBinHead(binSize));
            good = store_.shapes.copyBuffer(0, file);
            file.write(std::string(gltf::padded(binSize) - binSize, '\0'));
        }
        return finish(file, path_, good);
    }

    // Nothing was written yet.
    bool refuse(const std::string& why) {
        tolmar::runReport().fileFailed(tolmar::reportedPath(path_), why);
        return false;
    }

    // One file failed; those before it go, too.
    bool removeWritten() {
        for (const std::string& path : written_) {
            tolmar::deleteFile(path);
            tolmar::runReport().fileRemoved(tolmar::reportedPath(path));
        }
        return false;
    }

    SceneStore& store_;
    SceneJson& json_;
    std::string path_;
    std::string stemUtf8_;
    std::string beside_;  // path without the ending
    std::size_t firstFile_ = 1;
    std::vector<std::string> written_;
};

}  // namespace

bool writeScene(Library& lib, SceneStore& store, std::u16string_view title, const std::string& codePagePath) {
    SceneJson json(lib, store, title);
    return SceneFiles(store, json, codePagePath).write();
}

}  // namespace nwcreate
