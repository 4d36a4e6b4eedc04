#include "tolmar/entity.h"

#include <gtest/gtest.h>

namespace {

TEST(Entity, FacesOfASurfaceHaveEveryFourthSubEntityFromTheFifthOn) {
    TlDbSurface surface(tolmar::Body{}, {1, 2, 3});
    surface.setColorIndex(40);
    const auto colorOf = [&surface](int type, int index) { return surface.subentColor(type, index).colorIndex(); };
    EXPECT_EQ(colorOf(1, 5), 1);
    EXPECT_EQ(colorOf(1, 9), 2);
    EXPECT_EQ(colorOf(1, 13), 3);
    for (const auto& [type, index] : {std::pair{1, 17}, {1, 6}, {1, 1}, {1, -3}, {2, 5}}) {
        EXPECT_EQ(colorOf(type, index), 40) << type << ", " << index;
    }
}

}  // namespace
