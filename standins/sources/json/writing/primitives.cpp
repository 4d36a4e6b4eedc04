#include "sources/json/writing/primitives.h"

#include "plant/refusal.h"
#include "plant/shapes/primitive_table.h"

#include <algorithm>
#include <string>
#include <vector>

namespace plant {

namespace {

template <typename Value>
const Value& valueOf(const FieldRow& row, HextPrimary& primitive) {
    return *static_cast<const Value*>(row.place(primitive));
}

// Whether a field stands in the file.
enum class Stands : std::uint8_t { Always, WhereItDiffers, WithTheAxes };

Stands standsOf(const FieldRow& row, const PrimitiveClass& type) {
    // What a text shows depends on where it faces, so that is told even where it is up.
    const bool facesOfText = type.record == HextPrimaryText::desc() && row.type == FieldType::Vector;
    if (row.required || facesOfText) {
        return Stands::Always;
    }
    return row.type == FieldType::Vector ? Stands::WithTheAxes : Stands::WhereItDiffers;
}

bool isOfAllClasses(const FieldRow& row) {
    return row.name == "color" || row.name == "handedness" || row.name == "material";
}

template <typename Triple>
bool sameTriple(const FieldRow& row, HextPrimary& one, HextPrimary& other) {
    const auto& a = valueOf<Triple>(row, one);
    const auto& b = valueOf<Triple>(row, other);
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

template <typename Value>
bool sameValue(const FieldRow& row, HextPrimary& one, HextPrimary& other) {
    return valueOf<Value>(row, one) == valueOf<Value>(row, other);
}

// No class has a list, or a text of the platform, by default.
template <typename Pointer>
bool isAbsent(const FieldRow& row, HextPrimary& primitive) {
    return !valueOf<Pointer>(row, primitive);
}

bool equalsDefault(const FieldRow& row, HextPrimary& primitive, HextPrimary& usual) {
    switch (row.type) {
    case FieldType::Double:
        return sameValue<double>(row, primitive, usual);
    case FieldType::Point:
        return sameTriple<HxGePoint3D>(row, primitive, usual);
    case FieldType::Vector:
        return sameTriple<HxGeVector3D>(row, primitive, usual);
    case FieldType::Int32:
        return sameValue<std::int32_t>(row, primitive, usual);
    case FieldType::Int16:
        return sameValue<std::int16_t>(row, primitive, usual);
    case FieldType::PlatformText:
        return isAbsent<const char*>(row, primitive);
    case FieldType::Outline:
        return isAbsent<HextOwned<HextVertexList>>(row, primitive);
    case FieldType::Outlines:
        return isAbsent<HextOwned<std::vector<HextVertexList>>>(row, primitive);
    case FieldType::OwnText:
    case FieldType::Entity:
        return sameValue<std::string>(row, primitive, usual);
    case FieldType::ClassName:
        break;
    }
    return false;
}

void writeOutline(OutputText& text, const HextVertexList& outline) {
    char before = '[';
    for (const HextVertex& vertex : outline) {
        text.raw(before).raw('[').whole(vertex.kind).raw(',');
        text.numbers(vertex.point.x, vertex.point.y, vertex.point.z).raw(']');
        before = ',';
    }
    text.raw(outline.empty() ? "[]" : "]");
}

void writeOutlines(OutputText& text, const std::vector<HextVertexList>& outlines) {
    text.raw('[');
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        text.raw(i == 0 ? "" : ",");
        writeOutline(text, outlines[i]);
    }
    text.raw(']');
}

template <typename Triple>
void writeTriple(OutputText& text, const Triple& triple) {
    text.raw('[').numbers(triple.x, triple.y, triple.z).raw(']');
}

}  // namespace

struct PrimitiveWriter::Field {
    const FieldRow* row;
    Stands stands;
    std::string opening;  // `,"diameter":`
};

// A class of the table, prepared for writing.
struct PrimitiveWriter::Class {
    const TlRxClass* record;
    std::string opening;  // `{"type":"HextCylinder3D"`
    std::vector<Field> fields;
    HextPrimary* usual;  // with all defaults
    bool hasAxes = false;

