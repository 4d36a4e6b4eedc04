#include "rvm/shapes/object_material.h"

#include "platform/hxcom.h"
#include "platform/smrtln.h"

#include <array>

namespace rvm {

namespace {

constexpr std::array<std::uint32_t, 10> materials = {0, 25, 4, 5, 6, 7, 16, 17, 18, 19};
constexpr int inverseOf = 255;

int ownerColor(const HxDbObject& object) {
    const HextNameNode* owner = openAs<HextNameNode>(object.getOwnerId());
    return owner != nullptr ? owner->getColorIdx() : 0;
}

int tubeColor(const HxDbTubeModelSpec& tube) {
    const int color = ownerColor(tube);
    return smrtln::isValve(&tube) || smrtln::isPipe(&tube) ? color : inverseOf - color;
}

int ownColor(const HxDbSmrtlnEntity& object) {
    short configured = 0;
    const HxDbTubeWeld* weld = HxDbTubeWeld::cast(&object);
    const bool isConfigured = weld != nullptr && smrtln::getCurrentWeldConfigColor(weld, configured);
    return isConfigured ? configured : object.getColorIdx();
}

}  // namespace

std::uint32_t rvmMaterial(int colorIndex) {
    if (colorIndex <= 0) {
        return 0;
    }
    const auto index = static_cast<std::size_t>(colorIndex);
    return index < materials.size() ? materials[index] : static_cast<std::uint32_t>(colorIndex);
}

// Serialised content starts from the colour of its name node, but its own colour takes that place at once: it is no
// tube model, and only a tube model without a colour keeps the name node's.
std::uint32_t objectMaterial(const HxDbSmrtlnEntity& object) {
    const HxDbTubeModelSpec* tube = HxDbTubeModelSpec::cast(&object);
    return rvmMaterial(tube != nullptr ? tubeColor(*tube) : ownColor(object));
}

}  // namespace rvm
