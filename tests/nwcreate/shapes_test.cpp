// Shapes: where they stand, what is stored once, lines, circles, texts, materials, and what is refused.
#include "fixture.h"

#include <cmath>
#include <limits>
#include <random>

namespace {

class ShapesTest : public SceneTest {
protected:
    // A shape with a name, below the scene.
    void add(LiNwcNode node, const char16_t* name) {
        LiNwcNodeSetName(node, name);
        addToScene(node);
    }
    LiNwcSceneCounts counts() { return LiNwcInspectScene(scene); }
};

TEST_F(ShapesTest, EqualShapesAtOtherPlacesAreStoredOnceWithTheirMaterials) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> anywhere(-1e7, 1e7);
    std::vector<Point> places;
    for (int i = 0; i < 300; ++i) {
        places.push_back({anywhere(random), anywhere(random), anywhere(random)});
        const LiNwcGeometry shape = tetrahedron(places.back(), 123.456789);
        paint(shape, i % 2 == 0 ? Point{1, 0, 0} : Point{0, 0, 1});
        addToScene(shape);
    }
    const LiNwcGeometry other = tetrahedron({0, 0, 0}, 123.5);
    paint(other, {1, 0, 0});
    addToScene(other);
    EXPECT_EQ(counts().shapes, 2U);
    EXPECT_EQ(counts().meshes, 3U);
    EXPECT_EQ(counts().materials, 2U);
    EXPECT_EQ(counts().bytes, 2U * 4 * 12 + 12 * 2) << "they differ in their vertices alone";
    const readers::scene::Scene found = writeAndRead();
    const readers::scene::Node& root = found.nodes[found.roots[0]];
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Point first = placesOf(found, found.nodes[root.children[i]])[0];
        for (std::size_t axis = 0; axis < 3; ++axis) {
            EXPECT_NEAR(first[axis], places[i][axis], 1e-6);
        }
    }
}

TEST_F(ShapesTest, AShapeThatIsShownAgainIsTheOneThatIsStreamedAnew) {
    const Point places[] = {{1, 2, 3}, {-1234.5678, 0.001, 9e6}, {1.0 / 3, 1e-7, -0.1}};
    const LiNwcMaterial red = LiNwcMaterialCreate();
    LiNwcMaterialSetDiffuseColor(red, 1, 0, 0);
    const auto build = [&](bool isShownAgain) {
        const LiNwcGroup group = LiNwcGroupCreate();
        const LiNwcGeometry first = tetrahedron(places[0], 123.456789);
        LiNwcNodeAddAttribute(first, red);
        const LiNwcShape shape = LiNwcGeometryShape(first);
        LiNwcGroupAddNode(group, first);
        LiNwcNodeDestroy(first);
        for (const Point& place : places) {
            for (const LiNwcMaterial material : {red, LiNwcMaterial()}) {
                if (isShownAgain) {
                    EXPECT_EQ(LiNwcGroupAddShape(group, shape, material, place[0] - places[0][0],
                                                 place[1] - places[0][1], place[2] - places[0][2]),
                              LI_NWC_OK);
                    continue;
                }
                const LiNwcGeometry anew = tetrahedron(place, 123.456789);
                if (material != nullptr) {
                    LiNwcNodeAddAttribute(anew, material);
                }
                LiNwcGroupAddNode(group, anew);
                LiNwcNodeDestroy(anew);
            }
        }
        LiNwcShapeDestroy(shape);
        add(group, u"G");
        EXPECT_EQ(write(isShownAgain ? "again.nwc" : "anew.nwc"), LI_NWC_OK);
        LiNwcSceneDestroy(scene);
        scene = LiNwcSceneCreate();
    };
    build(true);
    build(false);
    EXPECT_EQ(folder.get("again.nwc"), folder.get("anew.nwc"));
    EXPECT_EQ(nodeOf(read("again.nwc"), "G").children.size(), 7U);
    LiNwcAttributeDestroy(red);
    EXPECT_EQ(LiNwcInspectBalance().left, 1U) << "the scene";
}

