// The JSON files of a 3D package. All texts are UTF-8, one row a line.
#pragma once

#include "gltf/json_text.h"
#include "obmsdk/obm_mesh.h"
#include "obmsdk/obm_tree.h"
#include "obmsdk/working_file.h"

namespace obm {

// A JSON file that is written row by row.
class RowFile {
public:
    // Opens the file with what stands ahead of the first row.
    void open(const std::filesystem::path& path, std::string_view start);
    bool isOpen() const { return isOpen_; }
    // Finish each row by endRow.
    gltf::JsonText& beginRow();
    void endRow();
    // Writes what stands behind the last row; false when the file is not whole.
    bool close(std::string_view end);

private:
    WorkingFile file_;
    std::string text_;  // on its way into the file
    gltf::JsonText json_{text_};
    bool isOpen_ = false;
};

// modeltree.json: each tree as its name and its nodes in tree order, each node
// [number of its parent or -1, database id, name, type].
class ModelTreeFile {
public:
    void open(const std::filesystem::path& path);
    void add(WideView name, const OBMModelTreeNode& root);
    bool close();
    bool isOpen() const { return rows_.isOpen(); }

private:
    RowFile rows_;
};

// properties.json: each property [database id of its object, category, name, value type, value].
class PropertyFile {
public:
    void open(const std::filesystem::path& path);
    void add(const OBMObjectProperty& property);
    bool close();
    bool isOpen() const { return rows_.isOpen(); }

private:
    RowFile rows_;
    // The category used last and its JSON text: all properties of a caller mostly have one.
    WideText category_;
    std::string categoryText_ = "\"\"";
};

// materials.json: each material with its colours as the caller set them.
bool writeMaterials(const std::filesystem::path& path, const std::vector<OBMMaterial*>& materials);

}  // namespace obm
