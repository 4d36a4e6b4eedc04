#include "sources/rvm/recording_builder.h"

#include "tolmar/code_page.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using plant::ObjectId;

void RecordingBuilder::text(std::string_view value) {
    if (value.find('\0') != std::string_view::npos || !tolmar::isValidUtf8(value)) {
        broken("a text that is not UTF-8 or holds a zero");
    }
}

void RecordingBuilder::ids(std::span<const ObjectId> list) {
    referenced_.insert(referenced_.end(), list.begin(), list.end());
}

// A member that an object has once.
void RecordingBuilder::once(const std::string& member) {
    if (!isOpen_ || !told_.insert(member).second) {
        broken(member + " outside of an object or a second time");
    }
    list_.clear();
}

// Records of one kind stand together.
void RecordingBuilder::list(const std::string& kind) {
    if (list_ != kind) {
        once(kind);
        list_ = kind;
    }
}

void RecordingBuilder::project(const plant::ProjectFacts& facts) {
    if (!objects.empty()) {
        broken("a project behind objects");
    }
    projectName = facts.name.value_or("");
    text(projectName);
}

void RecordingBuilder::database(const plant::DatabaseFacts& facts) {
    if (!objects.empty()) {
        broken("a database behind objects");
    }
    databases.emplace_back(facts.name);
    referenced_.push_back(facts.root);
}

void RecordingBuilder::beginObject(ObjectId id, std::string_view className) {
    if (isOpen_ || id <= 0 || id > lastId_ || !places_.emplace(id, objects.size()).second) {
        broken("an object within an object, or an id that is taken or was not handed out");
    }
    isOpen_ = true;
    told_.clear();
    list_.clear();
    objects.emplace_back();
    current().id = id;
    current().className = className;
}

void RecordingBuilder::parent(ObjectId id) {
    once("parent");
    if (find(id) == nullptr || id == current().id) {
        broken("a parent that was not told");
    }
    current().parent = id;
}

void RecordingBuilder::name(std::string_view value) {
    once("name");
    text(value);
    current().name = value;
}

void RecordingBuilder::color(std::int16_t index) {
    once("color");
    if (index < 0 || index > 255) {
        broken("a colour out of range");
    }
    current().color = index;
}

void RecordingBuilder::kind(plant::PartKind value) {
    once("kind");
    current().kind = value;
}

void RecordingBuilder::text(plant::TextMember member, std::string_view value) {
    once("text " + std::to_string(static_cast<int>(member)));
    text(value);
}

void RecordingBuilder::vector(plant::VectorMember member, const plant::Triple&) {
    once("vector " + std::to_string(static_cast<int>(member)));
}

void RecordingBuilder::reference(plant::ReferenceMember member, ObjectId id) {
    once("reference " + std::to_string(static_cast<int>(member)));
    referenced_.push_back(id);
    if (member == plant::ReferenceMember::Spec) {
        current().spec = id;
    }
}

void RecordingBuilder::references(plant::ListMember, std::span<const ObjectId> list) {
    once("references");
    ids(list);
}

void RecordingBuilder::insulation(const plant::InsulationFacts&) {
    once("insulation");
}

std::string RecordingBuilder::valueOf(const plant::AttributeFacts& facts) {
    const auto number = [](double value) {
        char digits[64];
        std::snprintf(digits, sizeof digits, "%g", value);
        return std::string(digits);
    };
    switch (facts.form) {
    case plant::AttributeFacts::Form::Whole:
        return std::to_string(facts.whole);
    case plant::AttributeFacts::Form::Real:
        return number(facts.number);
    case plant::AttributeFacts::Form::Point:
        return number(facts.point[0]) + "," + number(facts.point[1]) + "," + number(facts.point[2]);
    default:
        return std::string(facts.text);
    }
}

