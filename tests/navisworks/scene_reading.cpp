#include "scene_reading.h"

#include "tessaro/check/scene/rules.h"
#include "tolmar/code_page.h"

#include <cjson/cJSON.h>
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

using readers::scene::none;

struct FreeJson {
    void operator()(cJSON* json) const { cJSON_Delete(json); }
};
using Json = std::unique_ptr<cJSON, FreeJson>;

Json parse(const std::string& text) {
    return Json(cJSON_Parse(text.c_str()));
}

std::string textOf(const cJSON* object, const char* key) {
    const char* text = cJSON_GetStringValue(cJSON_GetObjectItemCaseSensitive(object, key));
    return text != nullptr ? text : "";
}

double numberOf(const cJSON* object, const char* key) {
    return cJSON_GetNumberValue(cJSON_GetObjectItemCaseSensitive(object, key));
}

std::string internalPart(const cJSON* property, const char* key) {
    const std::string text = textOf(property, key);
    return text.empty() ? text : "|" + text;
}

std::string propertiesText(const cJSON* attribute) {
    std::string text;
    const cJSON* property = nullptr;
    cJSON_ArrayForEach(property, cJSON_GetObjectItemCaseSensitive(attribute, "properties")) {
        text += text.empty() ? "" : ", ";
        text += textOf(property, "key") + internalPart(property, "internalKey") + "=" + textOf(property, "value") +
                internalPart(property, "internalValue");
    }
    return " {" + text + "}";
}

std::string attributesText(const cJSON* extras) {
    std::string text;
    const cJSON* attribute = nullptr;
    cJSON_ArrayForEach(attribute, cJSON_GetObjectItemCaseSensitive(extras, "attributes")) {
        text += propertiesText(attribute);
    }
    return text;
}

std::string levelsText(const cJSON* grid) {
    std::string text;
    const cJSON* level = nullptr;
    cJSON_ArrayForEach(level, cJSON_GetObjectItemCaseSensitive(grid, "levels")) {
        text += fmt::format(" [{} {}]", textOf(level, "name"), numberOf(level, "height"));
    }
    return text;
}

std::string textsText(const cJSON* extras, const std::string& indent) {
    std::string lines;
    const cJSON* text = nullptr;
    cJSON_ArrayForEach(text, cJSON_GetObjectItemCaseSensitive(extras, "texts")) {
        lines += fmt::format("{}text \"{}\" {} {}\n", indent, textOf(text, "text"), textOf(text, "font"),
                             numberOf(text, "height"));
    }
    return lines;
}

std::string pointText(const SceneReading::Point& point) {
    return fmt::format("({:.0f},{:.0f},{:.0f})", point[0] + 0.0, point[1] + 0.0, point[2] + 0.0);
}

}  // namespace

SceneReading::SceneReading(const std::filesystem::path& path) {
    readers::Findings findings;
    scene_ = readers::scene::readScene(path, findings);
    check::sceneNumbers(scene_, findings);
    for (const readers::Finding& finding : findings) {
        ADD_FAILURE() << finding.place << ": " << finding.text;
    }
}

std::string SceneReading::tree() const {
    std::string out;
    for (const std::uint64_t root : scene_.roots) {
        for (const std::uint64_t child : nodeAt(root).children) {
            if (nodeAt(child).camera == none) {
                tell(child, 0, out);
            }
        }
    }
    return tolmar::fromUtf8(out);
}

void SceneReading::tell(std::uint64_t index, int depth, std::string& out) const {
    const readers::scene::Node& node = nodeAt(index);
    const std::string indent(static_cast<std::size_t>(2 * depth), ' ');
    const Json extras = parse(node.extras);
    const cJSON* grid = cJSON_GetObjectItemCaseSensitive(extras.get(), "grid");
    if (grid != nullptr) {
        out += indent + "grid " + node.name + levelsText(grid) + "\n";
        for (const std::uint64_t line : node.children) {
            const std::vector<Point> ends = verticesOf(nodeAt(line));
            out += indent + "  " + nodeAt(line).name + " " + pointText(ends.at(0)) + "-" + pointText(ends.at(1)) + "\n";
        }
        return;
    }
    if (node.mesh != none) {
        for (const readers::scene::Primitive& primitive : scene_.meshes.at(node.mesh).primitives) {
            out += indent + shapeText(primitive) + "\n";
        }
        out += textsText(extras.get(), indent);
        return;
    }
    out += indent + node.name + (node.isLayer ? "*" : "") + attributesText(extras.get()) + "\n";
    for (const std::uint64_t child : node.children) {
        tell(child, depth + 1, out);
    }
}

