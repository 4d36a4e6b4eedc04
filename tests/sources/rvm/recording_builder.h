// A builder that keeps what it is told as plain records, and that holds its teller to the order of calls.
#pragma once

#include "plant/model_builder.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

struct ToldPoint {
    int no = 0;
    HxGePoint3D at;
    int flow = 0;
    std::vector<plant::ObjectId> to;
};
struct ToldRun {
    std::string name;
    std::vector<plant::ObjectId> items;
    std::vector<std::pair<std::string, std::string>> attributes;
};

struct ToldObject {
    plant::ObjectId id = 0;
    std::string className;
    plant::ObjectId parent = 0;
    std::string name;
    int color = 0;
    plant::PartKind kind = plant::PartKind::Default;
    plant::ObjectId spec = 0;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<ToldPoint> points;
    std::vector<std::vector<plant::ObjectId>> branches;
    std::vector<ToldRun> runs;
    std::vector<std::pair<std::string, std::string>> ends;  // size and type
    std::vector<std::unique_ptr<HextPrimary>> primitives;
    bool hasShape = false;

    // The first value of a key; "(none)" without one.
    std::string attribute(std::string_view key) const {
        for (const auto& [name_, value] : attributes) {
            if (name_ == key) {
                return value;
            }
        }
        return "(none)";
    }
    const ToldPoint* point(int no) const {
        for (const ToldPoint& one : points) {
            if (one.no == no) {
                return &one;
            }
        }
        return nullptr;
    }
};

class RecordingBuilder final : public plant::ModelBuilder {
public:
    using ModelBuilder::attribute;

    void project(const plant::ProjectFacts& facts) override;
    void attributeLabel(std::string_view, std::string_view) override { broken("a label"); }
    void database(const plant::DatabaseFacts& facts) override;
    plant::ObjectId newId() override { return ++lastId_; }
    void reserveIds(plant::ObjectId upTo) override { lastId_ = std::max(lastId_, upTo); }
    void beginObject(plant::ObjectId id, std::string_view className) override;
    void parent(plant::ObjectId id) override;
    void name(std::string_view text) override;
    void nodeId(plant::ObjectId) override { broken("a node id"); }
    void color(std::int16_t index) override;
    void available(bool) override { broken("availability"); }
    void kind(plant::PartKind kind) override;
    void text(plant::TextMember member, std::string_view value) override;
    void whole(plant::WholeMember, std::int64_t) override { once("whole"); }
    void number(plant::NumberMember, double) override { once("number"); }
    void vector(plant::VectorMember member, const plant::Triple&) override;
    void reference(plant::ReferenceMember member, plant::ObjectId id) override;
    void references(plant::ListMember, std::span<const plant::ObjectId> ids) override;
    void insulation(const plant::InsulationFacts& facts) override;
    void attribute(const plant::AttributeFacts& facts) override;
    void point(const plant::PointFacts& facts) override;
    void keyPoints() override { broken("key points"); }
    void keyPoint(std::int16_t, const plant::Triple&) override { broken("a key point"); }
    void tubeEnd(const plant::TubeEndFacts& facts) override;
    void branch(std::span<const plant::ObjectId> items) override;
    void run(std::string_view name, std::span<const plant::ObjectId> items) override;
    void runAttribute(const plant::AttributeFacts& facts) override;
    void shape() override;
    void primitive(const HextPrimary& primitive) override;
    void endObject() override;
    void finish() override;

    std::vector<ToldObject> objects;
    std::string projectName;
    std::vector<std::string> databases;
    std::vector<std::string> faults;  // of the order of calls, empty for a good teller

    // The first object of a name; fails the test without one.
    const ToldObject& named(std::string_view name) const;
    const ToldObject* find(plant::ObjectId id) const;
    // "class name" of every object in the tree, indented by its depth, a line each.
    std::string tree() const;
    std::size_t primitiveCount() const;

private:
    void broken(const std::string& what) { faults.push_back(what); }
    void once(const std::string& member);
    void list(const std::string& kind);
    void text(std::string_view value);
    void ids(std::span<const plant::ObjectId> ids);
    static std::string valueOf(const plant::AttributeFacts& facts);
    ToldObject& current() { return objects.back(); }

    plant::ObjectId lastId_ = 0;
    bool isOpen_ = false;
    std::set<std::string> told_;
    std::string list_;
    std::map<plant::ObjectId, std::size_t> places_;
    std::vector<plant::ObjectId> referenced_;
};
