// The tree of a scene: places, names, layers, properties, settings.
#include "fixture.h"

#include <cmath>
#include <cstdlib>
#include <random>

namespace {

using TreeTest = SceneTest;

TEST_F(TreeTest, ChildrenKeepTheirOrderHoweverNodesAreGivenBack) {
    const LiNwcGroup root = LiNwcGroupCreate();
    LiNwcNodeSetName(root, u"W");
    const LiNwcGroup site = groupIn(root, u"S");
    const LiNwcGroup zone = groupIn(site, u"Z");
    LiNwcGroupDestroy(groupIn(zone, u"1"));
    const LiNwcGroup second = groupIn(zone, u"2");
    LiNwcGroupDestroy(groupIn(zone, u"3"));
    const LiNwcGroup held = LiNwcGroupCreate();
    LiNwcNodeSetName(held, u"held");
    LiNwcGroupDestroy(groupIn(held, u"inner"));
    LiNwcGroupDestroy(zone);
    LiNwcGroupAddNode(site, held);
    LiNwcGroupDestroy(groupIn(second, u"x"));
    LiNwcGroupDestroy(second);
    LiNwcSceneAddNode(scene, root);
    // Some nodes are settled by now, others are not; writing changes neither.
    EXPECT_EQ(treeOf(writeAndRead("a.nwc")), "W(S(Z(1 2(x) 3) held(inner)))");
    EXPECT_EQ(write("b.nwc"), LI_NWC_OK);
    EXPECT_EQ(folder.get("a.nwc"), folder.get("b.nwc"));
    LiNwcGroupDestroy(groupIn(held, u"late"));
    for (const LiNwcGroup group : {root, site, held}) {
        LiNwcGroupDestroy(group);
    }
    EXPECT_EQ(treeOf(writeAndRead("c.nwc")), "W(S(Z(1 2(x) 3) held(inner late)))");
}

TEST_F(TreeTest, ANodeHasOnePlaceAndIsDroppedWithoutOne) {
    const LiNwcGroup a = LiNwcGroupCreate();
    const LiNwcGroup b = groupIn(a, u"b");
    const LiNwcGroup c = groupIn(b, u"c");
    EXPECT_EQ(LiNwcGroupAddNode(a, b), LI_NWC_BAD_VALUE);
    EXPECT_EQ(LiNwcSceneAddNode(scene, b), LI_NWC_BAD_VALUE);
    EXPECT_EQ(LiNwcGroupAddNode(c, a), LI_NWC_BAD_VALUE);
    EXPECT_EQ(LiNwcGroupAddNode(a, a), LI_NWC_BAD_VALUE);
    EXPECT_EQ(told.size(), 4U);
    LiNwcGroupDestroy(b);
    // Nothing stands above a: it goes, and b with it; c is held and may stand elsewhere.
    LiNwcGroupDestroy(a);
    addToScene(c);
    EXPECT_EQ(treeOf(writeAndRead()), "c");
    EXPECT_EQ(LiNwcInspectLive(LI_NWC_NODE), 0U);
}

TEST_F(TreeTest, NamesLayersAndPropertiesStandAsGiven) {
    const char16_t loneHalf[] = {u'x', 0xD800, u'y', 0};
    const LiNwcGroup group = LiNwcGroupCreate();
    LiNwcNodeSetName(group, u"管道\"\\\n\u0001/𝄞");
    LiNwcGroupSetLayer(group, 1);
    const LiNwcAttribute attribute = properties({{u"", u""}, {u"k", u"1"}, {u"k", loneHalf}});
    const LiNwcData data = LiNwcDataCreate();
    LiNwcDataSetName(data, u"P-1", u"管线ID");
    LiNwcPropertyAttributeAddProperty(attribute, u"管线ID", u"id", data);
    LiNwcDataSetName(data, u"changed", nullptr);
    LiNwcDataDestroy(data);
    LiNwcNodeAddAttribute(group, attribute);
    const LiNwcGroup other = groupIn(group, nullptr);
    LiNwcNodeAddAttribute(other, attribute);
    LiNwcAttributeDestroy(attribute);
    LiNwcGroupDestroy(other);
    addToScene(group);
    const readers::scene::Scene found = writeAndRead();
    const readers::scene::Node& node = nodeOf(found, utf8(u"管道\"\\\n\u0001/𝄞"));
    const std::string attributes = utf8(uR"("attributes":[{"class":{"user":"Orna属性","internal":"OrnaProperty"},)"
                                        uR"("properties":[{"key":"","value":""},{"key":"k","value":"1"},)"
                                        u"{\"key\":\"k\",\"value\":\"x\uFFFDy\"},"
                                        uR"({"key":"管线ID","internalKey":"id","value":"P-1",)"
                                        uR"("internalValue":"管线ID"}]}]})");
    EXPECT_EQ(node.extras, R"({"layer":true,)" + attributes);
    EXPECT_EQ(found.nodes[node.children[0]].extras, "{" + attributes);
    EXPECT_EQ(found.nodes[node.children[0]].name, "");
}

TEST_F(TreeTest, SettingsViewAndGridStandInTheScene) {
    EXPECT_EQ(LiNwcSceneSetLinearUnits(scene, 2), LI_NWC_OK);
    EXPECT_EQ(LiNwcSceneSetLinearUnits(scene, 1), LI_NWC_BAD_VALUE);
    const LiNwcView view = LiNwcViewCreate();
    LiNwcViewSetWorldUpVector(view, 0, 0, 1);
    LiNwcViewSetPosition(view, 0, -20, 10);
    LiNwcViewPointAt(view, 0, 0, 10);
    LiNwcSceneSetCurrentView(scene, view);
    LiNwcSceneSetHomeView(scene, view);
    LiNwcSavedViewDestroy(view);
    const double dark[] = {0, 0, 0};
    const double bright[] = {1, 0.5, 1};
    EXPECT_EQ(LiNwcSceneSetHorizonBackground(scene, dark, bright, bright, nullptr), LI_NWC_BAD_VALUE);
    LiNwcSceneSetHorizonBackground(scene, dark, bright, bright, dark);
    LiNwcSceneSetGlobalAmbient(scene, 0.9, 0.9, 0.7);
    const double axes[] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    const double ends[] = {1000, 2000, 0, 1000, -3000, 0};
    const LiNwcGridSystem system = LiNwcGridSystemCreate(u"axes", axes, axes + 3, axes + 6);
    const LiNwcGridLine line = LiNwcGridLineCreate(u"A1");
    LiNwcGridLineAddLinearSegment(line, ends, ends + 3);
    LiNwcGridSystemAddGridLine(system, line);
    LiNwcGridLineDestroy(line);
    const LiNwcGridLevel level = LiNwcGridLevelCreate(u"Base", 0);
    LiNwcGridSystemAddGridLevel(system, level);
    LiNwcGridLevelDestroy(level);
    LiNwcSceneAddGridSystem(scene, system);
    LiNwcGridSystemDestroy(system);

    const readers::scene::Scene found = writeAndRead();
    EXPECT_EQ(found.title, "Orna Model");
    EXPECT_EQ(treeOf(found), "axes(A1) Home view");
    EXPECT_EQ(nodeOf(found, "axes").extras, R"({"grid":{"origin":[0,0,0],"xAxis":[1,0,0],"yAxis":[0,1,0],)"
                                            R"("levels":[{"name":"Base","height":0}]}})");
    const std::vector<Point> segment = placesOf(found, nodeOf(found, "A1"));
    EXPECT_EQ(segment, (std::vector<Point>{{1000, 2000, 0}, {1000, -3000, 0}}));
    EXPECT_EQ(found.extras, R"({"units":"millimetres","background":[[0,0,0],[1,0.5,1],[1,0.5,1],[0,0,0]],)"
                            R"("ambient":[0.9,0.9,0.7],"currentView":2,"homeView":2})");
    // The camera looks along its -Z, which has to become the plant's Y, with its Y becoming the plant's Z.
    const readers::scene::Node& camera = nodeOf(found, "Home view");
    EXPECT_EQ(camera.translation, (std::array<double, 3>{0, -0.02, 0.01}));
    const double half = std::sqrt(0.5);
    const std::array<double, 4> expected = {half, 0, 0, half};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(camera.rotation[i], expected[i], 1e-12);
        EXPECT_NEAR(found.nodes[found.roots[0]].rotation[i], (std::array{-half, 0.0, 0.0, half})[i], 1e-12);
    }
    EXPECT_EQ(LiNwcInspectBalance().left, 1U);
}

