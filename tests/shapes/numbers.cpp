#include "shapes/numbers.h"

#include <algorithm>

namespace {

using plant::FieldType;

template <typename Triple>
void add(std::vector<double*>& numbers, Triple& triple) {
    numbers.insert(numbers.end(), {&triple.x, &triple.y, &triple.z});
}

void add(std::vector<double*>& numbers, HextVertexList& list) {
    for (HextVertex& vertex : list) {
        add(numbers, vertex.point);
    }
}

void addField(std::vector<double*>& numbers, FieldType type, void* place) {
    if (type == FieldType::Double) {
        numbers.push_back(static_cast<double*>(place));
    } else if (type == FieldType::Point) {
        add(numbers, *static_cast<HxGePoint3D*>(place));
    } else if (type == FieldType::Vector) {
        add(numbers, *static_cast<HxGeVector3D*>(place));
    } else if (type == FieldType::Outline) {
        auto& outline = *static_cast<HextOwned<HextVertexList>*>(place);
        if (outline) {
            add(numbers, *outline);
        }
    } else if (type == FieldType::Outlines) {
        auto& outlines = *static_cast<HextOwned<std::vector<HextVertexList>>*>(place);
        for (std::size_t i = 0; outlines && i < outlines->size(); ++i) {
            add(numbers, (*outlines)[i]);
        }
    }
}

}  // namespace

const plant::PrimitiveClass& classOf(const HextPrimary& primitive) {
    const auto classes = plant::primitiveClasses();
    return *std::find_if(classes.begin(), classes.end(),
                         [&](const plant::PrimitiveClass& row) { return row.record == primitive.isA(); });
}

std::vector<double*> numbersOf(HextPrimary& primitive) {
    std::vector<double*> numbers;
    for (const plant::FieldRow& field : classOf(primitive).fields) {
        addField(numbers, field.type, field.place != nullptr ? field.place(primitive) : nullptr);
    }
    return numbers;
}

std::vector<std::unique_ptr<HextPrimary>> oneOfEachClass() {
    plant::Arena arena;
    std::vector<std::unique_ptr<HextPrimary>> primitives;
    for (const plant::PrimitiveClass& row : plant::primitiveClasses()) {
        HextPrimary* made = row.construct(arena);
        primitives.emplace_back(made->clone());
        made->~HextPrimary();
        for (const plant::FieldRow& field : row.fields) {
            if (field.type == FieldType::Outline) {
                *static_cast<HextOwned<HextVertexList>*>(field.place(*primitives.back())) =
                    HextVertexList{{1, {1, 0, 0}}, {1, {2, 0, 0}}, {4, {1, 0, 5}}};
            }
        }
    }
    return primitives;
}
