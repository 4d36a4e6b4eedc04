#include "tessaro/check/rvm/rules.h"

#include "readers/utf8.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace check {

namespace {

using namespace readers::rvm;
using readers::Findings;

template <typename Item>
void checkSiblings(const std::vector<Item>& items, const std::vector<std::uint32_t>& children, Findings& findings) {
    std::unordered_set<std::string_view> names;
    for (const std::uint32_t child : children) {
        if (!names.insert(items[child].name).second) {
            findings.push_back({"strict form", "two siblings are named \"" + items[child].name + "\""});
        }
    }
}

void checkAttribute(const std::string& key, const std::string& value, std::size_t line, Findings& findings) {
    const bool good = !value.empty() && value.find("&end&") == std::string::npos && !key.starts_with("END") &&
                      !key.starts_with("NEW");
    if (!good) {
        findings.push_back(
            {"line " + std::to_string(line), "attribute \"" + key + "\" is empty or looks like a keyword"});
    }
}

// A torus is a point where its tube has no thickness and its sweep no angle.
bool isEmpty(const Primitive& primitive) {
    const auto& p = primitive.parameters;
    const auto isZero = [](float value) { return value == 0; };
    return primitive.kind == 4 ? p[1] == 0 && (p[0] == 0 || p[2] == 0) : std::all_of(p.begin(), p.end(), isZero);
}

// A box that is turned over, or none around something that has a size.
bool hasBadBox(const Primitive& primitive) {
    if (primitive.kind == 11) {
        return primitive.box != primitive.extent;
    }
    bool anySize = isEmpty(primitive);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (primitive.box[axis] > primitive.box[axis + 3]) {
            return true;
        }
        anySize = anySize || primitive.box[axis] < primitive.box[axis + 3];
    }
    return !anySize;
}

// The sizes of a box, a sphere (which carries its diameter) and a cylinder are those of their bounding boxes.
bool hasOtherBox(const Primitive& primitive) {
    const auto& p = primitive.parameters;
    std::array<float, 3> wanted{};
    switch (primitive.kind) {
    case 2:
        wanted = {p[0], p[1], p[2]};
        break;
    case 8:
        wanted = {2 * p[0], 2 * p[0], p[1]};
        break;
    case 9:
        wanted = {p[0], p[0], p[0]};
        break;
    default:
        return false;
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const float size = std::fabs(wanted[axis]);
        if (std::fabs(primitive.box[axis + 3] - primitive.box[axis] - size) > 1e-5F * size) {
            return true;
        }
    }
    return false;
}

std::string placeOf(const Primitive& primitive) {
    return "strict form, byte " + std::to_string(primitive.offset);
}

}  // namespace

void rvmStrictForm(const RvmContent& rvm, const AttributeContent& text, Findings& findings) {
    if (!text.elements.empty() && !text.isRootClosed()) {
        findings.push_back({"strict form", "the root has no END"});
    }
    if (!readers::isUtf8(rvm.project) || !readers::isUtf8(rvm.database)) {
        findings.push_back({"strict form", "the texts of MODL are not UTF-8"});
    }
    for (const Group& group : rvm.groups) {
        checkSiblings(rvm.groups, group.children, findings);
    }
    for (const Primitive& primitive : rvm.primitives) {
        if (hasBadBox(primitive) || hasOtherBox(primitive)) {
            findings.push_back({placeOf(primitive), "a primitive of kind " + std::to_string(primitive.kind) +
                                                        " whose box is not that of its sizes"});
        }
    }
    for (const Element& element : text.elements) {
        checkSiblings(text.elements, element.children, findings);
        for (const auto& [key, value] : element.attributes) {
            checkAttribute(key, value, element.line, findings);
        }
    }
}

}  // namespace check