std::string SceneReading::shapeText(const readers::scene::Primitive& primitive) const {
    static const char* const modes[] = {"points", "lines", "loop", "strip", "triangles"};
    const bool isIndexed = primitive.indices != none;
    const std::uint64_t count = scene_.accessors.at(isIndexed ? primitive.indices : primitive.positions).count;
    return fmt::format("{} {}{}", modes[primitive.mode], primitive.mode == 4 ? count / 3 : count,
                       materialText(primitive.material));
}

std::string SceneReading::materialText(std::uint64_t material) const {
    if (material == none) {
        return "";
    }
    const Json extras = parse(scene_.materials.at(material).extras);
    const cJSON* diffuse = cJSON_GetObjectItemCaseSensitive(extras.get(), "diffuse");
    std::string text = " #";
    const cJSON* part = nullptr;
    cJSON_ArrayForEach(part, diffuse) {
        text += fmt::format("{:02X}", std::lround(cJSON_GetNumberValue(part) * 255));
    }
    EXPECT_TRUE(cJSON_Compare(diffuse, cJSON_GetObjectItemCaseSensitive(extras.get(), "ambient"), 1))
        << "a material's two colours are one";
    const double clear = numberOf(extras.get(), "transparency");
    return clear > 0 ? text + fmt::format(" {:.0f}% clear", clear * 100) : text;
}

std::vector<SceneReading::Point> SceneReading::verticesOf(const readers::scene::Node& node) const {
    constexpr double millimetres = 1000;
    std::vector<Point> points;
    const readers::scene::Primitive& primitive = scene_.meshes.at(node.mesh).primitives.at(0);
    for (const auto& local : readers::scene::positionsOf(scene_, scene_.accessors.at(primitive.positions))) {
        Point point;
        for (std::size_t i = 0; i < 3; ++i) {
            point[i] = (node.translation[i] + static_cast<double>(local[i])) * millimetres;
        }
        points.push_back(point);
    }
    return points;
}

const readers::scene::Node* SceneReading::find(const std::string& name) const {
    for (const readers::scene::Node& node : scene_.nodes) {
        if (node.name == tolmar::toUtf8(name)) {
            return &node;
        }
    }
    ADD_FAILURE() << "no group " << name;
    return nullptr;
}

const readers::scene::Node* SceneReading::firstShape(const readers::scene::Node& node) const {
    for (const std::uint64_t child : node.children) {
        if (nodeAt(child).mesh != none) {
            return &nodeAt(child);
        }
    }
    return nullptr;
}

std::string SceneReading::below(const std::string& name) const {
    const readers::scene::Node* node = find(name);
    std::string out;
    if (node != nullptr) {
        for (const std::uint64_t child : node->children) {
            tell(child, 0, out);
        }
    }
    return tolmar::fromUtf8(out);
}

std::vector<SceneReading::Point> SceneReading::vertices(const std::string& name) const {
    const readers::scene::Node* node = find(name);
    const readers::scene::Node* shape = node != nullptr ? firstShape(*node) : nullptr;
    return shape != nullptr ? verticesOf(*shape) : std::vector<Point>();
}

std::vector<double> SceneReading::textTransform(const std::string& name) const {
    std::vector<double> numbers;
    const readers::scene::Node* node = find(name);
    const readers::scene::Node* shape = node != nullptr ? firstShape(*node) : nullptr;
    if (shape == nullptr) {
        return numbers;
    }
    const Json extras = parse(shape->extras);
    const cJSON* text = cJSON_GetArrayItem(cJSON_GetObjectItemCaseSensitive(extras.get(), "texts"), 0);
    const cJSON* number = nullptr;
    cJSON_ArrayForEach(number, cJSON_GetObjectItemCaseSensitive(text, "transform")) {
        numbers.push_back(cJSON_GetNumberValue(number));
    }
    return numbers;
}

std::vector<std::string> SceneReading::classNames() const {
    std::vector<std::string> names;
    for (const readers::scene::Node& node : scene_.nodes) {
        const Json extras = parse(node.extras);
        const cJSON* attribute = nullptr;
        cJSON_ArrayForEach(attribute, cJSON_GetObjectItemCaseSensitive(extras.get(), "attributes")) {
            const cJSON* name = cJSON_GetObjectItemCaseSensitive(attribute, "class");
            names.push_back(tolmar::fromUtf8(textOf(name, "user") + "|" + textOf(name, "internal")));
        }
    }
    return names;
}
