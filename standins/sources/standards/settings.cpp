#include "sources/standards/settings.h"

#include <simdjson.h>

namespace plant::standards {

namespace {

namespace dom = simdjson::dom;

struct SizeMember {
    std::string_view name;
    double PipeSize::*place;
};
constexpr SizeMember sizeMembers[] = {
    {"dn", &PipeSize::dn},
    {"inch", &PipeSize::inch},
    {"outer", &PipeSize::outer},
    {"wall", &PipeSize::wall},
    {"flangeOuter", &PipeSize::flangeOuter},
    {"flangeThickness", &PipeSize::flangeThickness},
    {"boltCircle", &PipeSize::boltCircle},
    {"bolt", &PipeSize::bolt},
};

// Thrown with the place; caught in take.
struct Fault {
    std::string text;
};

[[noreturn]] void fail(std::string_view place, std::string_view expected) {
    throw Fault{std::string(place) + ": " + std::string(expected) + " expected"};
}

template <typename Value>
Value get(const dom::element& element, std::string_view place, std::string_view expected) {
    Value value;
    if (element.get(value) != simdjson::SUCCESS) {
        fail(place, expected);
    }
    return value;
}

PipeSize readSize(const dom::element& element, const std::string& place) {
    PipeSize size;
    for (const auto& [key, value] : get<dom::object>(element, place, "an object")) {
        const std::string inner = place + "." + std::string(key);
        const auto row = std::find_if(std::begin(sizeMembers), std::end(sizeMembers),
                                      [&name = key](const SizeMember& one) { return one.name == name; });
        if (row != std::end(sizeMembers)) {
            size.*row->place = get<double>(value, inner, "a number");
        } else if (key == "bolts") {
            size.bolts = static_cast<int>(get<std::int64_t>(value, inner, "a whole number"));
        } else {
            fail(inner,
                 "another member (dn, inch, outer, wall, flangeOuter, flangeThickness, boltCircle, bolts, bolt)");
        }
    }
    if (size.dn <= 0 || size.outer <= 0) {
        fail(place, "\"dn\" and \"outer\" above 0");
    }
    return size;
}

InsulationType readInsulation(const dom::element& element, const std::string& place) {
    InsulationType type;
    for (const auto& [key, value] : get<dom::object>(element, place, "an object")) {
        const std::string inner = place + "." + std::string(key);
        if (key == "thickness") {
            type.thickness = get<double>(value, inner, "a number");
        } else if (key == "material") {
            type.material = get<std::string_view>(value, inner, "a text");
        } else if (key == "code") {
            type.code = get<std::string_view>(value, inner, "a text");
        } else {
            fail(inner, "another member (thickness, material, code)");
        }
    }
    return type;
}

// Rows of a file count by their order: the first one goes to the front last.
void takeTypes(const dom::element& element, PartTypes& types) {
    std::vector<std::string_view> rows;
    for (const dom::element& row : get<dom::array>(element, "types", "an array of texts")) {
        rows.push_back(get<std::string_view>(row, "types[" + std::to_string(rows.size()) + "]", "a text"));
    }
    for (std::size_t i = rows.size(); i-- > 0;) {
        std::string error;
        if (!types.putFirst(rows[i], error)) {
            throw Fault{"types[" + std::to_string(i) + "]: " + error};
        }
    }
}

void takeMember(std::string_view key, const dom::element& value, Settings& settings) {
    if (key == "sizes") {
        std::size_t index = 0;
        for (const dom::element& row : get<dom::array>(value, "sizes", "an array")) {
            settings.sizes.put(readSize(row, "sizes[" + std::to_string(index++) + "]"));
        }
    } else if (key == "types") {
        takeTypes(value, settings.types);
    } else if (key == "insulation") {
        for (const auto& [name, type] : get<dom::object>(value, "insulation", "an object")) {
            settings.insulation[std::string(name)] = readInsulation(type, "insulation." + std::string(name));
        }
    } else {
        fail(key, "another member (sizes, types, insulation)");
    }
}

}  // namespace

bool Settings::take(std::string_view json, std::string& error) {
    dom::parser parser;
    dom::element root;
    const simdjson::padded_string padded(json);
    if (const auto fault = parser.parse(padded).get(root); fault != simdjson::SUCCESS) {
        error = std::string("no JSON: ") + simdjson::error_message(fault);
        return false;
    }
    try {
        for (const auto& [key, value] : get<dom::object>(root, "the file", "an object")) {
            takeMember(key, value, *this);
        }
    } catch (const Fault& fault) {
        error = fault.text;
        return false;
    }
    return true;
}

}  // namespace plant::standards
