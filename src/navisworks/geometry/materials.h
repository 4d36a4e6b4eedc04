// Materials of geometry nodes, each made once.
#pragma once

#include "navisworks/library/handles.h"

#include <map>

namespace nv {

// Colour of what has none.
inline constexpr int usualColor = 7;
inline constexpr double opaque = 1.0;

struct Paint {
    int color = usualColor;  // index of the palette; outside 0..255 the colour is white
    double opacity = opaque;
    auto operator<=>(const Paint&) const = default;
};

// Dies before the library session ends.
class Materials {
public:
    // Lives as long as this object.
    LiNwcMaterial of(const Paint& paint);

private:
    std::map<Paint, OwnedAttribute> made_;
};

}  // namespace nv
