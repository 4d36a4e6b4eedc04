#include "tessaro/check/max/rules.h"

#include "readers/max/events.h"

#include <algorithm>
#include <unordered_map>

namespace check {

namespace {

using namespace readers::max;
using readers::Findings;

bool isFinite(std::string_view text) {
    double number = 0;
    return readNumber(text, number);
}

bool isPlantObject(const Element& object) {
    return object.has("ProjectCode");
}

// Ids are whole numbers that rise from element to element.
class CheckedFile : public MaxFile {
protected:
    void startObject(const Element& object) override {
        std::int64_t id = 0;
        if (!readNumber(object.value("id"), id) || id <= lastId_) {
            add("its id is no number above those before it");
        }
        lastId_ = std::max(lastId_, id);
        if (!object.has("Name")) {
            add("it has no Name");
        }
    }

private:
    std::int64_t lastId_ = 0;
};

class GeometryFile final : public CheckedFile {
protected:
    void startInner(const Element& element, std::size_t level) override {
        if (level == 0) {
            startGroup(element);
        } else if (level == 1 && group_.isJudged) {
            item(element);
        }
    }
    void endInner(std::size_t level) override {
        if (level == 0 && group_.isJudged && group_.next < group_.points + group_.faces) {
            addMissing(" at a group's end");
        }
    }

private:
    // Points, then faces. Nothing behind a gap can be judged.
    struct Group {
        std::size_t points = 0;
        std::size_t faces = 0;
        std::size_t part = 0;  // 0 in a mesh, whose points have no type
        std::size_t next = 0;
        bool isJudged = false;
    };

    void startGroup(const Element& node) {
        group_ = {};
        const bool isMesh = node.name() == "meshGroup";
        if (!isMesh && node.name() != "splineGroup") {
            return add("no such group: " + std::string(node.name()));
        }
        if (!readNumber(node.value("pointNum"), group_.points) ||
            (isMesh ? !readNumber(node.value("faceNum"), group_.faces)
                    : !readNumber(node.value("partNum"), group_.part) || group_.part == 0)) {
            return add("its counts are no numbers");
        }
        group_.isJudged = true;
        colors(node);
    }

    void colors(const Element& node) {
        for (const char* name : {"colorR", "colorG", "colorB"}) {
            std::size_t level = 256;
            if (!readNumber(node.value(name), level) || level > 255) {
                add(std::string(name) + " is no number from 0 to 255");
            }
        }
    }

    void addMissing(const char* where = "") {
        const bool isPoint = group_.next < group_.points;
        add((isPoint ? "point " + std::to_string(group_.next) : "face " + std::to_string(group_.next - group_.points)) +
            " is missing" + where);
    }

    void item(const Element& node) {
        const bool isPoint = group_.next < group_.points;
        const std::size_t wanted = isPoint ? group_.next : group_.next - group_.points;
        std::size_t index = 0;
        if (!isPoint && wanted >= group_.faces) {
            add("more than the group's counts say");
            group_.isJudged = false;
        } else if (node.name() != (isPoint ? "point" : "face") || !readNumber(node.value("index"), index) ||
                   index != wanted) {
            addMissing();
            group_.isJudged = false;
        } else {
            isPoint ? point(node) : face(node);
            ++group_.next;
        }
    }

    void point(const Element& node) {
        if (!isFinite(node.value("pointX")) || !isFinite(node.value("pointY")) || !isFinite(node.value("pointZ"))) {
            add("a coordinate is no number");
        }
        if (group_.part != 0 && node.value("type") != (group_.next % group_.part == 0 ? "knot" : "interp")) {
            add("its type does not follow from partNum");
        }
    }

    void face(const Element& node) {
        for (const char* name : {"pointX", "pointY", "pointZ"}) {
            std::size_t corner = 0;
            if (!readNumber(node.value(name), corner) || corner >= group_.points) {
                add(std::string(name) + " is the number of no point");
            }
        }
    }

