// What stands behind the handles. Texts are kept as the inside of JSON strings, UTF-8.
#pragma once

#include "nwcreate/store/handle_table.h"
#include "nwcreate/store/scene.h"
#include "nwcreate/store/section.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace nwcreate {

struct SceneRecord {
    std::unique_ptr<SceneStore> store;
    void clear() { store.reset(); }
};

// Alive while a caller has a reference, and longer while it stands below a node or scene and is not settled.
struct NodeRecord {
    SceneStore* store = nullptr;  // null once the scene is gone
    std::string name;
    std::vector<NodeLink> children;
    std::vector<std::uint32_t> attributes;  // slots, each held once
    std::uint32_t parent = noSlot;
    std::uint32_t place = 0;  // among the parent's children or the scene's roots
    std::uint32_t openChildren = 0;
    std::uint32_t openNumber = 0;  // in the tail of the scene that is being written
    std::uint32_t stream = noSlot;
    bool isRoot = false;
    bool isGeometry = false;
    bool isLayer = false;
    NodeShape shape;

    bool isAttached() const { return isRoot || parent != noSlot; }
    void clear();
};

struct AttributeRecord {
    bool isMaterial = false;
    Material material;
    std::uint32_t classNumber = 0;  // in AttributeClasses
    std::string properties;         // JSON objects, separated by commas
    // The material's number in a scene, until either changes.
    const SceneStore* numberedIn = nullptr;
    std::uint32_t number = noNumber;
    void clear();
    std::uint32_t numberIn(SceneStore& store);
};

struct DataRecord {
    std::string value;
    std::string internalName;
    void clear() {
        value.clear();
        internalName.clear();
    }
};

struct StreamRecord {
    std::uint32_t geometry = noSlot;
    bool isInSection = false;
    bool isInText = false;
    bool takesColor = false;
    Section section;
    std::vector<Matrix> transforms;
    Matrix transform = unitMatrix;  // all of them
    bool isMoved = false;           // transform is not the unit matrix
    TextStyle style;
    void clear();
};

// A single piece that was streamed, and where.
struct ShapeRecord {
    SceneStore* store = nullptr;  // null once the scene is gone
    Piece piece;
    Vec3 origin{};
    void clear() { *this = ShapeRecord(); }
};

struct StyleRecord {
    TextStyle style;
    void clear() { style = TextStyle(); }
};

struct ViewRecord {
    View view;
    void clear() { view = View(); }
};

struct GridLine {
    std::string name;
    std::vector<double> segments;  // pairs of points
};

struct GridLevel {
    std::string name;
    double height = 0.0;
};

struct GridSystem {
    std::string name;
    Vec3 origin{};
    Vec3 xAxis{};
    Vec3 yAxis{};
    std::vector<GridLine> lines;
    std::vector<GridLevel> levels;
};

struct GridLineRecord {
    GridLine line;
    void clear() { line = GridLine(); }
};
struct GridLevelRecord {
    GridLevel level;
    void clear() { level = GridLevel(); }
};
struct GridSystemRecord {
    GridSystem system;
    void clear() { system = GridSystem(); }
};

}  // namespace nwcreate
