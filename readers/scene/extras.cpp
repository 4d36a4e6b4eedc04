#include "readers/scene/extras.h"

#include "readers/scene/json.h"

namespace readers::scene {

namespace {

namespace dom = simdjson::dom;
using json::forEach;
using json::numbers;

std::string text(const dom::element& value, const char* key) {
    return std::string(json::text(value, key));
}

void addAttributes(const dom::element& attribute, Object& object) {
    dom::element name;
    const bool isNamed = attribute["class"].get(name) == simdjson::SUCCESS;
    const std::string group = isNamed ? text(name, "user") : std::string();
    const std::string groupNote = isNamed ? text(name, "internal") : std::string();
    forEach(attribute, "properties", [&](const dom::element& property) {
        object.attributes.push_back({group, text(property, "key"), text(property, "value"), groupNote,
                                     text(property, "internalKey"), text(property, "internalValue")});
    });
}

void addGrid(const dom::element& grid, Object& object) {
    object.className = "grid";
    for (const char* key : {"origin", "xAxis", "yAxis"}) {
        dom::element found;
        if (grid[key].get(found) == simdjson::SUCCESS) {
            object.attributes.push_back({"grid", key, simdjson::minify(found), {}, {}, {}});
        }
    }
    forEach(grid, "levels", [&object](const dom::element& level) {
        dom::element height;
        object.attributes.push_back(
            {"level",
             text(level, "name"),
             level["height"].get(height) == simdjson::SUCCESS ? simdjson::minify(height) : std::string(),
             {},
             {},
             {}});
    });
}

}  // namespace

struct ExtrasReader::Parser {
    dom::parser json;

    bool read(const std::string& extras, dom::element& root) {
        return !extras.empty() && json.parse(extras).get(root) == simdjson::SUCCESS && root.is_object();
    }
};

ExtrasReader::ExtrasReader() : parser_(std::make_unique<Parser>()) {}
ExtrasReader::~ExtrasReader() = default;

void ExtrasReader::read(const std::string& extras, Object& object) {
    object.className.clear();
    object.attributes.clear();
    dom::element root;
    if (!parser_->read(extras, root)) {
        return;
    }
    dom::element grid;
    if (root["grid"].get(grid) == simdjson::SUCCESS) {
        addGrid(grid, object);
    }
    forEach(root, "attributes", [&object](const dom::element& attribute) { addAttributes(attribute, object); });
}

void ExtrasReader::readTexts(const std::string& extras, Object& object) {
    dom::element root;
    if (!parser_->read(extras, root)) {
        return;
    }
    forEach(root, "texts", [&object](const dom::element& item) {
        double height = 0;
        if (item["height"].get_double().get(height) == simdjson::SUCCESS) {
            object.texts.push_back({text(item, "text"), text(item, "font"), height, numbers(item, "transform")});
        }
    });
}

Look ExtrasReader::lookOf(const Material& material) {
    Look look;
    look.transparency = material.isBlended ? 1 - material.color[3] : 0;
    dom::element root;
    if (!parser_->read(material.extras, root)) {
        return look;
    }
    if (const std::vector<double> diffuse = numbers(root, "diffuse"); diffuse.size() == 3) {
        look.color = {diffuse[0], diffuse[1], diffuse[2]};
    }
    double transparency = 0;
    if (root["transparency"].get_double().get(transparency) == simdjson::SUCCESS) {
        look.transparency = transparency;
    }
    return look;
}

}  // namespace readers::scene
