// The property attribute that objects and managers carry in the scene.
#pragma once

#include "navisworks/library/handles.h"
#include "platform/kvparams.h"

#include <span>
#include <string>
#include <string_view>

namespace nv {

OwnedAttribute newPropertyAttribute();

// One property; texts are in the code page.
struct Property {
    std::string_view key;
    std::string_view value;
    std::string_view internalName = {};
};
void addProperty(const Property& property, LiNwcPropertyAttribute attribute);

// The entries of a list, with their values as text.
void addProperties(std::span<const KVParams> list, LiNwcPropertyAttribute attribute);

}  // namespace nv
