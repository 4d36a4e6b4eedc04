// Writes the scenes that the glTF validator judges afterwards.
#include "fixture.h"

#include <filesystem>

namespace {

class JudgedSceneTest : public SceneTest {
protected:
    // One of everything that a scene can hold.
    void fill() {
        const LiNwcGroup root = LiNwcGroupCreate();
        LiNwcNodeSetName(root, u"工厂 \"W\"");
        const LiNwcGroup object = groupIn(root, u"object");
        LiNwcGroupSetLayer(object, 1);
        const LiNwcAttribute attribute = properties({{u"材质", u"20#"}});
        LiNwcNodeAddAttribute(object, attribute);
        LiNwcAttributeDestroy(attribute);
        for (int i = 0; i < 40; ++i) {
            const LiNwcGeometry shape = tetrahedron({1e7 * i, 250.25 * i, -3.7 * i}, 100.0 + i % 7 * 0.1);
            paint(shape, {0.1 * (i % 10), 0.3, 1}, i % 3 == 0 ? 0.8 : 0.0);
            LiNwcGroupAddNode(object, shape);
            LiNwcNodeDestroy(shape);
        }
        const LiNwcGeometry lines = geometry([](LiNwcGeometryStream stream) { drawLines(stream); });
        LiNwcGroupAddNode(object, lines);
        LiNwcNodeDestroy(lines);
        LiNwcGroupDestroy(object);
        addToScene(root);
        addSettings();
    }

    static void drawLines(LiNwcGeometryStream stream) {
        const double center[] = {3, 4, 5};
        const double normal[] = {0.3, 0, 1};
        LiNwcGeometryStreamBegin(stream, LI_NWC_HAS_COLOR);
        LiNwcGeometryStreamColor(stream, 1, 0, 0, 0);
        LiNwcGeometryStreamCircle(stream, center, normal, 1234.5);
        for (int i = 0; i < 3; ++i) {
            LiNwcGeometryStreamLineStripVertex(stream, i, i * 0.1, 0);
            LiNwcGeometryStreamLineStripIndex(stream, 2 - i);
        }
        const LiNwcTextStyle style = LiNwcTextStyleCreate(u"黑体");
        LiNwcTextStyleSetFontHeight(style, 33);
        LiNwcGeometryStreamBeginText(stream, style);
        LiNwcGeometryStreamAddText(stream, u"text");
        LiNwcGeometryStreamEndText(stream);
        LiNwcTextStyleDestroy(style);
        LiNwcGeometryStreamEnd(stream);
    }

    void addSettings() {
        const LiNwcView view = LiNwcViewCreate();
        LiNwcViewSetPosition(view, 1234.5, -20, 10);
        LiNwcSceneSetHomeView(scene, view);
        LiNwcViewPointAt(view, 1, 2, 3);
        LiNwcSceneSetCurrentView(scene, view);
        LiNwcSavedViewDestroy(view);
        const double axes[] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
        const LiNwcGridSystem system = LiNwcGridSystemCreate(u"axes", axes, axes + 3, axes + 6);
        const LiNwcGridLine line = LiNwcGridLineCreate(u"A");
        LiNwcGridLineAddLinearSegment(line, axes, axes + 3);
        LiNwcGridSystemAddGridLine(system, line);
        LiNwcGridLineDestroy(line);
        LiNwcSceneAddGridSystem(scene, system);
        LiNwcGridSystemDestroy(system);
    }

    void writeJudged(const std::string& name) {
        const std::string path = std::string(TESSARO_JUDGED_DIR) + "/" + name;
        std::filesystem::create_directories(TESSARO_JUDGED_DIR);
        ASSERT_EQ(LiNwcSceneWriteEx(scene, wide(path).c_str(), nullptr, nullptr), LI_NWC_OK);
    }
};

TEST_F(JudgedSceneTest, AllKindsInOneFileInSeveralAndNone) {
    writeJudged("empty.glb");
    fill();
    writeJudged("all-kinds.glb");
    reopen(40000);
    fill();
    std::vector<Point> points(3000, Point{0, 0, 0});
    points[1][0] = 5;
    points[2][1] = 5;
    addToScene(triangles(points, {0, 1, 2}));
    writeJudged("in-parts.glb");
    EXPECT_TRUE(std::filesystem::exists(std::string(TESSARO_JUDGED_DIR) + "/in-parts.1.bin"));
    EXPECT_TRUE(told.empty());
}

}  // namespace