    Class(const PrimitiveClass& type, Arena& arena)
        : record(type.record), opening(std::string("{\"type\":\"") + type.record->name() + "\""),
          usual(type.construct(arena)) {
        for (const FieldRow& row : type.fields) {
            if (row.type != FieldType::ClassName) {
                fields.push_back({&row, standsOf(row, type), ",\"" + std::string(row.name) + "\":"});
                hasAxes = hasAxes || fields.back().stands == Stands::WithTheAxes;
            }
        }
        std::stable_partition(fields.begin(), fields.end(), [](const Field& f) { return !isOfAllClasses(*f.row); });
    }

    bool stands(const Field& field, HextPrimary& primitive) const {
        switch (field.stands) {
        case Stands::Always:
            return true;
        case Stands::WithTheAxes:
            return axesDiffer(primitive);
        case Stands::WhereItDiffers:
            break;
        }
        return !equalsDefault(*field.row, primitive, *usual);
    }

private:
    bool axesDiffer(HextPrimary& primitive) const {
        return std::any_of(fields.begin(), fields.end(), [&](const Field& field) {
            return field.stands == Stands::WithTheAxes && !equalsDefault(*field.row, primitive, *usual);
        });
    }
};

PrimitiveWriter::PrimitiveWriter(OutputText& text) : text_(&text) {}

const PrimitiveWriter::Class& PrimitiveWriter::classOf(const HextPrimary& primitive) {
    static const std::vector<Class> classes = [] {
        static Arena arena;
        std::vector<Class> prepared;
        for (const PrimitiveClass& type : primitiveClasses()) {
            prepared.emplace_back(type, arena);
        }
        return prepared;
    }();
    const TlRxClass* record = primitive.isA();
    const auto found = std::find_if(classes.begin(), classes.end(), [&](const Class& c) { return c.record == record; });
    if (found == classes.end()) {
        refuse(std::string("a model file has no ") + record->name());
    }
    return *found;
}

void PrimitiveWriter::write(const HextPrimary& primitive) {
    if (last_ == nullptr || last_->record != primitive.isA()) {
        last_ = &classOf(primitive);
    }
    // The table gives places to read from and to write to.
    auto& places = const_cast<HextPrimary&>(primitive);
    text_->raw(last_->opening);
    for (const Field& one : last_->fields) {
        if (last_->stands(one, places)) {
            text_->raw(one.opening);
            field(one, places);
        }
    }
    text_->raw('}');
}

void PrimitiveWriter::field(const Field& field, HextPrimary& primitive) {
    const FieldRow& row = *field.row;
    switch (row.type) {
    case FieldType::ClassName:
        break;
    case FieldType::Double:
        text_->number(valueOf<double>(row, primitive));
        break;
    case FieldType::Point:
        writeTriple(*text_, valueOf<HxGePoint3D>(row, primitive));
        break;
    case FieldType::Vector:
        writeTriple(*text_, valueOf<HxGeVector3D>(row, primitive));
        break;
    case FieldType::Int32:
        text_->whole(valueOf<std::int32_t>(row, primitive));
        break;
    case FieldType::Int16:
        text_->whole(valueOf<std::int16_t>(row, primitive));
        break;
    case FieldType::PlatformText:
        text_->quoted(valueOf<const char*>(row, primitive));
        break;
    case FieldType::OwnText:
        text_->quoted(valueOf<std::string>(row, primitive));
        break;
    case FieldType::Outline:
        writeOutline(*text_, *valueOf<HextOwned<HextVertexList>>(row, primitive));
        break;
    case FieldType::Outlines:
        writeOutlines(*text_, *valueOf<HextOwned<std::vector<HextVertexList>>>(row, primitive));
        break;
    case FieldType::Entity:
        entity(valueOf<std::string>(row, primitive));
        break;
    }
}

void PrimitiveWriter::entity(const std::string& serial) {
    if (entities_.canStand(serial)) {
        text_->raw(serial);
    } else {
        text_->quoted(serial);
    }
}

}  // namespace plant
