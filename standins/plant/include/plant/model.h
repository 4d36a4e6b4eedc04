// The plant model in memory: reading a model file, and the model that the platform's operations answer from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

class HxDbTreeNode;

namespace plant {

class Model;
struct ModelDeleter {
    void operator()(Model* model) const;
};
using ModelPtr = std::unique_ptr<Model, ModelDeleter>;

// A model or the reason why there is none: UTF-8, beginning with the file's name and the place, such as
// "plant.json: objects[17].points[2].flow: 1, 2 or 0 expected, \"x\" found".
struct LoadResult {
    ModelPtr model;
    std::string error;
    explicit operator bool() const { return model != nullptr; }
};

// A refused file leaves nothing behind. The whole model lives in the result; nothing of the file is needed later.
LoadResult loadModel(const std::filesystem::path& file);
// The same from text; `name` stands for the file in messages.
LoadResult loadModelText(std::string_view json, std::string_view name = "model");

// The model that all platform operations answer from; not owned, null at the start. The caller keeps it alive while
// anything uses the platform.
void setCurrentModel(Model* model);
Model* currentModel();

// Shows a form with the trees of all databases, labelled by the names of their nodes; the one checked item becomes the
// current manager in the place of what the model says. False when the form is cancelled, or with the reason in UTF-8
// when there is not exactly one.
bool chooseCurrentManager(Model& model, std::string& error);

// Objects of all classes that stand in the file.
std::size_t objectCount(const Model& model);

// For tests of what a running platform could do to a model: a changed attribute (new records, old ones stay valid), an
// object that no longer opens, a son or brother link that leads elsewhere. Nothing happens for an unknown object.
void setAttribute(Model& model, std::int64_t object, std::string_view key, std::string_view value);
void makeUnavailable(Model& model, std::int64_t object);
void relinkSon(Model& model, HxDbTreeNode& node, HxDbTreeNode* son);
void relinkBrother(Model& model, HxDbTreeNode& node, HxDbTreeNode* brother);

// What is in a model, in UTF-8, for `tessaro model info` and `tessaro model tree`.
struct ModelInfoOptions {
    bool json = false;
};
std::string describeModel(const Model& model, const ModelInfoOptions& options = {});
std::string printTree(const Model& model, int maxDepth = -1);

}  // namespace plant
