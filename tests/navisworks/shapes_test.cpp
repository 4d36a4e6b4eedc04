// What becomes of each kind of primitive, and in which colour.
#include "navisworks/geometry/node.h"
#include "support.h"

#include <cmath>

namespace {

class Shapes : public NvTest {
protected:
    // The shapes of one object, which is N5.
    std::string shapesOf(const std::string& type, const std::string& more, const std::string& primitives) {
        tolmar::runReport().clear();
        load(equipment(item(5, type, 4, more, primitives)));
        script(namesById);
        nvout();
        return read().below("N5");
    }
    std::string shapes(const std::string& primitives) { return shapesOf("HxDbEquipment", "", primitives); }
    static std::string content(const std::string& entity) {
        return R"({"type":"HextPrimaryAcadEntity","entity":)" + entity + "}";
    }
};

const std::string block = R"("primitive":)" + box();

TEST_F(Shapes, ThePrimitiveColourGoesBeforeTheObjectsColour) {
    const std::string three =
        box() + "," + box(R"("color":3)") + "," + box(R"("color":0)") + "," + box(R"("color":255)");
    EXPECT_EQ(shapesOf("HxDbEquipment", R"("color":1)", three),
              "triangles 12 #FF0000\ntriangles 12 #00FF00\ntriangles 12 #FF0000\ntriangles 12 #FF0000\n");
    EXPECT_EQ(shapesOf("HxDbEquipment", R"("color":255)", three),
              "triangles 12 #FFFFFF\ntriangles 12 #00FF00\ntriangles 12 #FFFFFF\ntriangles 12 #FFFFFF\n");
    EXPECT_EQ(passedOver(), "");
}

TEST_F(Shapes, ColoursOfPartsOfAPipeAndOfWelds) {
    const std::string objects = node(2, "HextSite", 1, "S") + "," + node(3, "HextZone", 2, "Z") +
                                R"(,{"id":4,"class":"HextPipeline","in":3,"color":5},)" +
                                item(5, "HxDbTubeModelSpec", 4) + "," + item(6, "HxDbPipeSpec", 4, R"("color":2)") +
                                "," + item(7, "HxDbTubeWeld", 4, R"("color":2)") + "," + item(8, "HxDbEquipment", 4);
    options({"outWeld"});
    script(namesById);
    load(objects);
    nvout();
    EXPECT_EQ(read().below("N5"), "triangles 12 #0000FF\n") << "that of the name node";
    EXPECT_EQ(read().below("N6"), "triangles 12 #FFFF00\n");
    EXPECT_EQ(read().below("N7"), "triangles 12 #FFFF00\n");
    EXPECT_EQ(read().below("N8"), "triangles 12 #FFFFFF\n") << "no part of a pipe";
    load(objects, R"({"name":"P","weldColor":4})");
    nvout();
    EXPECT_EQ(read().below("N7"), "triangles 12 #00FFFF\n") << "the configuration's";
    EXPECT_EQ(read().below("N6"), "triangles 12 #FFFF00\n");
}

TEST_F(Shapes, ObstructionsAreNearlyClear) {
    EXPECT_EQ(shapes(box(R"("material":"hext_temp_material")") + "," + box(R"("material":"hext_temp_materia")")),
              "triangles 12 #FFFFFF 80% clear\ntriangles 12 #FFFFFF\n");
}

TEST_F(Shapes, ASolidIsWhereItStands) {
    shapes(R"({"type":"HextBox3D","point":[1234567,-250,40],"xLength":10,"yLength":20,"zLength":30,"xAxis":[1,0,0],)"
           R"("yAxis":[0,1,0]})");
    const std::vector<SceneReading::Point> points = read().vertices("N5");
    ASSERT_EQ(points.size(), 8U) << "vertices are shared";
    SceneReading::Point low = points[0];
    SceneReading::Point high = points[0];
    for (const auto& point : points) {
        for (std::size_t i = 0; i < 3; ++i) {
            low[i] = std::min(low[i], point[i]);
            high[i] = std::max(high[i], point[i]);
        }
    }
    const double expected[6] = {1234567, -250, 40, 1234577, -230, 70};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(low[i], expected[i], 0.001);
        EXPECT_NEAR(high[i], expected[i + 3], 0.001);
    }
}

