#include "platform/entities.h"

#include "plant/entities/serial.h"
#include "plant/shapes/builder.h"

#include <memory>
#include <utility>

namespace plant {

namespace {

// Colour of an entity whose primitive has none of its own.
constexpr int usualColor = 7;
constexpr int firstOwnColor = 1;
constexpr int lastOwnColor = 254;

int entityColor(const HextPrimary& primitive) {
    const int color = primitive.getColor();
    return color >= firstOwnColor && color <= lastOwnColor ? color : usualColor;
}

TlDbEntity* coloured(TlDbEntity* entity, const HextPrimary& primitive) {
    entity->setColorIndex(entityColor(primitive));
    return entity;
}

// The entity of a primitive, which somebody else owns or the entity shares.
class ParametricSolid final : public ORNACadPrimary3D {
public:
    explicit ParametricSolid(const HextPrimary3D& primitive) : primitive_(&primitive) {}
    explicit ParametricSolid(std::shared_ptr<const HextPrimary3D> primitive)
        : primitive_(primitive.get()), shared_(std::move(primitive)) {}

    Tl::ErrorStatus getSolid(TlDb3dSolid*& solid) const override {
        solid = nullptr;
        tolmar::Body body;
        const Tl::ErrorStatus status = buildBody(*primitive_, body);
        if (status == Tl::eOk) {
            solid = new TlDb3dSolid(std::move(body));
            solid->setColorIndex(colorIndex());
        }
        return status;
    }

private:
    const HextPrimary3D* primitive_;
    std::shared_ptr<const HextPrimary3D> shared_;
};

TlDbEntity* fromText(const HextPrimaryText& text) {
    return coloured(new TlDbText({text.text, text.position, text.normal, text.rotation, text.height, text.style}),
                    text);
}

}  // namespace

ORNACadPrimary3D* newParametricSolid(std::shared_ptr<const HextPrimary3D> primitive) {
    const int color = entityColor(*primitive);
    auto* entity = new ParametricSolid(std::move(primitive));
    entity->setColorIndex(color);
    return entity;
}

}  // namespace plant

TlDbEntity* transHextPrimary3D(const HextPrimary3D* primitive) {
    if (primitive == nullptr) {
        return nullptr;
    }
    if (const HextPrimaryAcad* content = HextPrimaryAcad::cast(primitive)) {
        return hxcad::setEntitySerialString(content->getSer());
    }
    if (const HextAcadBlockReference* block = HextAcadBlockReference::cast(primitive)) {
        return hxcad::setEntitySerialString(block->getSer());
    }
    return plant::coloured(new plant::ParametricSolid(*primitive), *primitive);
}

TlDbEntity* transHextPrimary(const HextPrimary* primitive) {
    if (primitive == nullptr) {
        return nullptr;
    }
    if (const HextPrimary3D* solid = HextPrimary3D::cast(primitive)) {
        return transHextPrimary3D(solid);
    }
    if (const HextPrimaryLine* line = HextPrimaryLine::cast(primitive)) {
        return plant::coloured(new TlDbLine(line->startPoint, line->endPoint), *line);
    }
    const HextPrimaryText* text = HextPrimaryText::cast(primitive);
    return text != nullptr ? plant::fromText(*text) : nullptr;
}

TransHextPrimary::TransHextPrimary(const HextPrimaryArray& list) {
    entities_.reserve(list.size());
    for (const HextPrimary* primitive : list) {
        entities_.push_back(transHextPrimary(primitive));
    }
}

TlDbEntity* hxcad::trans_solid_to_primary(const HextPrimary* primitive) {
    const HextPrimaryAcadSolid3D* content = HextPrimaryAcadSolid3D::cast(primitive);
    return content != nullptr ? setEntitySerialString(content->getSer()) : nullptr;
}

TlDbEntity* hxcad::setEntitySerialString(std::string_view serial) {
    return plant::readEntity(serial);
}
