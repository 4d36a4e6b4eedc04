#include "sources/json/object_reader.h"

namespace plant {

namespace {

std::int8_t readFlow(od::value& value) {
    std::int64_t flow;
    if (value.get_int64().get(flow) != simdjson::SUCCESS || flow < 0 || flow > 2) {
        refuseValue(value, "1, 2 or 0");
    }
    return static_cast<std::int8_t>(flow);
}

std::int16_t readPointNumber(od::value& value) {
    return static_cast<std::int16_t>(wholeNumber(value, 0, largestPointNumber));
}

}  // namespace

void ObjectReader::read(od::value& value) {
    unescape_->forget();
    Identity identity;
    const NameRows* names = &identityNames();
    // The first rows are those of the identity, whatever the family.
    const FamilyTable* rows = &familyTable(Family::Plain);
    bool isBegun = false;
    od::object object = objectOf(value, "an object");
    eachMember(object, names, *unescape_, [&](int number, od::value& member) {
        const MemberRow& row = rows->members[static_cast<std::size_t>(number)];
        if (isBegun) [[likely]] {
            return readMember(row, member);
        }
        readIdentity(row, member, identity);
        if (identity.id != 0 && identity.type != nullptr) {
            builder_->beginObject(identity.id, *identity.type);
            rows = &familyTable(identity.type->family);
            names = &rows->names;
            isBegun = true;
        }
    });
    builder_->endObject();
}

void ObjectReader::readIdentity(const MemberRow& row, od::value& value, Identity& identity) {
    if (row.reading == Reading::Id) {
        identity.id = objectId(value);
        builder_->checkNewId(identity.id);
        return;
    }
    const RawText name = rawText(value);
    const int number = name.plain ? classNames().find(name.data, name.size) : NameRows::none;
    if (number == NameRows::none) {
        refuseValue(value, "the name of a class");
    }
    identity.type = &classRows()[static_cast<std::size_t>(number)];
}

void ObjectReader::readMember(const MemberRow& row, od::value& value) {
    switch (row.reading) {
    case Reading::Parent:
        return builder_->parent(objectId(value));
    case Reading::Name:
        return unescape_->tell(rawText(value), [&](auto text) { builder_->name(text); });
    case Reading::NodeId:
        return builder_->nodeId(objectId(value));
    case Reading::Attributes:
        return attributes_.read(value, builder_->attributes());
    case Reading::Color:
        return builder_->color(static_cast<std::int16_t>(wholeNumber(value, row.low, row.high)));
    case Reading::Available:
        return builder_->available(trueOrFalse(value));
    case Reading::Kind:
        return readKind(value);
    case Reading::Primitives:
        return primitives_.read(value);
    case Reading::Points:
    case Reading::KeyPoints:
    case Reading::Ends:
    case Reading::Branches:
    case Reading::Runs:
        return readRecords(row, value);
    default:
        return readProperty(row, value);
    }
}

void ObjectReader::readProperty(const MemberRow& row, od::value& value) {
    switch (row.reading) {
    case Reading::Text:
        return unescape_->tell(rawText(value),
                               [&](auto text) { builder_->text(toldAs<TextMember>(row.member), text); });
    case Reading::Whole:
        return builder_->whole(toldAs<WholeMember>(row.member), wholeNumber(value, row.low, row.high));
    case Reading::Number:
        return builder_->number(toldAs<NumberMember>(row.member), finiteNumber(value));
    case Reading::Vector:
        return builder_->vector(toldAs<VectorMember>(row.member), readTriple(value));
    case Reading::Reference:
        return builder_->reference(toldAs<ReferenceMember>(row.member), objectId(value));
    case Reading::References:
        return builder_->references(toldAs<ListMember>(row.member), readIds(value));
    case Reading::Insulation:
        return readInsulation(value);
    default:
        return;
    }
}

void ObjectReader::readRecords(const MemberRow& row, od::value& value) {
    switch (row.reading) {
    case Reading::Points:
        return eachElement(value, "an array of points", [&](od::value& element) { readPoint(element); });
    case Reading::KeyPoints:
        builder_->keyPoints();
        return eachElement(value, "an array of key points", [&](od::value& element) { readKeyPoint(element); });
    case Reading::Ends:
        return eachElement(value, "an array of ends", [&](od::value& element) { readEnd(element); });
    case Reading::Branches:
        return eachElement(value, "an array of branches",
                           [&](od::value& element) { builder_->branch(readIds(element)); });
    case Reading::Runs:
        return eachElement(value, "an array of runs", [&](od::value& element) { readRun(element); });
    default:
        return;
    }
}

void ObjectReader::readKind(od::value& value) {
    const RawText name = rawText(value);
    const int row = name.plain ? kindNames().find(name.data, name.size) : NameRows::none;
    if (row == NameRows::none) {
        refuseValue(value, "the name of a kind");
    }
    builder_->kind(static_cast<PartKind>(row + static_cast<int>(PartKind::None)));
}

// Valid until the next list is read.
const std::vector<ObjectId>& ObjectReader::readIds(od::value& value) {
    ids_.clear();
    eachElement(value, "an array of object ids", [&](od::value& id) { ids_.push_back(objectId(id)); });
    return ids_;
}

void ObjectReader::readKeyPoint(od::value& value) {
    using Row = rows::KeyPoint;
    std::int16_t number = 0;
    Triple at{};
    eachMember(value, rows::keyPoint(), *unescape_, [&](int row, od::value& member) {
        if (static_cast<Row>(row) == Row::No) {
            number = readPointNumber(member);
        } else {
            at = readTriple(member);
        }
    });
    builder_->keyPoint(number, at);
}

void ObjectReader::readInsulation(od::value& value) {
    using Row = rows::Insulation;
    InsulationFacts facts;
    eachMember(value, rows::insulation(), *unescape_, [&](int row, od::value& member) {
        switch (static_cast<Row>(row)) {
        case Row::Thickness:
            facts.thickness = finiteNumber(member);
            break;
        case Row::Material:
            facts.material = (*unescape_)(rawText(member));
            break;
        case Row::Code:
            facts.code = (*unescape_)(rawText(member));
            break;
        }
    });
    builder_->insulation(facts);
}

void ObjectReader::readEnd(od::value& value) {
    using Row = rows::End;
    TubeEndFacts facts;
    eachMember(value, rows::end(), *unescape_, [&](int row, od::value& member) {
        switch (static_cast<Row>(row)) {
        case Row::Size:
            facts.size = (*unescape_)(rawText(member));
            break;
        case Row::EndType:
            facts.endType = (*unescape_)(rawText(member));
            break;
        case Row::Outer:
            facts.outer = finiteNumber(member);
            break;
        case Row::Inner:
            facts.inner = finiteNumber(member);
            break;
        case Row::Section:
            facts.section = static_cast<std::int32_t>(wholeNumber(member, 0, largestSection));
            break;
        }
    });
    builder_->tubeEnd(facts);
}

void ObjectReader::readRun(od::value& value) {
    using Row = rows::Run;
    std::string_view name;
    ids_.clear();
    RecordKeeper& records = builder_->newRun();
    eachMember(value, rows::run(), *unescape_, [&](int row, od::value& member) {
        switch (static_cast<Row>(row)) {
        case Row::Name:
            name = (*unescape_)(rawText(member));
            break;
        case Row::Items:
            readIds(member);
            break;
        case Row::Attrs:
            attributes_.read(member, records);
            break;
        }
    });
    builder_->nameRun(name, ids_);
}

void ObjectReader::readPoint(od::value& value) {
    using Row = rows::Point;
    PointFacts facts;
    ids_.clear();
    eachMember(value, *pointNames_, *unescape_, [&](int row, od::value& member) {
        switch (static_cast<Row>(row)) {
        case Row::No:
            facts.no = readPointNumber(member);
            break;
        case Row::At:
            facts.at = readTriple(member);
            break;
        case Row::Flow:
            facts.flow = readFlow(member);
            break;
        case Row::To:
            readConnections(member, facts);
            break;
        }
    });
    builder_->point(facts);
}

void ObjectReader::readConnections(od::value& value, PointFacts& point) {
    point.toIsArray = typeOf(value) == od::json_type::array;
    if (point.toIsArray) {
        eachElement(value, "an object id or an array of object ids",
                    [&](od::value& id) { ids_.push_back(objectId(id)); });
    } else {
        ids_.push_back(objectId(value));
    }
    point.to = ids_;
}

}  // namespace plant