TEST_F(ShapesTest, AMaterialThatChangesIsTheNewOneFromThenOn) {
    const LiNwcGroup group = LiNwcGroupCreate();
    const LiNwcGeometry first = tetrahedron({0, 0, 0});
    const LiNwcShape shape = LiNwcGeometryShape(first);
    const LiNwcMaterial material = LiNwcMaterialCreate();
    for (const double red : {0.0, 1.0, 1.0}) {
        LiNwcMaterialSetDiffuseColor(material, red, 0, 0);
        EXPECT_EQ(LiNwcGroupAddShape(group, shape, material, 0, 0, 0), LI_NWC_OK);
    }
    add(group, u"G");
    EXPECT_EQ(counts().materials, 2U);
    EXPECT_EQ(counts().meshes, 2U);
    EXPECT_EQ(LiNwcGroupAddShape(group, shape, material, 0, 0, 0), LI_NWC_BAD_HANDLE) << "the group is settled";
}

TEST_F(ShapesTest, ShapesOfSeveralPiecesOrAnotherSceneAreNotShownAgain) {
    EXPECT_EQ(LiNwcGeometryShape(LiNwcGeometryCreate()), nullptr);
    const LiNwcGeometry twice = tetrahedron({0, 0, 0});
    const LiNwcShape shape = LiNwcGeometryShape(twice);
    const LiNwcGeometryStream stream = LiNwcGeometryOpenStream(twice);
    EXPECT_EQ(LiNwcGeometryShape(twice), nullptr) << "a stream is open";
    const double center[] = {0, 0, 0, 0, 0, 1};
    LiNwcGeometryStreamBegin(stream, 0);
    LiNwcGeometryStreamCircle(stream, center, center + 3, 10);
    LiNwcGeometryStreamEnd(stream);
    LiNwcGeometryCloseStream(twice, stream);
    EXPECT_EQ(LiNwcGeometryShape(twice), nullptr);
    EXPECT_TRUE(told.empty());
    LiNwcGroup group = LiNwcGroupCreate();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(LiNwcGroupAddShape(group, shape, nullptr, nan, 0, 0), LI_NWC_BAD_VALUE);
    EXPECT_EQ(LiNwcGroupAddShape(group, shape, properties({}), 0, 0, 0), LI_NWC_BAD_HANDLE);
    EXPECT_EQ(LiNwcGroupAddShape(twice, shape, nullptr, 0, 0, 0), LI_NWC_BAD_HANDLE) << "no group";
    LiNwcSceneDestroy(scene);
    scene = LiNwcSceneCreate();
    group = LiNwcGroupCreate();
    EXPECT_EQ(LiNwcGroupAddShape(group, shape, nullptr, 0, 0, 0), LI_NWC_BAD_ORDER);
    EXPECT_EQ(LiNwcShapeDestroy(shape), LI_NWC_OK);
    EXPECT_EQ(LiNwcGroupAddShape(group, shape, nullptr, 0, 0, 0), LI_NWC_BAD_HANDLE);
}

TEST_F(ShapesTest, FarAwayVerticesAreOffByAMicrometreAtMost) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> within(-4000.0, 4000.0);
    std::vector<Point> points;
    std::vector<int> indices;
    for (int i = 0; i < 300; ++i) {
        points.push_back({1e7 + within(random), -1e7 + within(random), 1e7 / 3 + within(random)});
        indices.push_back(i);
    }
    add(triangles(points, indices), u"far");
    const readers::scene::Scene found = writeAndRead();
    expectPlaces(placesOf(found, nodeOf(found, "far")), points);
}