TEST_F(Shapes, ASolidThatCameBeforeStandsWhereItsOwnPointsAre) {
    const auto cylinder = [](const std::string& x, const std::string& y, const std::string& more = "") {
        return R"({"type":"HextCylinder3D","diameter":50,"startPoint":[)" + x + R"(,7.1,-3],"endPoint":[)" + y +
               R"(,7.1,-3])" + more + "}";
    };
    const std::string there = cylinder("1234567.3", "1234667.3");
    shapes(there);
    const std::vector<SceneReading::Point> alone = read().vertices("N5");
    EXPECT_EQ(shapesOf("HxDbEquipment", R"("color":1)",
                       cylinder("0.1", "100.1") + "," + cylinder("0.1", "100.1", R"(,"color":2)") + "," +
                           cylinder("2e9", "2000000100") + "," + cylinder("0.1", "100.0")),
              "triangles 44 #FF0000\ntriangles 44 #FFFF00\ntriangles 44 #FF0000\n");
    EXPECT_EQ(passedOverRows(), std::string("5 primitive: HextCylinder3D: ") + tlErrorText(Tl::eTooLarge) + "\n");
    load(equipment(item(4001, "HxDbEquipment", 4, "", cylinder("0.1", "100.1")) + "," +
                   item(5, "HxDbEquipment", 4, "", there)));
    nvout();
    EXPECT_EQ(read().vertices("N5"), alone);
}

TEST_F(Shapes, ASolidThatCannotBeMadeIsLeftOut) {
    EXPECT_EQ(shapes(box(R"("color":1)") + R"(,{"type":"HextSphere3D","center":[0,0,0],"radius":0})"),
              "triangles 12 #FF0000\n");
    EXPECT_EQ(passedOverRows(), std::string("5 primitive: HextSphere3D: ") + tlErrorText(Tl::eZeroSize) + "\n");
    load(equipment(R"({"id":5,"class":"HxDbEquipment","in":4})"));
    nvout();
    EXPECT_EQ(read().below("N4"), "N5* {}\n") << "an object without a shape keeps its group";
}

TEST_F(Shapes, LinesAndCircles) {
    EXPECT_EQ(shapes(R"({"type":"HextPrimaryLine","color":3,"startPoint":[0,0,1],"endPoint":[5,0,1]},)" +
                     content(R"({"type":"circle","center":[0,0,0],"normal":[0,0,0],"radius":50,"color":3})") + "," +
                     content(R"({"type":"polyline","points":[[0,0,0],[1,0,0],[1,1,0]],"color":3})")),
              "strip 2 #FF0000\nloop 16 #FF0000\nstrip 3 #00FF00\n");
    const std::vector<SceneReading::Point> line = read().vertices("N5");
    ASSERT_EQ(line.size(), 2U);
    EXPECT_NEAR(line[1][0], 5, 1e-3);
    EXPECT_NEAR(line[1][2], 1, 1e-3);
    shapes(content(R"({"type":"circle","center":[0,0,7],"radius":50})"));
    for (const auto& point : read().vertices("N5")) {
        EXPECT_NEAR(point[2], 7, 1e-3);
        EXPECT_NEAR(std::hypot(point[0], point[1]), 50, 1e-3);
    }
}

TEST_F(Shapes, EntitiesWithoutAPlaceAreTold) {
    EXPECT_EQ(shapes(content(R"({"type":"arc","center":[0,0,0],"radius":5,"startAngle":0,"endAngle":1})") + "," +
                     content(R"({"type":"hatch"})") + "," + content(R"({"type":"point","position":[0,0,0]})") + "," +
                     content(R"({"type":"nothing"})")),
              "");
    EXPECT_EQ(tolmar::runReport().passed().size(), 4U) << passedOverRows();
    EXPECT_NE(ui.printed.find("\nError br.set(*p3DSolid) = 6"), std::string::npos) << "a point has no boundary";
}

TEST_F(Shapes, ASolidAsHostContent) {
    EXPECT_EQ(shapesOf("HxDbEquipment", R"("color":1)",
                       content(R"({"type":"solid",)" + block + R"(,"color":5})") + "," +
                           content(R"({"type":"parametric",)" + block + R"(,"gsFlags":65536})") + "," +
                           content(R"({"type":"parametric",)" + block + "}")),
              "triangles 12 #FF0000\ntriangles 12 #D6D6D6\ntriangles 12 #FF0000\n")
        << "the inverse of 1 is 254, for its own primitive alone";
}

