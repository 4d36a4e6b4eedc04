#include "max_files.h"

#include <rapidxml/rapidxml.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <string_view>

namespace maxcheck {

namespace {

using Node = rapidxml::xml_node<char>;
using Findings = std::vector<std::string>;

std::string_view valueOf(const Node& node, const char* name) {
    const auto* attribute = node.first_attribute(name);
    return attribute != nullptr ? std::string_view(attribute->value(), attribute->value_size()) : std::string_view();
}

std::string_view nameOf(const Node& node) {
    return {node.name(), node.name_size()};
}

// A number that is the whole text; false otherwise.
template <typename Number>
bool readNumber(std::string_view text, Number& number) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return !text.empty() && result.ec == std::errc() && result.ptr == text.data() + text.size();
}

bool isFinite(std::string_view text) {
    double number = 0;
    return readNumber(text, number) && std::isfinite(number);
}

constexpr std::size_t mostFindings = 100;

// A tree has at most 200 levels, and three more come below an object.
constexpr int deepestTree = 210;

// How deep elements stand in each other. The parser calls itself for each level, so this is known before it runs.
int deepestNesting(std::string_view text) {
    int depth = 0;
    int deepest = 0;
    for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at)) {
        const char kind = at + 1 < text.size() ? text[at + 1] : '>';
        char quote = '\0';
        for (++at; at < text.size() && (quote != '\0' || text[at] != '>'); ++at) {
            const bool isQuote = text[at] == '"' || text[at] == '\'';
            quote = quote == text[at] ? '\0' : quote == '\0' && isQuote ? text[at] : quote;
        }
        const bool isOpened = kind != '/' && kind != '?' && kind != '!' && text[at - 1] != '/';
        depth += kind == '/' ? -1 : isOpened ? 1 : 0;
        deepest = std::max(deepest, depth);
    }
    return deepest;
}

// A parsed file, which knows the place of each element.
class Document {
public:
    Document(const std::string& bytes, Findings& findings) : text_(bytes), findings_(findings) {
        constexpr std::string_view start = "<?xml version='1.0' encoding='utf-8' ?>";
        if (!std::string_view(bytes).starts_with(start)) {
            note("line 1: does not begin with the processing instruction of such a file");
        }
        if (bytes.find('\0') != std::string::npos || deepestNesting(bytes) > deepestTree) {
            note("it holds a zero byte, or elements nested deeper than any tree");
        } else if (parse() && (root_ == nullptr || root_->next_sibling() != nullptr)) {
            note("there is not one root element");
        }
    }

    const Node* root() const { return root_; }
    void add(const Node& node, const std::string& text) { add(node.name(), text); }

private:
    bool parse() {
        try {
            document_.parse<rapidxml::parse_no_data_nodes | rapidxml::parse_no_string_terminators |
                            rapidxml::parse_validate_closing_tags>(text_.data());
            root_ = document_.first_node();
            return true;
        } catch (const rapidxml::parse_error& error) {
            add(error.where<char>(), error.what());
            return false;
        }
    }

    void note(const char* text) { findings_.emplace_back(text); }
    // Each place costs a look at the file up to it, and nobody reads thousands.
    void add(const char* where, const std::string& text) {
        if (findings_.size() >= mostFindings) {
            if (findings_.size() == mostFindings) {
                note("further faults are not listed");
            }
            return;
        }
        const auto line = std::count(static_cast<const char*>(text_.data()), where, '\n') + 1;
        findings_.push_back("line " + std::to_string(line) + ": " + text);
    }

    std::string text_;
    Findings& findings_;
    rapidxml::xml_document<char> document_;
    const Node* root_ = nullptr;
};

// Calls `visit` with every element named "object", parents first.
template <typename Visit>
void visitObjects(const Node* root, const Visit& visit) {
    std::vector<const Node*> waiting{root};
    while (!waiting.empty()) {
        const Node* node = waiting.back();
        waiting.pop_back();
        visit(*node);
        const std::size_t behind = waiting.size();
        for (const Node* child = node->first_node(); child != nullptr; child = child->next_sibling()) {
            if (nameOf(*child) == "object") {
                waiting.push_back(child);
            }
        }
        std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(behind), waiting.end());
    }
}

// Ids are whole numbers that rise from element to element.
void checkIds(Document& document) {
    std::int64_t last = 0;
    visitObjects(document.root(), [&](const Node& object) {
        std::int64_t id = 0;
        if (!readNumber(valueOf(object, "id"), id) || id <= last) {
            document.add(object, "its id is no number above those before it");
        }
        last = std::max(last, id);
        if (object.first_attribute("Name") == nullptr) {
            document.add(object, "it has no Name");
        }
    });
}

class GeometryCheck {
public:
    explicit GeometryCheck(Document& document) : document_(document) {}

    void group(const Node& node) {
        const bool isMesh = nameOf(node) == "meshGroup";
        if (!isMesh && nameOf(node) != "splineGroup") {
            document_.add(node, "no such group: " + std::string(nameOf(node)));
            return;
        }
        std::size_t points = 0;
        std::size_t faces = 0;
        std::size_t part = 1;
        if (!readNumber(valueOf(node, "pointNum"), points) ||
            (isMesh ? !readNumber(valueOf(node, "faceNum"), faces)
                    : !readNumber(valueOf(node, "partNum"), part) || part == 0)) {
            document_.add(node, "its counts are no numbers");
            return;
        }
        colors(node);
        child_ = node.first_node();
        if (checkPoints(points, isMesh ? 0 : part) && checkFaces(faces, points) && child_ != nullptr) {
            document_.add(*child_, "more than the group's counts say");
        }
    }

private:
    void colors(const Node& node) {
        for (const char* name : {"colorR", "colorG", "colorB"}) {
            int level = -1;
            if (!readNumber(valueOf(node, name), level) || level < 0 || level > 255) {
                document_.add(node, std::string(name) + " is no number from 0 to 255");
            }
        }
    }

