#include "node_json.h"

#include "json_writer.h"

#include <algorithm>

namespace nwcreate {

namespace {

void writeChildren(const Library& lib, const NodeRecord& node, JsonWriter& json) {
    if (node.children.empty()) {
        return;
    }
    json.key("children").beginArray();
    for (const NodeLink& child : node.children) {
        json.count(child.isSettled ? child.number : lib.nodes.at(child.number).record.openNumber);
    }
    json.endArray();
}

std::uint32_t materialOf(const Library& lib, const NodeRecord& node) {
    for (std::size_t i = node.attributes.size(); i-- > 0;) {
        AttributeRecord& attribute = lib.attributes.at(node.attributes[i]).record;
        if (attribute.isMaterial) {
            return attribute.numberIn(*node.store);
        }
    }
    return noNumber;
}

void writeShape(SceneStore& store, const NodeShape& shape, std::uint32_t material, JsonWriter& json) {
    if (shape.pieces.empty()) {
        return;
    }
    json.key("mesh").count(store.meshNumber(shape.pieces, material));
    if (shape.origin != Vec3{}) {
        json.key("translation").metres(shape.origin);
    }
}

// {"class":{"user":"...","internal":"..."},"properties":[...]}
void writeAttribute(const AttributeRecord& attribute, JsonWriter& json) {
    json.beginObject().key("class").beginObject().key("user").escaped(attribute.userName);
    json.key("internal").escaped(attribute.internalName).endObject();
    json.key("properties").beginArray().ready(attribute.properties).endArray().endObject();
}

void writeExtras(const Library& lib, const NodeRecord& node, JsonWriter& json) {
    const auto isProperty = [&lib](std::uint32_t slot) { return !lib.attributes.at(slot).record.isMaterial; };
    const bool hasProperties = std::any_of(node.attributes.begin(), node.attributes.end(), isProperty);
    if (!node.isLayer && !hasProperties && node.shape.texts.empty()) {
        return;
    }
    json.key("extras").beginObject();
    if (node.isLayer) {
        json.key("layer").yes();
    }
    if (hasProperties) {
        json.key("attributes").beginArray();
        for (const std::uint32_t slot : node.attributes) {
            if (isProperty(slot)) {
                writeAttribute(lib.attributes.at(slot).record, json);
            }
        }
        json.endArray();
    }
    if (!node.shape.texts.empty()) {
        json.key("texts").beginArray().ready(node.shape.texts).endArray();
    }
    json.endObject();
}

std::uint32_t addGridLine(SceneStore& store, const GridLine& line, std::string& text) {
    NodeShape shape;
    addSegments(store, line.segments, shape);
    text.clear();
    JsonWriter json(text);
    json.beginObject().key("name").escaped(line.name);
    writeShape(store, shape, noNumber, json);
    json.endObject();
    return store.addNode(text);
}

struct Axes {
    Vec3 right;
    Vec3 up;
    Vec3 back;  // out of the picture
};

Vec3 unit(const Vec3& a) {
    return a * (1.0 / length(a));
}

Axes axesOf(const View& view) {
    const Vec3 back = view.position - view.target;
    Axes axes;
    axes.back = length(back) > 0.0 ? unit(back) : Vec3{0, -1, 0};
    Vec3 right = cross(view.worldUp, axes.back);
    if (!(length(right) > 1e-9 * length(view.worldUp))) {
        right = cross(std::fabs(axes.back[2]) < 0.9 ? Vec3{0, 0, 1} : Vec3{0, 1, 0}, axes.back);
    }
    axes.right = unit(right);
    axes.up = cross(axes.back, axes.right);
    return axes;
}

// Of the rotation with these images of X, Y and Z: x, y, z, w. The largest of the four is worked out first.
std::array<double, 4> quaternionOf(const Axes& axes) {
    const auto& [x, y, z] = axes;
    const std::array<double, 4> squares = {1.0 + x[0] - y[1] - z[2], 1.0 - x[0] + y[1] - z[2], 1.0 - x[0] - y[1] + z[2],
                                           1.0 + x[0] + y[1] + z[2]};
    const auto largest = static_cast<std::size_t>(std::max_element(squares.begin(), squares.end()) - squares.begin());
    const std::array<std::array<double, 4>, 4> products = {{
        {squares[0], y[0] + x[1], x[2] + z[0], y[2] - z[1]},
        {y[0] + x[1], squares[1], z[1] + y[2], z[0] - x[2]},
        {x[2] + z[0], z[1] + y[2], squares[2], x[1] - y[0]},
        {y[2] - z[1], z[0] - x[2], x[1] - y[0], squares[3]},
    }};
    std::array<double, 4> rotation = products[largest];
    const double size = std::hypot(std::hypot(rotation[0], rotation[1]), std::hypot(rotation[2], rotation[3]));
    for (double& part : rotation) {
        part /= size;
    }
    return rotation;
}

}  // namespace

void writeNode(Library& lib, NodeRecord& node, std::string& out) {
    JsonWriter json(out);
    json.beginObject();
    if (!node.name.empty()) {
        json.key("name").escaped(node.name);
    }
    writeChildren(lib, node, json);
    writeShape(*node.store, node.shape, materialOf(lib, node), json);
    writeExtras(lib, node, json);
    json.endObject();
}

std::uint32_t addGridNodes(SceneStore& store, const GridSystem& system) {
    std::string text;
    std::vector<std::uint32_t> lines;
    for (const GridLine& line : system.lines) {
        lines.push_back(addGridLine(store, line, text));
    }
    text.clear();
    JsonWriter json(text);
    json.beginObject().key("name").escaped(system.name);
    if (!lines.empty()) {
        json.key("children").beginArray();
        for (const std::uint32_t line : lines) {
            json.count(line);
        }
        json.endArray();
    }
    json.key("extras").beginObject().key("grid").beginObject().key("origin").numbers(system.origin);
    json.key("xAxis").numbers(system.xAxis).key("yAxis").numbers(system.yAxis).key("levels").beginArray();
    for (const GridLevel& level : system.levels) {
        json.beginObject().key("name").escaped(level.name).key("height").number(level.height).endObject();
    }
    json.endArray().endObject().endObject().endObject();
    return store.addNode(text);
}

void writeViewNode(const View& view, std::string_view name, std::uint32_t camera, std::string& out) {
    JsonWriter json(out);
    json.beginObject().key("name").plain(name).key("camera").count(camera);
    json.key("translation").metres(view.position);
    json.key("rotation").numbers(quaternionOf(axesOf(view))).key("extras").beginObject();
    json.key("worldUp").numbers(view.worldUp).key("position").numbers(view.position);
    json.key("target").numbers(view.target).endObject().endObject();
}

}  // namespace nwcreate
