#include "navisworks/properties/attribute.h"

#include "tolmar/code_page.h"

namespace nv {

namespace {

constexpr const char* className = "Orna属性";
constexpr const char16_t* internalClassName = u"OrnaProperty";

}  // namespace

OwnedAttribute newPropertyAttribute() {
    static const std::u16string wideClassName = tolmar::toWide(className);
    OwnedAttribute attribute(LiNwcPropertyAttributeCreate());
    LiNwcAttributeSetClassName(attribute.get(), wideClassName.c_str(), internalClassName);
    return attribute;
}

void addProperty(const Property& property, LiNwcPropertyAttribute attribute) {
    const OwnedData data(LiNwcDataCreate());
    LiNwcDataSetName(data.get(), tolmar::toWide(property.value).c_str(), tolmar::toWide(property.internalName).c_str());
    LiNwcPropertyAttributeAddProperty(attribute, tolmar::toWide(property.key).c_str(), u"", data.get());
}

void addProperties(std::span<const KVParams> list, LiNwcPropertyAttribute attribute) {
    std::string value;
    for (const KVParams& entry : list) {
        value.clear();
        appendKvText(value, entry);
        addProperty({entry.key, value}, attribute);
    }
}

}  // namespace nv