    // The next child has the name and the index; nothing behind a gap can be judged.
    bool isNext(std::string_view name, std::size_t index) {
        std::size_t number = 0;
        if (child_ != nullptr && nameOf(*child_) == name && readNumber(valueOf(*child_, "index"), number) &&
            number == index) {
            return true;
        }
        const std::string text = std::string(name) + " " + std::to_string(index) + " is missing";
        child_ != nullptr ? document_.add(*child_, text) : document_.add(*document_.root(), text + " at a group's end");
        return false;
    }

    // `part` 0: the points have no type.
    bool checkPoints(std::size_t count, std::size_t part) {
        for (std::size_t i = 0; i < count; ++i, child_ = child_->next_sibling()) {
            if (!isNext("point", i)) {
                return false;
            }
            if (!isFinite(valueOf(*child_, "pointX")) || !isFinite(valueOf(*child_, "pointY")) ||
                !isFinite(valueOf(*child_, "pointZ"))) {
                document_.add(*child_, "a coordinate is no number");
            }
            if (part != 0 && valueOf(*child_, "type") != (i % part == 0 ? "knot" : "interp")) {
                document_.add(*child_, "its type does not follow from partNum");
            }
        }
        return true;
    }

    bool checkFaces(std::size_t count, std::size_t points) {
        for (std::size_t i = 0; i < count; ++i, child_ = child_->next_sibling()) {
            if (!isNext("face", i)) {
                return false;
            }
            for (const char* name : {"pointX", "pointY", "pointZ"}) {
                std::size_t corner = 0;
                if (!readNumber(valueOf(*child_, name), corner) || corner >= points) {
                    document_.add(*child_, std::string(name) + " is the number of no point");
                }
            }
        }
        return true;
    }

    Document& document_;
    const Node* child_ = nullptr;  // the next one of the group in hand
};

bool isRow(const Node* row, std::string_view key) {
    return row != nullptr && nameOf(*row) == "key_value" && valueOf(*row, "key") == key;
}

void checkPropertyGroup(Document& document, const Node& object) {
    const Node* group = object.first_node();
    if (group == nullptr || group->next_sibling() != nullptr || nameOf(*group) != "propertyGroup" ||
        valueOf(*group, "Name") != "ORNA") {
        document.add(object, "a plant object has one propertyGroup named ORNA");
        return;
    }
    const Node* first = group->first_node();
    if (!isRow(first, "site_no") || !isRow(first->next_sibling(), "unit_no")) {
        document.add(*group, "it does not begin with site_no and unit_no");
    }
}

bool isPlantObject(const Node& object) {
    return object.first_attribute("ProjectCode") != nullptr;
}

std::string_view parentId(const Node& object) {
    return valueOf(*object.parent(), "id");
}

}  // namespace

std::vector<std::string> checkGeometry(const std::string& bytes) {
    Findings findings;
    Document document(bytes, findings);
    if (document.root() == nullptr) {
        return findings;
    }
    checkIds(document);
    GeometryCheck check(document);
    visitObjects(document.root(), [&](const Node& object) {
        for (const Node* child = object.first_node(); child != nullptr; child = child->next_sibling()) {
            if (nameOf(*child) != "object") {
                check.group(*child);
            }
        }
    });
    return findings;
}

std::vector<std::string> checkProperties(const std::string& bytes) {
    Findings findings;
    Document document(bytes, findings);
    if (document.root() == nullptr) {
        return findings;
    }
    checkIds(document);
    visitObjects(document.root(), [&](const Node& object) {
        if (isPlantObject(object)) {
            checkPropertyGroup(document, object);
        }
    });
    return findings;
}

// An object without a shape stands in the property file alone.
std::vector<std::string> checkPair(const std::string& geometry, const std::string& properties) {
    Findings findings;
    Document shapes(geometry, findings);
    Document rows(properties, findings);
    if (shapes.root() == nullptr || rows.root() == nullptr) {
        return findings;
    }
    std::map<std::string_view, const Node*> known;
    visitObjects(rows.root(), [&](const Node& object) { known.emplace(valueOf(object, "id"), &object); });
    visitObjects(shapes.root(), [&](const Node& object) {
        const std::string id(valueOf(object, "id"));
        const auto found = known.find(id);
        if (found == known.end()) {
            shapes.add(object, "object " + id + " is not in the property file");
            return;
        }
        const Node& other = *found->second;
        const std::string name(valueOf(object, "Name"));
        if (parentId(object) != parentId(other)) {
            shapes.add(object, "object " + id + " stands under another in the property file");
        }
        if (isPlantObject(other) ? !valueOf(other, "Name").ends_with("-" + name + "_" + id)
                                 : valueOf(other, "Name") != name) {
            shapes.add(object, "object " + id + " has another name in the property file");
        }
    });
    return findings;
}

}  // namespace maxcheck
