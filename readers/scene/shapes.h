// Meshes of a scene as solids.
#pragma once

#include "readers/object.h"
#include "readers/scene/reader.h"

namespace readers::scene {

class ShapeReader {
public:
    // Both must outlive the reader.
    ShapeReader(const Scene& scene, Findings& findings);

    // Fills form, look, points and indices of `solid`; its place must be there. False, with a finding, for a primitive
    // whose numbers name what is not there.
    bool read(const Primitive& primitive, const Placement& placement, Solid& solid);

private:
    bool readCorners(const Primitive& primitive, std::size_t vertices, std::vector<std::uint32_t>& corners) const;

    const Scene& scene_;
    Findings& findings_;
    std::vector<Look> looks_;  // of the materials
};

}  // namespace readers::scene
