#include "sources/json/primitive_reader.h"

namespace plant {

namespace {

template <typename Value>
Value& at(const FieldRow& field, HextPrimary& primitive) {
    return *static_cast<Value*>(field.place(primitive));
}

HextVertex readVertex(od::value& value) {
    constexpr std::string_view expected = "[kind, x, y, z]";
    constexpr std::int64_t lastKind = 7;
    double numbers[3] = {};
    HextVertex vertex;
    std::size_t count = 0;
    eachElement(value, expected, [&](od::value& element) {
        if (count == 0) {
            vertex.kind = static_cast<std::int16_t>(wholeNumber(element, 1, lastKind));
        } else if (count <= std::size(numbers)) {
            numbers[count - 1] = finiteNumber(element);
        } else {
            refuse(std::string(expected) + " expected, more found");
        }
        ++count;
    });
    if (count != std::size(numbers) + 1) {
        refuse(std::string(expected) + " expected, " + std::to_string(count) + " values found");
    }
    vertex.point = {numbers[0], numbers[1], numbers[2]};
    return vertex;
}

HextVertexList readOutline(od::value& value) {
    HextVertexList list;
    eachElement(value, "an array of [kind, x, y, z]", [&](od::value& element) { list.push_back(readVertex(element)); });
    return list;
}

std::vector<HextVertexList> readOutlines(od::value& value) {
    std::vector<HextVertexList> lists;
    eachElement(value, "an array of outlines", [&](od::value& element) { lists.push_back(readOutline(element)); });
    return lists;
}

// Reads a value of any kind, so that what is kept as text is known to be JSON.
void readAnything(od::value& value, Unescaper& unescape, int depth) {
    constexpr int deepest = 32;
    if (depth > deepest) {
        refuse("nested deeper than " + std::to_string(deepest));
    }
    switch (typeOf(value)) {
    case od::json_type::object:
        eachEntry(value, "an object",
                  [&](const RawText&, od::value& inner) { readAnything(inner, unescape, depth + 1); });
        break;
    case od::json_type::array:
        eachElement(value, "an array", [&](od::value& inner) { readAnything(inner, unescape, depth + 1); });
        break;
    case od::json_type::string:
        unescape(rawText(value));
        break;
    case od::json_type::number:
        finiteNumber(value);
        break;
    case od::json_type::boolean:
        trueOrFalse(value);
        break;
    case od::json_type::null:
        if (bool isNull = false; value.is_null().get(isNull) != simdjson::SUCCESS || !isNull) {
            refuseValue(value, "null");
        }
        break;
    }
}

}  // namespace

void PrimitiveReader::read(od::value& value) {
    builder_->shape();
    eachElement(value, "an array of primitives", [&](od::value& element) { readPrimitive(element); });
}

void PrimitiveReader::readPrimitive(od::value& value) {
    Current current;
    const NameRows* names = &typeNames();
    od::object object = objectOf(value, "a primitive");
    eachMember(object, names, *unescape_, [&](int row, od::value& member) {
        if (current.type == nullptr) {
            begin(member, current);
            names = &current.type->names;
        } else {
            readField(member, current.type->fields[static_cast<std::size_t>(row)], *current.primitive);
        }
    });
}

void PrimitiveReader::begin(od::value& typeName, Current& current) {
    const RawText name = rawText(typeName);
    const int row = name.plain ? primitiveNames().find(name.data, name.size) : NameRows::none;
    if (row == NameRows::none) {
        refuseValue(typeName, "the name of a primitive class");
    }
    current.type = &primitiveClasses()[static_cast<std::size_t>(row)];
    current.primitive = &builder_->newPrimitive(*current.type);
}

void PrimitiveReader::readField(od::value& value, const FieldRow& field, HextPrimary& primitive) {
    switch (field.type) {
    case FieldType::ClassName:
        break;
    case FieldType::Double:
        at<double>(field, primitive) = finiteNumber(value);
        break;
    case FieldType::Point:
        readTriple(value, at<HxGePoint3D>(field, primitive));
        break;
    case FieldType::Vector:
        readTriple(value, at<HxGeVector3D>(field, primitive));
        break;
    case FieldType::Int32:
        at<std::int32_t>(field, primitive) = static_cast<std::int32_t>(wholeNumber(value, field.low, field.high));
        break;
    case FieldType::Int16:
        at<std::int16_t>(field, primitive) = static_cast<std::int16_t>(wholeNumber(value, field.low, field.high));
        break;
    case FieldType::PlatformText:
        unescape_->tell(rawText(value), [&](auto text) { at<const char*>(field, primitive) = builder_->keep(text); });
        break;
    case FieldType::OwnText:
        at<std::string>(field, primitive) = inCodePage((*unescape_)(rawText(value)));
        break;
    case FieldType::Outline:
        at<HextOwned<HextVertexList>>(field, primitive) = readOutline(value);
        break;
    case FieldType::Outlines:
        at<HextOwned<std::vector<HextVertexList>>>(field, primitive) = readOutlines(value);
        break;
    case FieldType::Entity:
        at<std::string>(field, primitive) = entityText(value);
        break;
    }
}

// The JSON text of an entity as it stands in the file, or what a text holds, in UTF-8 both.
std::string PrimitiveReader::entityText(od::value& value) {
    if (typeOf(value) == od::json_type::string) {
        return std::string((*unescape_)(rawText(value)));
    }
    if (typeOf(value) != od::json_type::object) {
        refuseValue(value, "an object or a text");
    }
    const char* start = value.raw_json_token().data();
    readAnything(value, *unescape_, 0);
    const char* end = nullptr;
    check(document_->current_location().get(end));
    while (end[-1] != '}') {
        --end;
    }
    return {start, static_cast<std::size_t>(end - start)};
}

}  // namespace plant