TEST_F(ShapesTest, IndicesAreWideOnlyWhereTheyMustBeAndSharingComparesContent) {
    // A triangle of this many vertices: the last 16-bit size, which leaves the index buffer at an odd place, and the
    // first 32-bit size.
    std::vector<std::uint64_t> types;
    for (const int count : {0xFFFF, 0x10000}) {
        std::vector<Point> points;
        for (int i = 0; i < count; ++i) {
            points.push_back({static_cast<double>(i), static_cast<double>(i % 2), 0});
        }
        add(triangles(points, {0, 1, count - 1}), count == 0xFFFF ? u"short" : u"wide");
    }
    EXPECT_EQ(counts().shapes, 2U);
    const readers::scene::Scene found = writeAndRead();
    for (const auto& [name, type, last] : {std::tuple{"short", 5123U, 0xFFFEU}, std::tuple{"wide", 5125U, 0xFFFFU}}) {
        const readers::scene::Primitive& primitive = found.meshes[nodeOf(found, name).mesh].primitives[0];
        EXPECT_EQ(found.accessors[primitive.indices].componentType, type);
        EXPECT_EQ(indicesOf(found, found.accessors[primitive.indices]), (std::vector<std::uint32_t>{0, 1, last}));
    }
}

TEST_F(ShapesTest, SectionsOfSeveralStreamsGrowInTurnsAndTheTransformHoldsFromWhereItIsSet) {
    constexpr int count = 900;
    constexpr double matrix[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 5000, 1};
    const LiNwcGeometry nodes[] = {LiNwcGeometryCreate(), LiNwcGeometryCreate()};
    const LiNwcGeometryStream streams[] = {LiNwcGeometryOpenStream(nodes[0]), LiNwcGeometryOpenStream(nodes[1])};
    std::vector<Point> points[2];
    for (const LiNwcGeometryStream stream : streams) {
        EXPECT_EQ(LiNwcGeometryStreamBegin(stream, 0), LI_NWC_OK);
    }
    for (int i = 0; i < count; ++i) {
        const std::size_t which = i % 7 < 3 ? 0 : 1;
        const LiNwcGeometryStream stream = streams[which];
        if (i == count / 2) {
            LiNwcGeometryStreamPushTransform(streams[0]);
            LiNwcGeometryStreamSetTransform(streams[0], matrix);
        }
        points[which].push_back({static_cast<double>(i), static_cast<double>(i % 5), 0});
        EXPECT_EQ(i % 2 == 0 ? LiNwcGeometryStreamIndexedVertices(stream, points[which].back().data(), 1)
                             : LiNwcGeometryStreamIndexedVertex(stream, i, i % 5, 0),
                  LI_NWC_OK);
        points[which].back()[2] = which == 0 && i >= count / 2 ? 5000 : 0;
        const auto index = static_cast<std::uint32_t>(points[which].size()) - 1;
        EXPECT_EQ(i % 3 == 0 ? LiNwcGeometryStreamTriangleIndices(stream, &index, 1)
                             : LiNwcGeometryStreamTriangleIndex(stream, static_cast<int>(index)),
                  LI_NWC_OK);
    }
    for (std::size_t which : {0, 1}) {
        for (std::size_t i = points[which].size(); i % 3 != 0; ++i) {
            LiNwcGeometryStreamTriangleIndex(streams[which], 0);
        }
        EXPECT_EQ(LiNwcGeometryStreamEnd(streams[which]), LI_NWC_OK);
        EXPECT_EQ(LiNwcGeometryStreamIndexedVertex(streams[which], 0, 0, 0), LI_NWC_BAD_ORDER);
        LiNwcGeometryCloseStream(nodes[which], streams[which]);
        EXPECT_EQ(LiNwcGeometryStreamTriangleIndex(streams[which], 0), LI_NWC_BAD_HANDLE);
    }
    add(nodes[0], u"first");
    add(nodes[1], u"second");
    const readers::scene::Scene found = writeAndRead();
    expectPlaces(placesOf(found, nodeOf(found, "first")), points[0]);
    expectPlaces(placesOf(found, nodeOf(found, "second")), points[1]);
}

