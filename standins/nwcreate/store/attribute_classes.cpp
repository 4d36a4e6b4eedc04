#include "nwcreate/store/attribute_classes.h"

#include "gltf/json_text.h"

#include <cstring>

namespace nwcreate {

namespace {

// Faster than the comparison of views, which goes unit by unit.
bool isEqual(std::u16string_view a, std::u16string_view b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0;
}

}  // namespace

std::uint32_t AttributeClasses::numberOf(std::u16string_view userName, std::u16string_view internalName) {
    if (isEqual(userName, last_.first) && isEqual(internalName, last_.second)) {
        return lastNumber_;
    }
    last_ = {std::u16string(userName), std::u16string(internalName)};
    const auto [place, isNew] = numbers_.try_emplace(last_, static_cast<std::uint32_t>(json_.size()));
    if (isNew) {
        gltf::JsonText json(json_.emplace_back());
        json.beginObject().key("user").string(userName).key("internal").string(internalName).endObject();
    }
    lastNumber_ = place->second;
    return lastNumber_;
}

void AttributeClasses::clear() {
    numbers_.clear();
    json_.clear();
    last_ = {u"none", u"yet"};
    lastNumber_ = numberOf({}, {});
}

}  // namespace nwcreate
