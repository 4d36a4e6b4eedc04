// What a builder is told of an object in records: attributes, points, key points, ends, branches and runs.
#include "plant/building/memory_builder.h"
#include "plant/refusal.h"

#include <algorithm>

namespace plant {

namespace {

std::int16_t checkedPointNumber(std::int16_t number) {
    within("no", [&] { checkedWhole(number, 0, largestPointNumber); });
    return number;
}

HxGePoint3D checkedPlace(const Triple& at) {
    within("at", [&] { checkedTriple(at); });
    return {at[0], at[1], at[2]};
}

void tellValue(RecordKeeper& records, const AttributeFacts& facts) {
    switch (facts.form) {
    case AttributeFacts::Form::Text:
        return records.text(facts.text);
    case AttributeFacts::Form::Whole:
        return records.whole(facts.whole);
    case AttributeFacts::Form::Real:
        return records.real(checkedNumber(facts.number));
    case AttributeFacts::Form::Point:
        return records.point(checkedTriple(facts.point));
    }
}

void tell(RecordKeeper& records, const AttributeFacts& facts) {
    records.key(facts.key);
    tellValue(records, facts);
    if (facts.type != 0) {
        records.type(facts.type);
    }
    if (!facts.description.empty()) {
        records.description(facts.description);
    }
}

}  // namespace

void MemoryBuilder::attribute(const AttributeFacts& facts) {
    current();
    tell(attributes_, facts);
}

void MemoryBuilder::point(const PointFacts& facts) {
    constexpr std::int8_t lastFlow = 2;
    smart("points");
    within("flow", [&] { checkedWhole(facts.flow, 0, lastFlow); });
    const auto number = static_cast<std::size_t>(checkedPointNumber(facts.no));
    if (numbersInUse_.test(number)) {
        refuse("number " + std::to_string(number) + " stands twice");
    }
    numbersInUse_.set(number);
    addConnections(facts);
    points_.emplace_back(facts.no, facts.flow, checkedPlace(facts.at));
}

void MemoryBuilder::addConnections(const PointFacts& facts) {
    for (std::size_t i = 0; i < facts.to.size(); ++i) {
        try {
            Connection& connection = connections_.emplace_back();
            connection.to.id = checkedId(facts.to[i]);
            if (connection.to.id == object_->id) {
                refuse("an object does not hang at itself");
            }
            connection.number = facts.no;
            connection.point = static_cast<std::uint16_t>(points_.size());
            connection.element = static_cast<std::uint32_t>(i);
            connection.inArray = facts.toIsArray || facts.to.size() > 1;
        } catch (Refusal& refusal) {
            if (facts.toIsArray || facts.to.size() > 1) {
                refusal.within(i);
            }
            refusal.within("to");
            throw;
        }
    }
}

void MemoryBuilder::keepPoints() {
    if (points_.empty()) {
        return;
    }
    for (const HxDbSmrtlnPoint& point : points_) {
        numbersInUse_.reset(static_cast<std::size_t>(point.number()));
    }
    const auto byNumber = [](const Connection& a, const Connection& b) { return a.number < b.number; };
    if (!std::is_sorted(connections_.begin(), connections_.end(), byNumber)) {
        std::stable_sort(connections_.begin(), connections_.end(), byNumber);
    }
    object_->points = model_->arena.copy(points_);
    object_->pointCount = static_cast<std::uint16_t>(points_.size());
    object_->connections = model_->arena.copy(connections_);
    object_->connectionCount = static_cast<std::uint32_t>(connections_.size());
    points_.clear();
    connections_.clear();
}

void MemoryBuilder::keyPoints() {
    smart("keyPoints");
    current_.hasKeyPoints = true;
}

void MemoryBuilder::keyPoint(std::int16_t no, const Triple& at) {
    keyPoints();
    keyPoints_.emplace_back(checkedPointNumber(no), 0, checkedPlace(at));
}

void MemoryBuilder::tubeEnd(const TubeEndFacts& facts) {
    if (ends_.empty()) {
        claim(Member::Ends);
    }
    TubeEnd& end = ends_.emplace_back();
    end.size = facts.size ? keep(*facts.size) : nullptr;
    end.endType = facts.endType ? keep(*facts.endType) : nullptr;
    end.hasOuter = facts.outer.has_value();
    within("outer", [&] { end.outer = checkedNumber(facts.outer.value_or(0)); });
    within("inner", [&] { end.inner = checkedNumber(facts.inner); });
    within("section", [&] { end.section = static_cast<std::int32_t>(checkedWhole(facts.section, 0, largestSection)); });
}

void MemoryBuilder::branch(std::span<const ObjectId> items) {
    if (branches_.empty()) {
        claim(Member::Branches);
    }
    branches_.push_back(keepIds(items));
}

void MemoryBuilder::run(std::string_view name, std::span<const ObjectId> items) {
    newRun();
    nameRun(name, items);
}

RecordKeeper& MemoryBuilder::newRun() {
    if (runs_.empty()) {
        claim(Member::Runs);
    }
    keepRunAttributes();
    runs_.emplace_back();
    runAttributes_.begin();
    return runAttributes_;
}

void MemoryBuilder::nameRun(std::string_view name, std::span<const ObjectId> items) {
    PipeRun& run = runs_.back();
    run.name = keep(name);
    within("items", [&] { run.items = keepIds(items); });
    if (!runNames_.insert(run.name).second) {
        refuse("a run of this name stands before it");
    }
}

void MemoryBuilder::runAttribute(const AttributeFacts& facts) {
    if (runs_.empty()) {
        refuse("an attribute of a run before the run");
    }
    tell(runAttributes_, facts);
}

// Of the run told last.
void MemoryBuilder::keepRunAttributes() {
    if (!runs_.empty()) {
        runs_.back().attributes = runAttributes_.keep();
    }
}

template <typename Record, typename List>
void MemoryBuilder::keepList(Member member, std::vector<Record>& records, List list) {
    if (records.empty()) {
        return;
    }
    Property& property = newProperty(member);
    property.*list = model_->arena.copy(records);
    property.count = static_cast<std::uint32_t>(records.size());
    records.clear();
}

// Gives the object in hand a property for each list of records that it has.
void MemoryBuilder::keepRecords() {
    keepRunAttributes();
    if (current_.hasKeyPoints) {
        Property& property = addProperty(Member::KeyPoints);
        property.points = model_->arena.copy(keyPoints_);
        property.count = static_cast<std::uint32_t>(keyPoints_.size());
        keyPoints_.clear();
    }
    keepList(Member::Ends, ends_, &Property::ends);
    keepList(Member::Branches, branches_, &Property::branches);
    keepList(Member::Runs, runs_, &Property::runs);
    if (!runNames_.empty()) {
        runNames_.clear();
    }
}

}  // namespace plant