void RecordingBuilder::attribute(const plant::AttributeFacts& facts) {
    list("attributes");
    text(facts.key);
    text(facts.text);
    current().attributes.emplace_back(facts.key, valueOf(facts));
}

void RecordingBuilder::point(const plant::PointFacts& facts) {
    list("points");
    if (current().point(facts.no) != nullptr || facts.no < 0 || facts.flow < 0 || facts.flow > 2) {
        broken("a point of a number that is taken, or of no flow");
    }
    ids(facts.to);
    if (std::find(facts.to.begin(), facts.to.end(), current().id) != facts.to.end()) {
        broken("a point connected to its own object");
    }
    const HxGePoint3D place(facts.at[0], facts.at[1], facts.at[2]);
    if (!std::isfinite(place.x + place.y + place.z)) {
        broken("a point that is not finite");
    }
    current().points.push_back({facts.no, place, facts.flow, {facts.to.begin(), facts.to.end()}});
}

void RecordingBuilder::tubeEnd(const plant::TubeEndFacts& facts) {
    list("ends");
    current().ends.emplace_back(facts.size.value_or(""), facts.endType.value_or(""));
}

void RecordingBuilder::branch(std::span<const ObjectId> items) {
    list("branches");
    ids(items);
    current().branches.emplace_back(items.begin(), items.end());
}

void RecordingBuilder::run(std::string_view name, std::span<const ObjectId> items) {
    list("runs");
    text(name);
    ids(items);
    for (const ToldRun& run : current().runs) {
        if (run.name == name) {
            broken("two runs of one name");
        }
    }
    current().runs.push_back({std::string(name), {items.begin(), items.end()}, {}});
}

void RecordingBuilder::runAttribute(const plant::AttributeFacts& facts) {
    if (list_ != "runs") {
        broken("an attribute of no run");
    }
    current().runs.back().attributes.emplace_back(facts.key, valueOf(facts));
}

void RecordingBuilder::shape() {
    once("shape");
    current().hasShape = true;
}

void RecordingBuilder::primitive(const HextPrimary& primitive) {
    list("primitives");
    current().hasShape = true;
    current().primitives.emplace_back(primitive.clone());
}

void RecordingBuilder::endObject() {
    if (!isOpen_) {
        broken("the end of no object");
    }
    isOpen_ = false;
}

void RecordingBuilder::finish() {
    if (isOpen_) {
        broken("an object that does not end");
    }
    for (const ObjectId id : referenced_) {
        if (find(id) == nullptr) {
            broken("a reference to object " + std::to_string(id) + ", which was not told");
        }
    }
}

const ToldObject* RecordingBuilder::find(ObjectId id) const {
    const auto place = places_.find(id);
    return place != places_.end() ? &objects[place->second] : nullptr;
}

const ToldObject& RecordingBuilder::named(std::string_view name) const {
    for (const ToldObject& object : objects) {
        if (object.name == name) {
            return object;
        }
    }
    ADD_FAILURE() << "no object is named " << name << " in\n" << tree();
    static const ToldObject none;
    return none;
}

std::string RecordingBuilder::tree() const {
    std::map<ObjectId, std::vector<const ToldObject*>> sons;
    for (const ToldObject& object : objects) {
        sons[object.parent].push_back(&object);
    }
    std::string text;
    const auto print = [&](const auto& self, const ToldObject& object, int depth) -> void {
        text.append(static_cast<std::size_t>(2 * depth), ' ').append(object.className).append(" ");
        text.append(object.name).append("\n");
        for (const ToldObject* son : sons[object.id]) {
            self(self, *son, depth + 1);
        }
    };
    for (const ToldObject* top : sons[0]) {
        if (top->className.starts_with("Hext")) {
            print(print, *top, 0);
        }
    }
    return text;
}

std::size_t RecordingBuilder::primitiveCount() const {
    std::size_t count = 0;
    for (const ToldObject& object : objects) {
        count += object.primitives.size();
    }
    return count;
}
