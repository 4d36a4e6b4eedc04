#include "sources/json/object_reader.h"

#include <algorithm>
#include <limits>
#include <set>

namespace plant {

namespace {

constexpr std::int64_t lastPointNumber = std::numeric_limits<std::int16_t>::max();
constexpr std::int64_t largestSection = std::numeric_limits<std::int32_t>::max();

// Far more than any plant has; operations climb and descend the tree level by level.
constexpr std::uint8_t deepestTree = 200;

Plant::Flow readFlow(od::value& value) {
    std::int64_t flow;
    if (value.get_int64().get(flow) != simdjson::SUCCESS || flow < 0 || flow > 2) {
        refuseValue(value, "1, 2 or 0");
    }
    return static_cast<Plant::Flow>(flow);
}

}  // namespace

void ObjectReader::read(od::value& value) {
    if (model_->objects.size() == IdIndex::none) {
        refuse("too many objects");
    }
    object_ = &model_->objects.append();
    object_->model = model_;
    family_ = nullptr;
    properties_.clear();
    const Shape* shape = &identityShape();
    // The first rows are those of the identity, whatever the family.
    const FamilyTable* rows = &familyTable(Family::Plain);
    od::object object = objectOf(value, "an object");
    eachMember(object, shape, texts_->unescape(), [&](int row, od::value& member) {
        readMember(rows->members[static_cast<std::size_t>(row)], member);
        if (family_ != nullptr && object_->id != 0) {
            rows = family_;
            shape = &family_->shape;
        }
    });
    object_->properties = model_->arena.copy(properties_);
    object_->propertyCount = static_cast<std::uint8_t>(properties_.size());
}

void ObjectReader::readMember(const MemberRow& row, od::value& value) {
    switch (row.reading) {
    case Reading::Id:
        return readId(value);
    case Reading::ClassName:
        return readClass(value);
    case Reading::Parent:
        return readParent(value);
    case Reading::Name:
        object_->name = texts_->keep(value);
        return;
    case Reading::NodeId:
        return readNodeId(value);
    case Reading::Attributes:
        return readAttributes(value);
    case Reading::Color:
        object_->color = static_cast<std::int16_t>(wholeNumber(value, row.low, row.high));
        return;
    case Reading::Available:
        object_->available = trueOrFalse(value);
        return;
    case Reading::Kind:
        return readKind(value);
    case Reading::Points:
        return readPoints(value);
    case Reading::Primitives:
        return primitives_.read(value, *object_);
    default:
        return readProperty(row, value);
    }
}

void ObjectReader::readProperty(const MemberRow& row, od::value& value) {
    switch (row.reading) {
    case Reading::Text:
        addProperty(row).text = texts_->keep(value);
        return;
    case Reading::Whole:
        addProperty(row).whole = wholeNumber(value, row.low, row.high);
        return;
    case Reading::Number:
        addProperty(row).number = finiteNumber(value);
        return;
    case Reading::Vector:
        return readVector(row, value);
    case Reading::Reference:
        addProperty(row).reference.id = objectId(value);
        return;
    case Reading::References:
        return readReferences(row, value);
    case Reading::KeyPoints:
        return readKeyPoints(row, value);
    case Reading::Insulation:
        return readInsulation(row, value);
    case Reading::Ends:
        return readEnds(row, value);
    case Reading::Branches:
        return readBranches(row, value);
    case Reading::Runs:
        return readRuns(row, value);
    default:
        return;
    }
}

void ObjectReader::readId(od::value& value) {
    const std::int64_t id = objectId(value);
    if (!model_->objects.giveId(*object_, id)) {
        const std::size_t first = model_->objects.indexOf(*model_->objects.find(id));
        refuse("id " + std::to_string(id) + " is that of objects[" + std::to_string(first) + "]");
    }
}

void ObjectReader::readClass(od::value& value) {
    const RawText name = rawText(value);
    const int row = name.plain ? classNames().find(name.data, name.size) : Shape::none;
    if (row == Shape::none) {
        refuseValue(value, "the name of a class");
    }
    const ClassRow& type = classRows()[static_cast<std::size_t>(row)];
    type.construct(object_->self, *object_);
    object_->classRow = static_cast<std::uint8_t>(row);
    family_ = &familyTable(type.family);
}

void ObjectReader::readParent(od::value& value) {
    const std::int64_t id = objectId(value);
    ObjectData* parent = lastParent_ != nullptr && lastParent_->id == id ? lastParent_ : model_->objects.find(id);
    if (parent == nullptr || parent == object_) {
        refuse("no object " + std::to_string(id) + " before this one");
    }
    if (parent->depth == deepestTree) {
        refuse("the tree is deeper than " + std::to_string(deepestTree) + " levels");
    }
    lastParent_ = parent;
    object_->parent = parent;
    object_->depth = static_cast<std::uint8_t>(parent->depth + 1);
    (parent->son == nullptr ? parent->son : parent->lastSon->brother) = object_;
    parent->lastSon = object_;
}

void ObjectReader::readNodeId(od::value& value) {
    const std::int64_t id = objectId(value);
    if (!model_->nodeIds.emplace(id, object_).second) {
        refuse("id " + std::to_string(id) + " is that of another node");
    }
    model_->idsOfNodes.emplace(object_, id);
    object_->hasNodeId = true;
}

void ObjectReader::readAttributes(od::value& value) {
    const AttributeList list = attributes_.read(value);
    object_->records = list.records;
    object_->recordCount = list.count;
}

void ObjectReader::readKind(od::value& value) {
    const RawText name = rawText(value);
    const int row = name.plain ? kindNames().find(name.data, name.size) : Shape::none;
    if (row == Shape::none) {
        refuseValue(value, "the name of a kind");
    }
    object_->kind = static_cast<PartKind>(row + static_cast<int>(PartKind::None));
}

Property& ObjectReader::addProperty(const MemberRow& row, std::size_t count) {
    Property& property = properties_.emplace_back();
    property.member = row.member;
    property.count = static_cast<std::uint32_t>(count);
    return property;
}

void ObjectReader::readVector(const MemberRow& row, od::value& value) {
    double numbers[3];
    readTriple(value, {&numbers[0], &numbers[1], &numbers[2]});
    addProperty(row).vector = model_->arena.copy(std::span<const double>(numbers));
}

ReferenceList ObjectReader::readReferenceList(od::value& value) {
    references_.clear();
    eachElement(value, "an array of object ids", [&](od::value& id) { references_.push_back({.id = objectId(id)}); });
    return {model_->arena.copy(references_), static_cast<std::uint32_t>(references_.size())};
}

void ObjectReader::readReferences(const MemberRow& row, od::value& value) {
    const ReferenceList list = readReferenceList(value);
    addProperty(row, list.count).references = list.items;
}

void ObjectReader::readKeyPoints(const MemberRow& row, od::value& value) {
    using Row = shapes::KeyPoint;
    std::vector<HxDbSmrtlnPoint> points;
    eachElement(value, "an array of key points", [&](od::value& element) {
        std::int16_t number = 0;
        HxGePoint3D at;
        eachMember(element, shapes::keyPoint(), texts_->unescape(), [&](int member, od::value& inner) {
            if (static_cast<Row>(member) == Row::No) {
                number = static_cast<std::int16_t>(wholeNumber(inner, 0, lastPointNumber));
            } else {
                readTriple(inner, at);
            }
        });
        points.emplace_back(number, 0, at);
    });
    addProperty(row, points.size()).points = model_->arena.copy(points);
}

void ObjectReader::readInsulation(const MemberRow& row, od::value& value) {
    using Row = shapes::Insulation;
    Insulation insulation;
    eachMember(value, shapes::insulation(), texts_->unescape(), [&](int member, od::value& inner) {
        switch (static_cast<Row>(member)) {
        case Row::Thickness:
            insulation.thickness = finiteNumber(inner);
            break;
        case Row::Material:
            insulation.material = texts_->keep(inner);
            break;
        case Row::Code:
            insulation.code = texts_->keep(inner);
            break;
        }
    });
    addProperty(row).insulation = model_->arena.copy(std::span<const Insulation>(&insulation, 1));
}

void ObjectReader::readEnds(const MemberRow& row, od::value& value) {
    std::vector<TubeEnd> ends;
    eachElement(value, "an array of ends", [&](od::value& element) { ends.push_back(readEnd(element)); });
    addProperty(row, ends.size()).ends = model_->arena.copy(ends);
}

TubeEnd ObjectReader::readEnd(od::value& value) {
    using Row = shapes::End;
    TubeEnd end;
    eachMember(value, shapes::end(), texts_->unescape(), [&](int member, od::value& inner) {
        switch (static_cast<Row>(member)) {
        case Row::Size:
            end.size = texts_->keep(inner);
            break;
        case Row::EndType:
            end.endType = texts_->keep(inner);
            break;
        case Row::Outer:
            end.outer = finiteNumber(inner);
            end.hasOuter = true;
            break;
        case Row::Inner:
            end.inner = finiteNumber(inner);
            break;
        case Row::Section:
            end.section = static_cast<std::int32_t>(wholeNumber(inner, 0, largestSection));
            break;
        }
    });
    return end;
}

void ObjectReader::readBranches(const MemberRow& row, od::value& value) {
    std::vector<ReferenceList> branches;
    eachElement(value, "an array of branches",
                [&](od::value& element) { branches.push_back(readReferenceList(element)); });
    addProperty(row, branches.size()).branches = model_->arena.copy(branches);
}

void ObjectReader::readRuns(const MemberRow& row, od::value& value) {
    std::vector<PipeRun> runs;
    std::set<std::string_view> names;
    eachElement(value, "an array of runs", [&](od::value& element) {
        const PipeRun& run = runs.emplace_back(readRun(element));
        if (!names.insert(run.name).second) {
            refuse("a run of this name stands before it");
        }
    });
    addProperty(row, runs.size()).runs = model_->arena.copy(runs);
}

PipeRun ObjectReader::readRun(od::value& value) {
    using Row = shapes::Run;
    PipeRun run;
    eachMember(value, shapes::run(), texts_->unescape(), [&](int member, od::value& inner) {
        switch (static_cast<Row>(member)) {
        case Row::Name:
            run.name = texts_->keep(inner);
            break;
        case Row::Items:
            run.items = readReferenceList(inner);
            break;
        case Row::Attrs:
            run.attributes = attributes_.read(inner);
            break;
        }
    });
    return run;
}

void ObjectReader::readPoints(od::value& value) {
    points_.clear();
    connections_.clear();
    eachElement(value, "an array of points", [&](od::value& element) {
        const HxDbSmrtlnPoint point = readPoint(element, points_.size());
        if (numbersInUse_.test(static_cast<std::size_t>(point.number()))) {
            refuse("number " + std::to_string(point.number()) + " stands twice");
        }
        numbersInUse_.set(static_cast<std::size_t>(point.number()));
        points_.push_back(point);
    });
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
}

HxDbSmrtlnPoint ObjectReader::readPoint(od::value& value, std::size_t index) {
    using Row = shapes::Point;
    const std::size_t firstConnection = connections_.size();
    std::int16_t number = 0;
    HxGePoint3D at;
    Plant::Flow flow = 0;
    eachMember(value, *pointShape_, texts_->unescape(), [&](int row, od::value& member) {
        switch (static_cast<Row>(row)) {
        case Row::No:
            number = static_cast<std::int16_t>(wholeNumber(member, 0, lastPointNumber));
            break;
        case Row::At:
            readTriple(member, at);
            break;
        case Row::Flow:
            flow = readFlow(member);
            break;
        case Row::To:
            readConnections(member, index);
            break;
        }
    });
    for (std::size_t i = firstConnection; i < connections_.size(); ++i) {
        connections_[i].number = number;
    }
    return {number, flow, at};
}

void ObjectReader::readConnections(od::value& value, std::size_t point) {
    if (typeOf(value) != od::json_type::array) {
        return addConnection(value, point, 0, false);
    }
    std::size_t element = 0;
    eachElement(value, "an object id or an array of object ids",
                [&](od::value& id) { addConnection(id, point, element++, true); });
}

void ObjectReader::addConnection(od::value& id, std::size_t point, std::size_t element, bool inArray) {
    Connection& connection = connections_.emplace_back();
    connection.to.id = objectId(id);
    if (connection.to.id == object_->id) {
        refuse("an object does not hang at itself");
    }
    connection.point = static_cast<std::uint16_t>(point);
    connection.element = static_cast<std::uint32_t>(element);
    connection.inArray = inArray;
}

}  // namespace plant
