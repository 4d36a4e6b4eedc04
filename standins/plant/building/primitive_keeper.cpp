#include "plant/building/primitive_keeper.h"

#include "plant/building/told_checks.h"
#include "plant/refusal.h"

namespace plant {

namespace {

template <typename Value>
Value& at(const FieldRow& field, HextPrimary& primitive) {
    return *static_cast<Value*>(field.place(primitive));
}

template <typename Numbers>
void checkNumbers(const Numbers& numbers) {
    checkedTriple({numbers.x, numbers.y, numbers.z});
}

void checkOutline(const HextVertexList& outline) {
    constexpr std::int64_t lastKind = 7;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        within(i, [&] {
            checkedWhole(outline[i].kind, 1, lastKind);
            checkNumbers(outline[i].point);
        });
    }
}

}  // namespace

HextPrimary& PrimitiveKeeper::add(const PrimitiveClass& type, HextPrimary* primitive) {
    if (type.ownsMemory) {
        model_->withDestructor.push_back(primitive);
    }
    primitives_.push_back(primitive);
    return *primitive;
}

void PrimitiveKeeper::copy(const HextPrimary& primitive) {
    const PrimitiveClass* type = primitiveClassOf(primitive);
    if (type == nullptr) {
        refuse(std::string("a primitive of class ").append(primitive.isA()->name()).append(" cannot be kept"));
    }
    HextPrimary& copy = add(*type, type->copy(model_->arena, primitive));
    for (const FieldRow& field : type->fields) {
        within(field.name, [&] { takeOver(copy, field); });
    }
}

// Checks a field of a copy, and makes its text the model's.
void PrimitiveKeeper::takeOver(HextPrimary& copy, const FieldRow& field) {
    switch (field.type) {
    case FieldType::ClassName:
    case FieldType::Entity:
        break;
    case FieldType::Double:
        checkedNumber(at<double>(field, copy));
        break;
    case FieldType::Point:
        checkNumbers(at<HxGePoint3D>(field, copy));
        break;
    case FieldType::Vector:
        checkNumbers(at<HxGeVector3D>(field, copy));
        break;
    case FieldType::Int32:
        checkedWhole(at<std::int32_t>(field, copy), field.low, field.high);
        break;
    case FieldType::Int16:
        checkedWhole(at<std::int16_t>(field, copy), field.low, field.high);
        break;
    case FieldType::PlatformText:
        if (const char*& text = at<const char*>(field, copy); text != nullptr) {
            text = texts_->keep(std::string_view(text)).data();
        }
        break;
    case FieldType::OwnText:
        at<std::string>(field, copy) = inCodePage(at<std::string>(field, copy));
        break;
    case FieldType::Outline:
        if (const auto& outline = at<HextOwned<HextVertexList>>(field, copy)) {
            checkOutline(*outline);
        }
        break;
    case FieldType::Outlines:
        if (const auto& outlines = at<HextOwned<std::vector<HextVertexList>>>(field, copy)) {
            for (std::size_t i = 0; i < outlines->size(); ++i) {
                within(i, [&] { checkOutline((*outlines)[i]); });
            }
        }
        break;
    }
}

void PrimitiveKeeper::keep(ObjectData& object) {
    if (!primitives_.empty()) {
        object.primitives = model_->arena.copy(primitives_);
        object.primitiveCount = static_cast<std::uint32_t>(primitives_.size());
        object.hasShape = true;
    }
}

}  // namespace plant