TEST_F(ShapesTest, LinesCirclesAndTheirColour) {
    add(geometry([](LiNwcGeometryStream stream) {
            LiNwcGeometryStreamBegin(stream, LI_NWC_HAS_COLOR);
            LiNwcGeometryStreamColor(stream, 1, 0, 0, 0);
            LiNwcGeometryStreamLineStripVertex(stream, 5, 0, 0);
            LiNwcGeometryStreamLineStripVertex(stream, 5, 10, 0);
            LiNwcGeometryStreamLineStripIndex(stream, 0);
            LiNwcGeometryStreamLineStripIndex(stream, 1);
            EXPECT_EQ(LiNwcGeometryStreamEnd(stream), LI_NWC_OK);
        }),
        u"line");
    const LiNwcGeometry closed = geometry([](LiNwcGeometryStream stream) {
        LiNwcGeometryStreamBegin(stream, 0);
        for (int i = 0; i < 3; ++i) {
            LiNwcGeometryStreamLineStripVertex(stream, i, i * i, 0);
        }
        for (const int index : {0, 1, 2, 0}) {
            LiNwcGeometryStreamLineStripIndex(stream, index);
        }
        LiNwcGeometryStreamEnd(stream);
    });
    paint(closed, {0.5, 0.5, 0.5}, 0.8);
    add(closed, u"closed");
    const double center[] = {1000, 2000, 3000};
    const double normal[] = {0, 3, 4};
    add(geometry([&](LiNwcGeometryStream stream) {
            LiNwcGeometryStreamBegin(stream, LI_NWC_HAS_COLOR);
            EXPECT_EQ(LiNwcGeometryStreamCircle(stream, center, normal, 500), LI_NWC_OK);
            EXPECT_EQ(LiNwcGeometryStreamEnd(stream), LI_NWC_OK);
        }),
        u"circle");
    const readers::scene::Scene found = writeAndRead();

    const readers::scene::Primitive& line = found.meshes[nodeOf(found, "line").mesh].primitives[0];
    EXPECT_EQ(line.mode, 3U);
    EXPECT_EQ(line.indices, readers::scene::none);
    EXPECT_EQ(found.materials[line.material].color, (std::array<double, 4>{1, 0, 0, 1}));
    expectPlaces(placesOf(found, nodeOf(found, "line")), {{5, 0, 0}, {5, 10, 0}});

    const readers::scene::Primitive& strip = found.meshes[nodeOf(found, "closed").mesh].primitives[0];
    EXPECT_EQ(indicesOf(found, found.accessors[strip.indices]), (std::vector<std::uint32_t>{0, 1, 2, 0}));
    const readers::scene::Material& grey = found.materials[strip.material];
    EXPECT_TRUE(grey.isBlended);
    EXPECT_NEAR(grey.color[0], 0.214041, 1e-9);
    EXPECT_NEAR(grey.color[3], 0.2, 1e-12);
    EXPECT_EQ(grey.extras, R"({"diffuse":[0.5,0.5,0.5],"ambient":[0.5,0.5,0.5],"transparency":0.8})");

    EXPECT_EQ(found.meshes[nodeOf(found, "circle").mesh].primitives[0].mode, 2U);
    const std::vector<Point> ring = placesOf(found, nodeOf(found, "circle"));
    EXPECT_GE(ring.size(), 36U);
    for (const Point& p : ring) {
        const Point arm = {p[0] - center[0], p[1] - center[1], p[2] - center[2]};
        EXPECT_NEAR(std::hypot(arm[0], arm[1], arm[2]), 500, 2e-3);
        EXPECT_NEAR(arm[1] * 0.6 + arm[2] * 0.8, 0, 2e-3);
    }
}

