#include "navisworks/geometry/materials.h"

#include "exportbase/color_table.h"

namespace nv {

namespace {

constexpr float brightest = 255;

OwnedAttribute newMaterial(const Paint& paint) {
    float rgb[3] = {brightest, brightest, brightest};
    colorToRgb(paint.color, rgb);
    const double red = rgb[0] / brightest;
    const double green = rgb[1] / brightest;
    const double blue = rgb[2] / brightest;
    OwnedAttribute material(LiNwcMaterialCreate());
    LiNwcMaterialSetAmbientColor(material.get(), red, green, blue);
    LiNwcMaterialSetDiffuseColor(material.get(), red, green, blue);
    if (paint.opacity < opaque) {
        LiNwcMaterialSetTransparency(material.get(), opaque - paint.opacity);
    }
    return material;
}

}  // namespace

LiNwcMaterial Materials::of(const Paint& paint) {
    const auto place = made_.lower_bound(paint);
    if (place != made_.end() && place->first == paint) {
        return place->second.get();
    }
    return made_.emplace_hint(place, paint, newMaterial(paint))->second.get();
}

}  // namespace nv
