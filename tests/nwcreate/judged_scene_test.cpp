// Writes the scenes that the glTF validator judges afterwards beside those of whole plants: one without content, and
// one in several files.
#include "fixture.h"

#include <filesystem>

namespace {

class JudgedSceneTest : public SceneTest {
protected:
    void writeJudged(const std::string& name) {
        const std::string path = std::string(TESSARO_JUDGED_DIR) + "/" + name;
        std::filesystem::create_directories(TESSARO_JUDGED_DIR);
        ASSERT_EQ(LiNwcSceneWriteEx(scene, wide(path).c_str(), nullptr, nullptr), LI_NWC_OK);
    }
};

TEST_F(JudgedSceneTest, NothingAndSeveralFiles) {
    writeJudged("empty.glb");
    reopen(40000);
    const LiNwcView view = LiNwcViewCreate();
    LiNwcViewSetPosition(view, 1234.5, -20, 10);
    LiNwcSceneSetHomeView(scene, view);
    LiNwcViewPointAt(view, 1, 2, 3);
    LiNwcSceneSetCurrentView(scene, view);
    LiNwcSavedViewDestroy(view);
    for (int i = 0; i < 40; ++i) {
        const LiNwcGeometry shape = tetrahedron({1e7 * i, 250.25 * i, -3.7 * i}, 100.0 + i % 7 * 0.1);
        paint(shape, {0.1 * (i % 10), 0.3, 1}, i % 3 == 0 ? 0.8 : 0.0);
        addToScene(shape);
    }
    std::vector<Point> points(3000, Point{0, 0, 0});
    points[1][0] = 5;
    points[2][1] = 5;
    addToScene(triangles(points, {0, 1, 2}));
    writeJudged("in-parts.glb");
    EXPECT_TRUE(std::filesystem::exists(std::string(TESSARO_JUDGED_DIR) + "/in-parts.1.bin"));
    EXPECT_TRUE(told.empty());
}

}  // namespace
