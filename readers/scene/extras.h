// What a scene keeps in `extras`, which glTF leaves to its writers: attributes, texts, grids, and colours of materials.
#pragma once

#include "readers/object.h"
#include "readers/scene/reader.h"

#include <memory>

namespace readers::scene {

class ExtrasReader {
public:
    ExtrasReader();
    ~ExtrasReader();
    ExtrasReader(const ExtrasReader&) = delete;
    ExtrasReader& operator=(const ExtrasReader&) = delete;

    // Sets class and attributes of an object by the extras of its node; what is not as it should be is left out. A grid
    // has the class "grid" and its origin, axes and levels for attributes.
    void read(const std::string& extras, Object& object);
    // Adds the texts of a shape.
    void readTexts(const std::string& extras, Object& object);
    Look lookOf(const Material& material);

private:
    struct Parser;
    std::unique_ptr<Parser> parser_;
};

}  // namespace readers::scene
