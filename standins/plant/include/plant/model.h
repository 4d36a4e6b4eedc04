// The plant model in memory: reading the files of a plant, and the model that the platform's operations answer from.
//
// Files go through the sources of their formats (sources/source.h) and one builder (plant/model_builder.h) into a
// Model, which is made the current one; from then on the operations of platform/*.h answer from it, and exports, the
// tree and what is printed of a model know nothing of files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class HxDbTreeNode;

namespace plant {

class Model;
struct ModelDeleter {
    void operator()(Model* model) const;
};
using ModelPtr = std::unique_ptr<Model, ModelDeleter>;

// What a source met in a file and could not take over, though the rest of it is good. UTF-8.
struct LoadRemark {
    enum class Grade : std::uint8_t { Note, Loss, Fault };
    Grade grade = Grade::Note;
    std::string code;   // short and stable, the same for every remark of its kind
    std::string place;  // file and place in it
    std::string text;
};

// "loss rvm.zero-size: review.rvm: offset 1204 (0x4B4): a primitive without extent; left out"
std::string textOf(const LoadRemark& remark);

// A model or the reason why there is none: UTF-8, beginning with the file's name and the place, such as
// "plant.json: objects[17].points[2].flow: 1, 2 or 0 expected, \"x\" found".
struct LoadResult {
    ModelPtr model;
    std::string error;
    std::vector<LoadRemark> remarks;  // in the order of the files; a model file is taken whole or not at all
    explicit operator bool() const { return model != nullptr; }
};

// A refused file leaves nothing behind. The whole model lives in the result; nothing of the file is needed later.
LoadResult loadModel(const std::filesystem::path& file);
// One plant of several files, told one behind the other: a file may refer to what stands in any other of them. Ids and
// names of databases are unique in all together; of what two files say of the project, the first says holds.
// At least one file. A folder stands for the files in it that a source recognises, by name.
LoadResult loadPlant(std::span<const std::filesystem::path> files);
// The same from text; `name` stands for the file in messages.
LoadResult loadModelText(std::string_view json, std::string_view name = "model");

// The files of a plant as one model file, which is written as they are read. Nothing is left at `target` after an
// error.
struct ConvertResult {
    std::string error;       // empty when the model file is whole
    bool isRefused = false;  // a file was refused; else the target could not be written
    std::vector<LoadRemark> remarks;
};
ConvertResult convertPlant(std::span<const std::filesystem::path> files, const std::filesystem::path& target);

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
