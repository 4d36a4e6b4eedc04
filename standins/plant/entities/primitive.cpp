#include "plant/entities/primitive.h"

#include "plant/entities/json.h"
#include "plant/shapes/primitive_table.h"

#include <memory>

namespace plant {

namespace {

template <typename Value>
Value& at(const FieldRow& field, HextPrimary& primitive) {
    return *static_cast<Value*>(field.place(primitive));
}

HextVertex readVertex(simdjson::dom::element value) {
    constexpr std::int64_t firstKind = 1;
    constexpr std::int64_t lastKind = 7;
    const simdjson::dom::array array = arrayOf(value);
    if (array.size() != 4) {
        throw Unreadable();
    }
    HextVertex vertex;
    double numbers[3];
    std::size_t i = 0;
    for (const simdjson::dom::element element : array) {
        if (i == 0) {
            vertex.kind = static_cast<std::int16_t>(wholeOf(element, firstKind, lastKind));
        } else {
            numbers[i - 1] = numberOf(element);
        }
        ++i;
    }
    vertex.point = {numbers[0], numbers[1], numbers[2]};
    return vertex;
}

HextVertexList readOutline(simdjson::dom::element value) {
    HextVertexList list;
    for (const simdjson::dom::element vertex : arrayOf(value)) {
        list.push_back(readVertex(vertex));
    }
    return list;
}

std::vector<HextVertexList> readOutlines(simdjson::dom::element value) {
    std::vector<HextVertexList> lists;
    for (const simdjson::dom::element outline : arrayOf(value)) {
        lists.push_back(readOutline(outline));
    }
    return lists;
}

void readField(simdjson::dom::element value, const FieldRow& field, HextPrimary& primitive) {
    switch (field.type) {
    case FieldType::ClassName:
        break;
    case FieldType::Double:
        at<double>(field, primitive) = numberOf(value);
        break;
    case FieldType::Point:
        at<HxGePoint3D>(field, primitive) = pointOf(value);
        break;
    case FieldType::Vector:
        at<HxGeVector3D>(field, primitive) = pointOf(value).asVector();
        break;
    case FieldType::Int32:
        at<std::int32_t>(field, primitive) = static_cast<std::int32_t>(wholeOf(value, field.low, field.high));
        break;
    case FieldType::Int16:
        at<std::int16_t>(field, primitive) = static_cast<std::int16_t>(wholeOf(value, field.low, field.high));
        break;
    case FieldType::PlatformText:
        // The material of a primitive; its entity has none.
        textOf(value);
        break;
    case FieldType::Outline:
        at<HextOwned<HextVertexList>>(field, primitive) = readOutline(value);
        break;
    case FieldType::Outlines:
        at<HextOwned<std::vector<HextVertexList>>>(field, primitive) = readOutlines(value);
        break;
    case FieldType::OwnText:
    case FieldType::Entity:
        throw Unreadable();
    }
}

const PrimitiveClass& classOf(Members& members) {
    const std::string name = textOf(members.required("type"));
    for (const PrimitiveClass& row : primitiveClasses()) {
        if (row.record->isDerivedFrom(HextPrimary3D::desc()) && name == row.record->name()) {
            return row;
        }
    }
    throw Unreadable();
}

// A primitive in an arena of its own.
class Draft {
public:
    explicit Draft(const PrimitiveClass& row) : primitive_(row.construct(arena_)) {}
    ~Draft() { std::destroy_at(primitive_); }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    HextPrimary& primitive() { return *primitive_; }

private:
    Arena arena_;
    HextPrimary* primitive_;
};

}  // namespace

std::shared_ptr<const HextPrimary3D> readSolidPrimitive(simdjson::dom::element value) {
    Members members(value);
    const PrimitiveClass& row = classOf(members);
    Draft draft(row);
    for (const FieldRow& field : row.fields) {
        if (field.type == FieldType::ClassName) {
            continue;
        }
        if (field.required) {
            readField(members.required(field.name), field, draft.primitive());
        } else if (const simdjson::dom::element* member = members.find(field.name)) {
            readField(*member, field, draft.primitive());
        }
    }
    members.finish();
    return std::shared_ptr<const HextPrimary3D>(static_cast<const HextPrimary3D*>(draft.primitive().clone()));
}

}  // namespace plant
