#include "obmsdk/package_3d.h"

#include "tolmar/code_page.h"
#include "tolmar/paths.h"
#include "tolmar/system.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* indexName = "model.json";
constexpr const char* materialsName = "materials.json";
constexpr const char* modelTreeName = "modeltree.json";
constexpr const char* propertiesName = "properties.json";

std::string sceneName(std::uint32_t part) {
    return part == 0 ? "scene.glb" : "scene-" + std::to_string(part + 1) + ".glb";
}

struct FreeTree {
    template <typename Node>
    void operator()(Node* root) const {
        root->destroy();
    }
};

}  // namespace

OBM3dPackage::State::~State() {
    for (OBMMaterial* material : materials) {
        material->destroy();
    }
    if (instances != nullptr) {
        instances->destroy();
    }
}

int OBM3dPackage::State::note(int status) {
    failure = failure == OBMOk ? status : failure;
    return status;
}

int OBM3dPackage::State::writeScenes() {
    if (const int status = meshes.finish(); status != OBMOk) {
        return status;
    }
    if (instances == nullptr) {
        instances = OBMInstanceTreeNode::createNode(nullptr);
    }
    obm::SceneContent content;
    content.materials = materials;
    if (const int status = obm::layOut(instances, meshes, materialNumbers, content.instances); status != OBMOk) {
        return status;
    }
    for (std::uint32_t part = 0; part < meshes.parts().size(); ++part) {
        scenes.push_back(sceneName(part));
        if (const int status = obm::writeScene(folder / scenes.back(), content, meshes, part); status != OBMOk) {
            return status;
        }
        meshes.removeFiles(part);
    }
    return OBMOk;
}

// modeltree.json and properties.json are there already when they have rows.
int OBM3dPackage::State::writeDocuments() {
    const bool good = obm::writeMaterials(file(materialsName), materials) &&
                      (!modelTrees.isOpen() || modelTrees.close()) && (!properties.isOpen() || properties.close()) &&
                      writeIndex();
    return good ? OBMOk : OBMNotWritten;
}

// model.json: the views, and the names of the other files.
bool OBM3dPackage::State::writeIndex() {
    std::vector<std::string> names = {materialsName};
    if (modelTrees.isOpen()) {
        names.emplace_back(modelTreeName);
    }
    if (properties.isOpen()) {
        names.emplace_back(propertiesName);
    }
    names.insert(names.end(), scenes.begin(), scenes.end());
    std::string text;
    gltf::JsonText json(text);
    json.beginObject().key("views").beginArray().string(planView).string(spatialView).endArray();
    json.newLine().key("files").beginArray();
    files = {file(indexName).string()};
    for (const std::string& name : names) {
        json.string(name);
        files.push_back((folder / name).string());
    }
    json.endArray().endObject();
    obm::WorkingFile out;
    out.open(file(indexName));
    out.write(text + "\n");
    return out.close();
}

OBM3dPackage::OBM3dPackage() : state_(std::make_unique<State>()) {}
OBM3dPackage::~OBM3dPackage() = default;

OBM3dPackage* OBM3dPackage::create(bool) {
    return new OBM3dPackage;
}

void OBM3dPackage::destroy() {
    delete this;
}

int OBM3dPackage::open(obm::WideView folder, OBMXOPENMODE mode) {
    if (mode != OBMXCREATE) {
        return state_->note(OBMBadMode);
    }
    std::error_code error;
    state_->folder = tolmar::resolvePath(tolmar::fromWide(folder));
    if (!tolmar::dryRun() && !fs::is_directory(state_->folder, error)) {
        return state_->note(OBMNoFolder);
    }
    state_->meshes.open(state_->folder);
    state_->isOpen = true;
    return OBMOk;
}

void OBM3dPackage::setPlanViewName(obm::WideView name) {
    state_->planView = tolmar::wideToUtf8(name);
}

void OBM3dPackage::setSpatialViewName(obm::WideView name) {
    state_->spatialView = tolmar::wideToUtf8(name);
}

// A mesh that is refused leaves the package as it was.
int OBM3dPackage::addMesh(const OBMTriangleMesh* mesh, bool, bool welds, float) {
    if (!state_->isOpen) {
        return state_->note(OBMNotOpen);
    }
    if (mesh == nullptr || welds) {
        return OBMNotSupported;
    }
    const int status = state_->meshes.add(*mesh);
    return status == OBMNotWritten ? state_->note(status) : status;
}

int OBM3dPackage::addMaterial(OBMMaterial* material) {
    const auto number = static_cast<std::uint32_t>(state_->materials.size());
    if (material->id().empty() || !state_->materialNumbers.try_emplace(material->id(), number).second) {
        material->destroy();
        return state_->note(OBMNoId);
    }
    state_->materials.push_back(material);
    return OBMOk;
}

int OBM3dPackage::addModelTree(obm::WideView name, OBMModelTreeNode* root) {
    const std::unique_ptr<OBMModelTreeNode, FreeTree> owned(root);
    if (!state_->isOpen) {
        return state_->note(OBMNotOpen);
    }
    if (!state_->modelTrees.isOpen()) {
        state_->modelTrees.open(state_->file(modelTreeName));
    }
    state_->modelTrees.add(name, *root);
    return OBMOk;
}

int OBM3dPackage::setInstanceTree(OBMInstanceTreeNode* root) {
    const std::unique_ptr<OBMInstanceTreeNode, FreeTree> earlier(state_->instances);
    state_->instances = root;
    return OBMOk;
}

int OBM3dPackage::addObjectProperty(const OBMObjectProperty* property) {
    if (!state_->isOpen) {
        return state_->note(OBMNotOpen);
    }
    if (!state_->properties.isOpen()) {
        state_->properties.open(state_->file(propertiesName));
    }
    state_->properties.add(*property);
    return OBMOk;
}

int OBM3dPackage::write() {
    if (!state_->isOpen) {
        return state_->note(OBMNotOpen);
    }
    if (state_->failure == OBMOk) {
        state_->note(state_->writeScenes());
    }
    if (state_->failure == OBMOk) {
        state_->note(state_->writeDocuments());
    }
    return state_->failure;
}

int OBM3dPackage::close() {
    const bool wasOpen = state_->isOpen;
    state_->isOpen = false;
    return wasOpen ? state_->failure : OBMNotOpen;
}

void OBM3dPackage::setSceneLimit(std::uint64_t bytes) {
    state_->meshes.setLimit(bytes);
}

const std::vector<std::string>& OBM3dPackage::files() const {
    return state_->files;
}
