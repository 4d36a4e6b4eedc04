#include "generator/odd.h"

#include <algorithm>

namespace plant::generator {

namespace {

namespace dom = simdjson::dom;

constexpr int oddPercent = 4;
constexpr int missingPercent = 3;

// Smart objects that may hold whatever another may hold.
constexpr const char* partClasses[] = {"HxDbTubeModel",   "HxDbTubeModelSpec", "HxDbPipeSpec", "HxDbNozzleModel",
                                       "HxDbTubeGeneral", "HxDbTubeWeld",      "HxDbTubeStop", "HxDbBalloon",
                                       "HxDbAssembly",    "HxDbEquipment",     "HxDbStruct",   "HxDbSupportModel",
                                       "HxDbXGModel",     "HxDbNonTube",       "HxDbAxissLine"};
constexpr const char* managerClasses[] = {"HextSite",   "HextZone",     "HextZoneDirectory", "HextUnit",
                                          "HextItem",   "HextStdFloor", "HextPipeline",      "HextStruct",
                                          "HextEquipe", "HextSupport",  "HextAxiss",         "HextPIDPaperManager"};
// Whole numbers and directions of meaning, which stay as they are.
constexpr std::string_view untouched[] = {
    "id",       "in",        "node",      "owner",   "spec",       "bolts",   "supItem", "members", "subs",
    "branches", "bolt",      "nut",       "flange",  "no",         "insNo",   "refNo",   "sides",   "segments",
    "sideMode", "pointKind", "arcKind",   "form",    "handedness", "section", "unit",    "sortNo",  "boltNum",
    "nutNum",   "kind",      "available", "gsFlags", "faces",      "type",    "runs"};
// What an object, point or primitive can do without.
constexpr std::string_view optionalMembers[] = {
    "displayName", "owner",  "members",    "standard", "color", "start",   "branches",   "runs",
    "objectName",  "points", "keyPoints",  "insNo",    "refNo", "refVec",  "insVec",     "spec",
    "insPoint",    "bolts",  "insulation", "supItem",  "subs",  "bolt",    "primitives", "nut",
    "flange",      "ends",   "to",         "flow",     "attrs", "outline", "holes",      "profile",
    "material",    "normal", "thickness",  "endType",  "size",  "name"};

// What a component is, by which the macro export refuses a plant or goes on; only every other plant is odd there.
constexpr std::string_view typeKeys[] = {"item", "itype", "end1", "end2", "end3", "end4", "smrtln", "skey", "stype"};

template <std::size_t N>
bool isOneOf(const std::string_view (&names)[N], std::string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

bool isPart(std::string_view className) {
    return std::find(std::begin(partClasses), std::end(partClasses), className) != std::end(partClasses);
}

}  // namespace

void OddPlant::disturb(std::string& object) {
    const dom::object members = parser_.parse(object);
    out_.clear();
    writeObject(members);
    object.swap(out_);
}

void OddPlant::writeObject(const dom::object& members) {
    const std::string_view className = members["class"];
    id_ = members["id"];
    object(members);
    if (isPart(className)) {
        seen_[seenCount_++ % seen_.size()] = id_;
    }
    if (className.substr(0, 4) == "Hext" && members["in"].error() == simdjson::SUCCESS && values_.random().chance(30)) {
        hanger(id_);
    }
}

// An object of any class below a manager, with nothing but odd primitives or with nothing at all.
void OddPlant::hanger(std::int64_t in) {
    const bool isManager = keepsTypes_ || values_.random().chance(40);
    out_ += ",\n{\"id\":" + std::to_string(nextId_++) + ",\"class\":\"";
    out_ += isManager ? values_.random().pick(managerClasses) : values_.random().pick(partClasses);
    out_ += "\",\"in\":" + std::to_string(in);
    if (values_.random().chance(50)) {
        out_ += ",\"name\":";
        values_.text(out_);
    }
    if (!isManager && values_.random().chance(80)) {
        out_ += ",\"primitives\":[";
        const int count = values_.random().below(5);
        for (int i = 0; i < count; ++i) {
            out_ += i == 0 ? "" : ",";
            values_.primitive(out_);
        }
        out_ += ']';
    }
    out_ += '}';
}

void OddPlant::object(const dom::object& members) {
    char before = '{';
    for (const auto [name, value] : members) {
        const bool stays = keepsTypes_ && (name == "attrs" || name == "ends" || name == "spec" || name == "endType");
        if (!stays && isOneOf(optionalMembers, name) && values_.random().chance(missingPercent)) {
            continue;
        }
        out_ += before;
        out_ += '"';
        out_ += name;
        out_ += "\":";
        member(name, value);
        before = ',';
    }
    out_ += before == '{' ? "{}" : "}";
}

void OddPlant::member(std::string_view name, Value value) {
    if (name == "class") {
        classOf(value);
    } else if (name == "attrs" && value.is_object()) {
        attributes(value);
    } else if (name == "to") {
        target(value);
    } else if (name == "start") {
        starts_.insert(value);
        out_ += simdjson::to_string(value);
    } else if (name == "color") {
        out_ += std::to_string(values_.random().below(256));
    } else if (name == "flow") {
        out_ += std::to_string(values_.random().chance(oddPercent) ? values_.random().below(3) : std::int64_t{value});
    } else if (name == "outline" && values_.random().chance(3 * oddPercent)) {
        values_.outline(out_);
    } else if (isOneOf(untouched, name) || (keepsTypes_ && name == "endType")) {
        out_ += simdjson::to_string(value);
    } else if (value.is_array()) {
        array(name, value);
    } else {
        any(value);
    }
}

void OddPlant::any(Value value) {
    const bool isOdd = values_.random().chance(oddPercent);
    if (value.is_object()) {
        object(value);
    } else if (value.is_array()) {
        array("", value);
    } else if (isOdd && value.is_number()) {
        values_.number(out_);
    } else if (isOdd && value.is_string()) {
        values_.text(out_);
    } else {
        out_ += simdjson::to_string(value);
    }
}

// Lists of three or four numbers keep their length and the kind of a vertex; other lists may lose items.
void OddPlant::array(std::string_view name, const dom::array& items) {
    const bool isNumbers = items.size() > 0 && items.at(0).value().is_number();
    if (isNumbers && items.size() == 3 && values_.random().chance(oddPercent)) {
        values_.point(out_);
        return;
    }
    out_ += '[';
    std::size_t at = 0;
    bool first = true;
    for (const Value item : items) {
        const bool isVertexKind = isNumbers && items.size() == 4 && at == 0;
        const bool isMissing =
            !isNumbers && !(keepsTypes_ && name == "ends") && values_.random().chance(missingPercent);
        ++at;
        if (isMissing) {
            continue;
        }
        out_ += first ? "" : ",";
        first = false;
        if (isVertexKind) {
            out_ += simdjson::to_string(item);
        } else {
            any(item);
        }
    }
    if (name == "primitives" && values_.random().chance(2 * oddPercent)) {
        out_ += first ? "" : ",";
        values_.primitive(out_);
    }
    out_ += ']';
}

void OddPlant::attributes(const dom::object& entries) {
    if (!keepsTypes_ && values_.random().chance(oddPercent)) {
        attributeList(entries);
        return;
    }
    char before = '{';
    for (const auto [key, value] : entries) {
        const bool stays = keepsTypes_ && isOneOf(typeKeys, key);
        if (!stays && values_.random().chance(missingPercent)) {
            continue;
        }
        out_ += before;
        out_ += '"';
        out_ += key;
        out_ += "\":";
        stays ? void(out_ += simdjson::to_string(value)) : any(value);
        before = ',';
    }
    out_ += before == '{' ? "{}" : "}";
}

// The other form of attributes, in which keys repeat and have labels.
void OddPlant::attributeList(const dom::object& entries) {
    char before = '[';
    for (const auto [key, value] : entries) {
        const int copies = values_.random().chance(20) ? 2 : 1;
        for (int i = 0; i < copies; ++i) {
            out_ += before;
            out_ += "{\"key\":";
            if (values_.random().chance(oddPercent)) {
                values_.text(out_);
            } else {
                out_ += '"';
                out_ += key;
                out_ += '"';
            }
            out_ += ",\"value\":";
            any(value);
            out_ += ",\"description\":";
            values_.text(out_);
            out_ += '}';
            before = ',';
        }
    }
    out_ += before == '[' ? "[]" : "]";
}

void OddPlant::classOf(std::string_view name) {
    const bool isOther = !keepsTypes_ && isPart(name) && values_.random().chance(oddPercent);
    const std::string_view other = isOther ? values_.random().pick(partClasses) : name;
    out_ += '"';
    out_ += starts_.count(id_) != 0 ? name : other;
    out_ += '"';
}

// What hangs at a point: now and then another object than before.
void OddPlant::target(Value value) {
    const std::size_t count = std::min(seenCount_, seen_.size());
    if (count > 0 && values_.random().chance(oddPercent)) {
        const std::int64_t other = seen_[static_cast<std::size_t>(values_.random().below(static_cast<int>(count)))];
        if (other != id_) {
            out_ += std::to_string(other);
            return;
        }
    }
    out_ += simdjson::to_string(value);
}

}  // namespace plant::generator
