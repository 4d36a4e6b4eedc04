#include "plant/entities/json.h"

#include "tolmar/code_page.h"

namespace plant {

namespace {

constexpr std::size_t mostMembers = 64;

template <typename Value>
Value valueOf(simdjson::dom::element element) {
    Value value;
    if (element.get(value) != simdjson::SUCCESS) {
        throw Unreadable();
    }
    return value;
}

}  // namespace

double numberOf(simdjson::dom::element value) {
    return valueOf<double>(value);
}

std::int64_t wholeOf(simdjson::dom::element value, std::int64_t low, std::int64_t high) {
    const auto number = valueOf<std::int64_t>(value);
    if (number < low || number > high) {
        throw Unreadable();
    }
    return number;
}

HxGePoint3D pointOf(simdjson::dom::element value) {
    const simdjson::dom::array array = arrayOf(value);
    if (array.size() != 3) {
        throw Unreadable();
    }
    double numbers[3];
    std::size_t i = 0;
    for (const simdjson::dom::element element : array) {
        numbers[i++] = numberOf(element);
    }
    return {numbers[0], numbers[1], numbers[2]};
}

std::string textOf(simdjson::dom::element value) {
    const auto text = valueOf<std::string_view>(value);
    if (text.find('\0') != std::string_view::npos) {
        throw Unreadable();
    }
    return tolmar::fromUtf8(text);
}

simdjson::dom::array arrayOf(simdjson::dom::element value) {
    return valueOf<simdjson::dom::array>(value);
}

Members::Members(simdjson::dom::element value) {
    const auto object = valueOf<simdjson::dom::object>(value);
    if (object.size() > mostMembers) {
        throw Unreadable();
    }
    members_.reserve(object.size());
    for (const simdjson::dom::key_value_pair member : object) {
        members_.push_back({member.key, member.value, false});
    }
}

const simdjson::dom::element* Members::find(std::string_view name) {
    for (Member& member : members_) {
        if (!member.used && member.name == name) {
            member.used = true;
            return &member.value;
        }
    }
    return nullptr;
}

simdjson::dom::element Members::required(std::string_view name) {
    const simdjson::dom::element* value = find(name);
    if (value == nullptr) {
        throw Unreadable();
    }
    return *value;
}

double Members::number(std::string_view name, double otherwise) {
    const simdjson::dom::element* value = find(name);
    return value != nullptr ? numberOf(*value) : otherwise;
}

HxGeVector3D Members::vector(std::string_view name, const HxGeVector3D& otherwise) {
    const simdjson::dom::element* value = find(name);
    return value != nullptr ? pointOf(*value).asVector() : otherwise;
}

std::string Members::text(std::string_view name, std::string_view otherwise) {
    const simdjson::dom::element* value = find(name);
    return value != nullptr ? textOf(*value) : std::string(otherwise);
}

std::int64_t Members::whole(std::string_view name, std::int64_t low, std::int64_t high, std::int64_t otherwise) {
    const simdjson::dom::element* value = find(name);
    return value != nullptr ? wholeOf(*value, low, high) : otherwise;
}

void Members::finish() const {
    for (const Member& member : members_) {
        if (!member.used) {
            throw Unreadable();
        }
    }
}

}  // namespace plant
