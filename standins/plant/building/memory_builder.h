// Makes a Model of what a source tells.
//
// What comes in is checked, texts go into the code page, and everything is laid into the model's arenas; nothing of the
// source is needed later. Members of the object in hand gather in lists that are used again for the next one; endObject
// copies them to where they stay. References are ids until all objects that they name are there, at finish at the
// latest.
//
// A refusal says what is wrong. Its place holds the member of a record of facts, if it is within one ("flow", "to[1]"),
// and nothing of where the call comes from; of a record told before, its number.
#pragma once

#include "plant/building/primitive_keeper.h"
#include "plant/building/record_keeper.h"
#include "plant/building/resolver.h"
#include "plant/building/text_keeper.h"
#include "plant/building/told_checks.h"
#include "plant/model/class_table.h"
#include "plant/model/data.h"
#include "plant/model_builder.h"

#include <bitset>
#include <tsl/robin_set.h>
#include <vector>

namespace plant {

class MemoryBuilder final : public ModelBuilder {
public:
    // `model` is empty and lives as long as the builder. What was refused halfway leaves a model that is good for
    // nothing but destruction.
    explicit MemoryBuilder(Model& model);

    // A member of the project that was told by an earlier source stands; the same of a key's label.
    void project(const ProjectFacts& facts) override;
    void attributeLabel(std::string_view key, std::string_view label) override;
    void database(const DatabaseFacts& facts) override;

    ObjectId newId() override;
    void reserveIds(ObjectId upTo) override;

    void beginObject(ObjectId id, std::string_view className) override;
    void parent(ObjectId id) override;
    void name(std::string_view text) override { current().name = texts_.keep(text).data(); }
    void nodeId(ObjectId id) override;
    void color(std::int16_t index) override;
    void available(bool value) override { current().available = value; }
    void kind(PartKind kind) override { smart("kind").kind = kind; }
    void text(TextMember member, std::string_view value) override { add(member).text = texts_.keep(value).data(); }
    void whole(WholeMember member, std::int64_t value) override;
    void number(NumberMember member, double value) override { add(member).number = checkedNumber(value); }
    void vector(VectorMember member, const Triple& value) override;
    void reference(ReferenceMember member, ObjectId id) override { add(member).reference.id = checkedId(id); }
    void references(ListMember member, std::span<const ObjectId> ids) override;
    void insulation(const InsulationFacts& facts) override;

    using ModelBuilder::attribute;
    void attribute(const AttributeFacts& facts) override;
    void point(const PointFacts& facts) override;
    void keyPoints() override;
    void keyPoint(std::int16_t no, const Triple& at) override;
    void tubeEnd(const TubeEndFacts& facts) override;
    void branch(std::span<const ObjectId> items) override;
    void run(std::string_view name, std::span<const ObjectId> items) override;
    void runAttribute(const AttributeFacts& facts) override;
    void shape() override { smart("primitives").hasShape = true; }
    void primitive(const HextPrimary& primitive) override;
    void endObject() override;

    void finish() override;

    // How many objects and databases were told; the next one gets this number.
    std::size_t objectCount() const { return model_->objects.size(); }
    std::size_t databaseCount() const { return model_->databases.size(); }

    // Quicker forms for a source that knows more of its values.

    // Refuses an id that an object has already. Whoever has asked may begin an object by the row of its class.
    void checkNewId(ObjectId id) const;
    void beginObject(ObjectId id, const ClassRow& row);
    void name(PlainText text) { current().name = texts_.keep(text).data(); }
    void text(TextMember member, PlainText value) { add(member).text = texts_.keep(value).data(); }
    const char* keep(PlainText text) { return texts_.keep(text).data(); }
    const char* keep(std::string_view text) { return texts_.keep(text).data(); }
    // The attributes of the object in hand, for one value after the other.
    RecordKeeper& attributes() { return attributes_; }
    // A run, its attributes first; nameRun completes it.
    RecordKeeper& newRun();
    void nameRun(std::string_view name, std::span<const ObjectId> items);
    // A primitive with the defaults of its class, whose fields the source fills. Its texts are in the code page.
    HextPrimary& newPrimitive(const PrimitiveClass& type) {
        smart("primitives");
        return primitives_.make(type);
    }

private:
    ObjectData& current() {
        if (object_ == nullptr) [[unlikely]] {
            refuseOutside();
        }
        return *object_;
    }
    ObjectData& smart(const char* member) {
        if (!current_.family->isSmart) [[unlikely]] {
            refuseMember(member);
        }
        return *object_;
    }
    template <typename Told>
    Property& add(Told member) {
        return addProperty(memberOf(member));
    }
    // The object in hand may have the member and has not yet.
    void claim(Member member) {
        const std::uint64_t bit = std::uint64_t{1} << static_cast<unsigned>(member);
        if ((current_.open & bit) == 0) [[unlikely]] {
            refuseProperty(member);
        }
        current_.open &= ~bit;
    }
    Property& addProperty(Member member) {
        claim(member);
        return newProperty(member);
    }
    Property& newProperty(Member member) {
        Property& property = properties_.emplace_back();
        property.member = member;
        property.count = 1;
        return property;
    }
    [[noreturn]] static void refuseOutside();
    [[noreturn]] void refuseMember(std::string_view member) const;
    [[noreturn]] void refuseProperty(Member member) const;
    void checkOutside(const char* what) const;
    void keepItems(std::span<const ProjectFacts::Item> items, TextMap& kept);
    ReferenceList keepIds(std::span<const ObjectId> ids);
    void addConnections(const PointFacts& facts);
    void keepRunAttributes();
    void keepPoints();
    void keepRecords();
    template <typename Record, typename List>
    void keepList(Member member, std::vector<Record>& records, List list);

    // What the object in hand may still have; nothing between objects.
    struct Current {
        const FamilyTable* family = &familyTable(Family::Plain);
        std::uint64_t open = 0;  // a bit for each Member of its class that was not told
        bool hasKeyPoints = false;
    };

    Model* model_;
    TextKeeper texts_;
    AttributeKeys keys_;
    RecordKeeper attributes_;
    RecordKeeper runAttributes_;
    PrimitiveKeeper primitives_;
    Resolver resolver_;
    ObjectId reserved_ = 0;     // ids up to this one are not handed out
    ProjectFacts toldProject_;  // which members were told
    bool isFinished_ = false;

    ObjectData* object_ = nullptr;
    Current current_;
    ObjectData* lastParent_ = nullptr;
    std::vector<Property> properties_;
    std::vector<HxDbSmrtlnPoint> points_;
    std::vector<Connection> connections_;
    std::vector<HxDbSmrtlnPoint> keyPoints_;
    std::vector<TubeEnd> ends_;
    std::vector<ReferenceList> branches_;
    std::vector<PipeRun> runs_;
    tsl::robin_set<std::string_view> runNames_;
    std::bitset<largestPointNumber + 1> numbersInUse_;  // of points of the object in hand
};

}  // namespace plant