    Group group_;
};

class PropertyFile final : public CheckedFile {
protected:
    void startObject(const Element& object) override {
        CheckedFile::startObject(object);
        if (!open_.empty()) {
            open_.back().isAlone = false;
        }
        open_.push_back({.line = line(), .isPlant = isPlantObject(object)});
    }
    void endObject() override {
        const Open& object = open_.back();
        if (object.isPlant && !(object.hasGroup && object.isAlone)) {
            add(object.line, "a plant object has one propertyGroup named ORNA");
        }
        open_.pop_back();
    }
    void startInner(const Element& element, std::size_t level) override {
        Open& object = open_.back();
        if (level == 0) {
            object.isAlone = object.isAlone && !object.hasGroup && element.name() == "propertyGroup" &&
                             element.value("Name") == "ORNA";
            object.hasGroup = true;
            groupLine_ = line();
            rows_ = 0;
        } else if (level == 1 && rows_ < std::size(firstRows) && element.name() == "key_value" &&
                   element.value("key") == firstRows[rows_]) {
            ++rows_;
        } else if (level == 1 && rows_ < std::size(firstRows)) {
            rows_ = otherRow;
        }
    }
    void endInner(std::size_t level) override {
        if (level == 0 && open_.back().isPlant && open_.back().isAlone && rows_ != std::size(firstRows)) {
            add(groupLine_, "it does not begin with site_no and unit_no");
        }
    }

private:
    static constexpr std::string_view firstRows[] = {"site_no", "unit_no"};
    static constexpr std::size_t otherRow = 99;

    struct Open {
        std::size_t line = 0;
        bool isPlant = false;
        bool hasGroup = false;
        bool isAlone = true;  // nothing but the one group of that name
    };

    std::vector<Open> open_;
    std::size_t groupLine_ = 0;
    std::size_t rows_ = 0;  // of firstRows
};

// The ids of the open objects, so that each knows its parent's.
class TreeFile : public MaxFile {
protected:
    void startObject(const Element& object) final {
        place(object, open_.empty() ? std::string_view() : std::string_view(open_.back()));
        open_.emplace_back(object.value("id"));
    }
    void endObject() final { open_.pop_back(); }
    virtual void place(const Element& object, std::string_view parent) = 0;

private:
    std::vector<std::string> open_;
};

struct Row {
    std::string parent;
    std::string name;
    bool isPlant;
};
using Rows = std::unordered_map<std::string, Row>;

class RowReader final : public TreeFile {
public:
    Rows rows;

protected:
    void place(const Element& object, std::string_view parent) override {
        rows.try_emplace(std::string(object.value("id")),
                         Row{std::string(parent), std::string(object.value("Name")), isPlantObject(object)});
    }
};

// An object without a shape stands in the property file alone.
class PairCheck final : public TreeFile {
public:
    explicit PairCheck(const Rows& rows) : rows_(rows) {}

protected:
    void place(const Element& object, std::string_view parent) override {
        const std::string id(object.value("id"));
        const auto found = rows_.find(id);
        if (found == rows_.end()) {
            return add("object " + id + " is not in the property file");
        }
        const Row& other = found->second;
        const std::string name(object.value("Name"));
        if (parent != other.parent) {
            add("object " + id + " stands under another in the property file");
        }
        if (other.isPlant ? !other.name.ends_with("-" + name + "_" + id) : other.name != name) {
            add("object " + id + " has another name in the property file");
        }
    }

private:
    const Rows& rows_;
};

}  // namespace

Findings maxGeometry(std::string_view bytes) {
    return GeometryFile().read(bytes);
}

Findings maxProperties(std::string_view bytes) {
    return PropertyFile().read(bytes);
}

Findings maxPair(std::string_view geometry, std::string_view properties) {
    RowReader reader;
    Findings findings = reader.read(properties);
    const Findings found = PairCheck(reader.rows).read(geometry);
    findings.insert(findings.end(), found.begin(), found.end());
    return findings;
}

}  // namespace check