TEST_F(ShapesTest, TextIsKeptAndItsFrameStandsWhereTheTransformPutsIt) {
    const double outer[] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 100, 0, 0, 1};
    const double matrix[] = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1};
    add(geometry([&](LiNwcGeometryStream stream) {
            const LiNwcTextStyle style = LiNwcTextStyleCreate(u"黑体");
            EXPECT_EQ(LiNwcTextStyleSetFontHeight(style, -1), LI_NWC_BAD_VALUE);
            LiNwcTextStyleSetFontHeight(style, 100);
            LiNwcGeometryStreamPushTransform(stream);
            LiNwcGeometryStreamSetTransform(stream, outer);
            LiNwcGeometryStreamBegin(stream, 0);
            LiNwcGeometryStreamPushTransform(stream);
            LiNwcGeometryStreamSetTransform(stream, matrix);
            LiNwcGeometryStreamBeginText(stream, style);
            LiNwcTextStyleDestroy(style);
            LiNwcGeometryStreamAddText(stream, u"焊A");
            LiNwcGeometryStreamEndText(stream);
            EXPECT_EQ(LiNwcGeometryStreamEnd(stream), LI_NWC_OK);
            LiNwcGeometryStreamPopTransform(stream);
            LiNwcGeometryStreamPopTransform(stream);
        }),
        u"text");
    const readers::scene::Scene found = writeAndRead();
    EXPECT_EQ(nodeOf(found, "text").extras, utf8(uR"({"texts":[{"text":"焊A","font":"黑体","height":100,)"
                                                 uR"("transform":[0,1,0,0,-1,0,0,0,0,0,1,0,110,20,30,1]}]})"));
    expectPlaces(placesOf(found, nodeOf(found, "text")), {{110, 20, 30}, {110, 180, 30}, {10, 180, 30}, {10, 20, 30}});
}

TEST_F(ShapesTest, AFaultySectionIsLeftOutWholeAndTheNextOneIsNot) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double zero[] = {0, 0, 0};
    const std::vector<Point> corner = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const auto refused = [&](LiNwcGeometry shape) {
        EXPECT_EQ(lastEnd, LI_NWC_BAD_VALUE);
        LiNwcNodeDestroy(shape);
    };
    refused(triangles({{0, 0, nan}, {1, 0, 0}, {0, 1, 0}}, {0, 1, 2}));
    refused(triangles({{0, 0, 0}, {1e300, 0, 0}, {0, 1, 0}}, {0, 1, 2}));
    refused(triangles(corner, {0, 1, 3}));
    refused(triangles(corner, {0, 1, -1}));
    refused(triangles(corner, {0, 1, 2, 0}));
    add(geometry([&](LiNwcGeometryStream stream) {
            for (const double radius : {0.0, -1.0, nan}) {
                LiNwcGeometryStreamBegin(stream, 0);
                LiNwcGeometryStreamLineStripVertex(stream, 0, 0, 0);
                LiNwcGeometryStreamCircle(stream, zero, corner[1].data(), radius);
                EXPECT_EQ(LiNwcGeometryStreamEnd(stream), LI_NWC_BAD_VALUE);
            }
            LiNwcGeometryStreamBegin(stream, 0);
            LiNwcGeometryStreamCircle(stream, zero, zero, 1);
            EXPECT_EQ(LiNwcGeometryStreamEnd(stream), LI_NWC_BAD_VALUE);
            EXPECT_EQ(LiNwcGeometryStreamBegin(stream, 4), LI_NWC_BAD_VALUE);
            LiNwcGeometryStreamBegin(stream, 0);
            LiNwcGeometryStreamCircle(stream, zero, corner[1].data(), 1);
            EXPECT_EQ(LiNwcGeometryStreamEnd(stream), LI_NWC_OK);
            LiNwcGeometryStreamBegin(stream, 0);
            EXPECT_EQ(LiNwcGeometryStreamEnd(stream), LI_NWC_OK);
        }),
        u"good");
    for (const auto& [kind, text] : told) {
        EXPECT_EQ(kind, LI_NWC_WARNING) << text;
    }
    EXPECT_EQ(counts().shapes, 1U);
    const readers::scene::Scene found = writeAndRead();
    EXPECT_EQ(found.meshes[nodeOf(found, "good").mesh].primitives.size(), 1U);
}

}  // namespace
