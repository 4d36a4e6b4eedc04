#include "nwcreate/writing/node_json.h"

#include "gltf/json_text.h"
#include "nwcreate/numbers/text_cursor.h"

#include <algorithm>

namespace nwcreate {

namespace {

std::uint32_t materialOf(const Library& lib, const NodeRecord& node) {
    for (std::size_t i = node.attributes.size(); i-- > 0;) {
        AttributeRecord& attribute = lib.attributes.at(node.attributes[i]).record;
        if (attribute.isMaterial) {
            return attribute.numberIn(*node.store);
        }
    }
    return noNumber;
}

// The members of a node in turn, each with a comma before it but the first.
class NodeWriter {
public:
    NodeWriter(Library& lib, NodeRecord& node, char* to) : lib_(lib), node_(node), json_(to) {}

    char* write() {
        json_.put("{");
        if (!node_.name.empty()) {
            json_.put(R"("name":")").put(node_.name).put("\"");
            hasMember_ = true;
        }
        writeChildren();
        writeShape();
        writeExtras();
        return json_.put("}").at();
    }

private:
    TextCursor& member() {
        if (hasMember_) {
            json_.put(",");
        }
        hasMember_ = true;
        return json_;
    }

    void writeChildren() {
        if (node_.children.empty()) {
            return;
        }
        member().put(R"("children":)");
        bool isFirst = true;
        for (const NodeLink& child : node_.children) {
            json_.put(isFirst ? "[" : ",");
            json_.count(child.isSettled ? child.number : lib_.nodes.at(child.number).record.openNumber);
            isFirst = false;
        }
        json_.put("]");
    }

    void writeShape() {
        if (node_.shape.pieces.empty()) {
            return;
        }
        member().put(R"("mesh":)").count(node_.store->meshNumber(node_.shape.pieces, materialOf(lib_, node_)));
        if (node_.shape.origin != Vec3{}) {
            json_.put(R"(,"translation":)").metres(node_.shape.origin);
        }
    }

    // {"class":{"user":"...","internal":"..."},"properties":[...]}
    void writeAttribute(const AttributeRecord& attribute) {
        json_.put(R"({"class":)").put(lib_.classes.json(attribute.classNumber));
        json_.put(R"(,"properties":[)").put(attribute.properties).put("]}");
    }

    bool isProperty(std::uint32_t slot) const { return !lib_.attributes.at(slot).record.isMaterial; }

    void writeProperties() {
        member().put(R"("attributes":[)");
        hasMember_ = false;
        for (const std::uint32_t slot : node_.attributes) {
            if (isProperty(slot)) {
                member();
                writeAttribute(lib_.attributes.at(slot).record);
            }
        }
        json_.put("]");
        hasMember_ = true;
    }

    void writeExtras() {
        const bool hasProperties = std::any_of(node_.attributes.begin(), node_.attributes.end(),
                                               [this](std::uint32_t slot) { return isProperty(slot); });
        if (!node_.isLayer && !hasProperties && node_.shape.texts.empty()) {
            return;
        }
        member().put(R"("extras":{)");
        hasMember_ = false;
        if (node_.isLayer) {
            member().put(R"("layer":true)");
        }
        if (hasProperties) {
            writeProperties();
        }
        if (!node_.shape.texts.empty()) {
            member().put(R"("texts":[)").put(node_.shape.texts).put("]");
        }
        json_.put("}");
    }

    Library& lib_;
    NodeRecord& node_;
    TextCursor json_;
    bool hasMember_ = false;
};

// A point in scene units, as an array of metres that are rounded to nanometres.
std::string metresOf(const Vec3& point) {
    char text[3 * numberRoom + 4];
    return {text, TextCursor(text).metres(point).at()};
}

std::uint32_t addGridLine(SceneStore& store, const GridLine& line, std::string& text) {
    NodeShape shape;
    addSegments(store, line.segments, shape);
    text.clear();
    gltf::JsonText json(text);
    json.beginObject().key("name").escaped(line.name);
    if (!shape.pieces.empty()) {
        json.key("mesh")
            .number(store.meshNumber(shape.pieces, noNumber))
            .key("translation")
            .raw(metresOf(shape.origin));
    }
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

std::size_t roomOfNode(const Library& lib, const NodeRecord& node) {
    constexpr std::size_t frame = 512;
    constexpr std::size_t childRoom = 11;
    constexpr std::size_t attributeFrame = 64;
    std::size_t room = frame + node.name.size() + childRoom * node.children.size() + node.shape.texts.size();
    for (const std::uint32_t slot : node.attributes) {
        const AttributeRecord& attribute = lib.attributes.at(slot).record;
        room += attributeFrame + lib.classes.json(attribute.classNumber).size() + attribute.properties.size();
    }
    return room;
}

char* writeNode(Library& lib, NodeRecord& node, char* to) {
    return NodeWriter(lib, node, to).write();
}

std::uint32_t addGridNodes(SceneStore& store, const GridSystem& system) {
    std::string text;
    std::vector<std::uint32_t> lines;
    for (const GridLine& line : system.lines) {
        lines.push_back(addGridLine(store, line, text));
    }
    text.clear();
    gltf::JsonText json(text);
    json.beginObject().key("name").escaped(system.name);
    if (!lines.empty()) {
        json.key("children").beginArray();
        for (const std::uint32_t line : lines) {
            json.number(line);
        }
        json.endArray();
    }
    json.key("extras").beginObject().key("grid").beginObject().key("origin").decimals(system.origin);
    json.key("xAxis").decimals(system.xAxis).key("yAxis").decimals(system.yAxis).key("levels").beginArray();
    for (const GridLevel& level : system.levels) {
        json.beginObject().key("name").escaped(level.name).key("height").decimal(level.height).endObject();
    }
    json.endArray().endObject().endObject().endObject();
    return store.addNode(text);
}

void writeViewNode(const View& view, std::string_view name, std::uint32_t camera, std::string& out) {
    gltf::JsonText json(out);
    json.beginObject().key("name").escaped(name).key("camera").number(camera);
    json.key("translation").raw(metresOf(view.position));
    json.key("rotation").decimals(quaternionOf(axesOf(view))).key("extras").beginObject();
    json.key("worldUp").decimals(view.worldUp).key("position").decimals(view.position);
    json.key("target").decimals(view.target).endObject().endObject();
}

}  // namespace nwcreate