TEST_F(Shapes, BlocksFallIntoTheirParts) {
    EXPECT_EQ(shapes(R"({"type":"HextAcadBlockReference","entity":{"type":"block","parts":[)"
                     R"({"type":"solid",)" +
                     block + R"(,"color":4},{"type":"surface",)" + block +
                     R"(,"color":6,"colors":[1,2,3]},{"type":"line","startPoint":[0,0,0],"endPoint":[1,1,1]},)"
                     R"({"type":"surface","primitive":{"type":"HextConcone3D","startPoint":[0,0,0],"endPoint":[0,0,9],)"
                     R"("startDiameter":4,"endDiameter":0},"color":3}]}})"),
              "triangles 12 #00FFFF\n"
              "triangles 2 #FF0000\ntriangles 2 #FFFF00\ntriangles 2 #00FF00\ntriangles 2 #FF00FF\n"
              "triangles 2 #FF00FF\ntriangles 2 #FF00FF\n"
              "triangles 3 #00FF00\ntriangles 1 #00FF00\n")
        << "each face its own colour, the rest that of the surface";
    EXPECT_EQ(passedOverRows(), "5 primitive: TlDbLine in a block: it cannot be divided into triangles\n");
}

// ----------------------------------------------------------------------------------------------------------------
// texts

std::string textPrimitive(const std::string& text, const std::string& more = "") {
    return R"({"type":"HextPrimaryText","text":")" + text + R"(","position":[1,2,3],"height":25)" + more + "}";
}

TEST_F(Shapes, TextsKeepTheirStyle) {
    EXPECT_EQ(shapes(textPrimitive("罐 T1", R"(,"style":"SimSun","color":2)") + "," + textPrimitive("b")),
              "loop 4 #FFFF00\ntext \"罐 T1\" SimSun 25\nloop 4 #FFFFFF\ntext \"b\" 黑体 25\n");
    EXPECT_EQ(read().textTransform("N5"), (std::vector<double>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 8, 1}));
}

TEST(TextFrame, FollowsTheNormal) {
    struct Case {
        TlGeVector3d normal;
        double rotation;
        TlGeVector3d x;
        TlGeVector3d y;
        TlGePoint3d origin;
    };
    const Case cases[] = {
        {{0, 0, 4}, 0, {1, 0, 0}, {0, 1, 0}, {0, 0, 5}},
        {{0, 0, 1}, tlGePi / 2, {0, 1, 0}, {-1, 0, 0}, {0, 0, 5}},
        {{0, 0, -1}, 0, {-1, 0, 0}, {0, -1, 0}, {0, 0, -5}},
        {{0, -1, 0}, 0, {1, 0, 0}, {0, 0, 1}, {0, -5, 0}},
        {{1, 0, 0}, 0, {0, 1, 0}, {0, 0, 1}, {5, 0, 0}},
        {{1, 0, 0}, tlGePi, {0, -1, 0}, {0, 0, -1}, {5, 0, 0}},
        {{0, 0, 0}, 0, {1, 0, 0}, {0, 1, 0}, {0, 0, 5}},
        {{0.6, 0, 0.8}, 0, {0, 0.6, 0}, {-0.48, 0, 0.36}, {3, 0, 4}},
    };
    for (const Case& c : cases) {
        const nv::TextFrame frame = nv::textFrame(TlDbText({"T", {0, 0, 0}, c.normal, c.rotation, 10, ""}));
        const TlGeTol tol(1e-12, 1e-12);
        EXPECT_TRUE(frame.x.isEqualTo(c.x, tol)) << frame.x.x << " " << frame.x.y << " " << frame.x.z;
        EXPECT_TRUE(frame.y.isEqualTo(c.y, tol)) << frame.y.x << " " << frame.y.y << " " << frame.y.z;
        EXPECT_TRUE(frame.origin.isEqualTo(c.origin, tol));
        EXPECT_NEAR(frame.normal.length(), 1, 1e-12);
    }
}

TEST_F(Shapes, AWeldLosesItsFirstTextUnlessItMayKeepIt) {
    const std::string primitives = box() + "," + textPrimitive("first") + "," + textPrimitive("second");
    options({"outWeld"});
    EXPECT_EQ(shapesOf("HxDbTubeWeld", "", primitives),
              "triangles 12 #FFFFFF\nloop 4 #FFFFFF\ntext \"second\" 黑体 25\n");
    EXPECT_EQ(
        shapesOf("HxDbTubeModelSpec", "", primitives),
        "triangles 12 #FFFFFF\nloop 4 #FFFFFF\ntext \"first\" 黑体 25\nloop 4 #FFFFFF\ntext \"second\" 黑体 25\n");
    options({"outWeld", "outWeldText"});
    EXPECT_EQ(
        shapesOf("HxDbTubeWeld", "", primitives),
        "triangles 12 #FFFFFF\nloop 4 #FFFFFF\ntext \"first\" 黑体 25\nloop 4 #FFFFFF\ntext \"second\" 黑体 25\n");
    EXPECT_EQ(passedOver(), "");
}

}  // namespace
