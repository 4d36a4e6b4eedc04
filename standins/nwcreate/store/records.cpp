#include "nwcreate/store/records.h"

namespace nwcreate {

void NodeRecord::clear() {
    store = nullptr;
    name.clear();
    children.clear();
    attributes.clear();
    parent = noSlot;
    place = 0;
    openChildren = 0;
    stream = noSlot;
    isRoot = false;
    isGeometry = false;
    isLayer = false;
    shape.clear();
}

void AttributeRecord::clear() {
    isMaterial = false;
    material = Material();
    classNumber = 0;
    properties.clear();
    numberedIn = nullptr;
}

std::uint32_t AttributeRecord::numberIn(SceneStore& store) {
    if (numberedIn != &store) {
        number = store.materialNumber(material);
        numberedIn = &store;
    }
    return number;
}

void StreamRecord::clear() {
    geometry = noSlot;
    isInSection = false;
    isInText = false;
    takesColor = false;
    section.clear();
    transforms.clear();
    transform = unitMatrix;
    isMoved = false;
}

}  // namespace nwcreate