TEST_F(TreeTest, EveryNumberReadsBackAsItWas) {
    std::mt19937_64 random(5);
    std::vector<double> heights = {0.0,  -0.0,   1e-3, -1e-3,  9.99999e-4, 1e8, 99999999.999999,
                                   1e15, 1e-300, 0.1,  1.0 / 3};
    for (int i = 0; i < 4000; ++i) {
        const double whole = static_cast<double>(static_cast<std::int64_t>(random()) >> random() % 63);
        heights.push_back(std::fmod(whole, 1e14) / std::pow(10.0, static_cast<double>(random() % 9)));
        heights.push_back(std::nextafter(heights.back(), 0.0));
    }
    const double axes[] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    const LiNwcGridSystem system = LiNwcGridSystemCreate(u"grid", axes, axes + 3, axes + 6);
    for (const double height : heights) {
        const LiNwcGridLevel level = LiNwcGridLevelCreate(u"", height);
        EXPECT_EQ(LiNwcGridSystemAddGridLevel(system, level), LI_NWC_OK);
        LiNwcGridLevelDestroy(level);
    }
    LiNwcSceneAddGridSystem(scene, system);
    LiNwcGridSystemDestroy(system);
    ASSERT_EQ(write("plant.nwc"), LI_NWC_OK);
    const std::string bytes = folder.get("plant.nwc");
    std::size_t at = 0;
    for (const double height : heights) {
        at = bytes.find("\"height\":", at) + 9;
        EXPECT_EQ(std::strtod(bytes.c_str() + at, nullptr), height) << bytes.substr(at, 25);
    }
}

TEST_F(TreeTest, AViewStraightDownHasARotationToo) {
    const LiNwcView view = LiNwcViewCreate();
    for (const Point& from : {Point{0, 0, 100}, Point{0, 0, -100}, Point{0, 0, 0}, Point{0, 100, 0}}) {
        LiNwcViewSetPosition(view, from[0], from[1], from[2]);
        LiNwcViewPointAt(view, 0, 0, 0);
        LiNwcSceneSetHomeView(scene, view);
        writeAndRead();
    }
    LiNwcSavedViewDestroy(view);
}

}  // namespace
