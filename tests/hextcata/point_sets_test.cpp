// The points of each family in the catalogue, and its solids in the frame that they tell, anywhere in the plant.
#include "fixture.h"
#include "random_place.h"

#include "hextinterface/hextcata/geometry.h"

namespace {

using Point = HxGePoint3D;
using Vector = HxGeVector3D;

// "number connection bore distance direction" of an axial point, "number connection bore x y z direction" of another.
std::vector<std::string> pointList(const CataText& text) {
    std::vector<std::string> list;
    const auto shortNumber = [](const std::string& argument) {
        const std::string fixed = withoutNoise(std::to_string(readNumber(argument)));
        return fixed.substr(0, fixed.find('.') + 2);
    };
    for (const CataLine& line : text.lines()) {
        const auto& a = line.arguments;
        if (line.function == "Ptaxi") {
            list.push_back(a[1] + " " + a[2] + " " + shortNumber(a[3]) + " " + shortNumber(a[4]) + " " +
                           withoutNoise(a[5]));
        } else if (line.function == "Ptca") {
            list.push_back(a[1] + " " + a[2] + " " + shortNumber(a[3]) + " " + shortNumber(a[4]) + " " +
                           shortNumber(a[5]) + " " + shortNumber(a[6]) + " " + withoutNoise(a[7]));
        }
    }
    return list;
}

enum class FrameKind { Body, Mirrored, ByWorldZ };

struct Family {
    const char* word;
    std::vector<At> points;
    FrameKind frame;
    std::vector<std::string> expected;  // without the points of the solids
    const char* more = "";
};
const Family families[] = {
    {"Tee",
     {{0, {}}, {1, {-80, 0, 0}}, {2, {90, 0, 0}}, {3, {0, 70, 0}}},
     FrameKind::Body,
     {"0 BW 50.0 0.0 X", "1 BW 50.0 80.0 -X", "2 SW 40.0 90.0 X", "3 FL 30.0 70.0 Y"}},
    {"Cross",
     {{0, {}}, {1, {-80, 0, 0}}, {2, {90, 0, 0}}, {3, {0, 70, 0}}, {4, {0, -60, 0}}},
     FrameKind::Body,
     {"0 BW 50.0 0.0 X", "1 BW 50.0 80.0 -X", "2 SW 40.0 90.0 X", "3 FL 30.0 70.0 Y", "4 TH 20.0 60.0 -Y"}},
    {"Cross3",
     {{0, {}}, {1, {-80, 0, 0}}, {2, {90, 0, 0}}, {3, {0, 70, 0}}, {4, {0, -60, 0}}, {5, {0, 0, 5}}, {6, {0, 0, -6}}},
     FrameKind::Body,
     {"0 BW 50.0 0.0 X", "1 BW 50.0 80.0 -X", "2 SW 40.0 90.0 X", "3 FL 30.0 70.0 Y", "4 TH 20.0 60.0 -Y",
      "5 0 0.0 0.0 X", "6 0 0.0 0.0 X"}},
    {"Latera",
     {{0, {}}, {1, {-80, 0, 0}}, {2, {90, 0, 0}}, {3, {-50, 50, 0}}},
     FrameKind::Body,
     {"0 BW 50.0 0.0 X", "1 BW 50.0 80.0 -X", "2 SW 40.0 90.0 X", "3 FL 30.0 70.7 X135.000000Y"}},
    {"Y",
     {{0, {}}, {1, {-80, 0, 0}}, {4, {50, -50, 0}}, {3, {30, 40, 0}}},
     FrameKind::Body,
     {"0 BW 50.0 0.0 X", "1 BW 50.0 80.0 -X", "2 SW 40.0 70.7 X-45.000000Y", "3 FL 30.0 50.0 X53.130100Y"}},
    {"Angle",
     {{0, {}}, {1, {-80, 0, 0}}, {3, {30, 40, 0}}},
     FrameKind::Mirrored,
     {"0 BW 50.0 0.0 X", "1 SW 50.0 80.0 -X", "2 FL 40.0 50.0 X53.130100Y"}},
    {"Arc",
     {{0, {}}, {1, {-80, 0, 0}}, {3, {0, 80, 0}}},
     FrameKind::Mirrored,
     {"0 BW 50.0 0.0 X", "1 SW 50.0 80.0 -X", "2 FL 40.0 80.0 X90.000000Y"}},
    {"Arc",
     {{0, {}}, {1, {-80, 0, 0}}, {3, {0, 80, 0}}},
     FrameKind::Mirrored,
     {"0 BW 50.0 80.0 -X", "1 SW 50.0 80.0 Y"},
     R"(,"kind":"bend")"},
    {"Ecc",
     {{1, {}}, {2, {120, 25, 7}}, {3, {60, 0, 0}}, {4, {60, 25, 0}}},
     FrameKind::Body,
     {"0 BW 50.0 0.0 X", "1 BW 50.0 0.0 -X", "2 SW 40.0 120.0 25.0 7.0 X", "3 SW 30.0 120.0 25.0 7.0 Y"}},
    {"Normal",
     {{0, {}}, {1, {-80, 0, 0}}, {2, {90, 0, 0}}},
     FrameKind::Body,
     {"0 BW 50.0 0.0 X", "1 BW 50.0 80.0 -x", "2 SW 40.0 90.0 x", "3 0 0.0 0.0 Y"},
     R"(,"kind":"valve")"},
    {"Normal",
     {{0, {}}, {1, {-80, 0, 0}}, {2, {90, 0, 0}}},
     FrameKind::ByWorldZ,
     {"0 BW 50.0 0.0 X", "1 BW 50.0 80.0 -x", "2 SW 40.0 90.0 x"}},
};

// A frame about one axis that world Z, or world Y beside it, keeps upright.
Placement uprightFrame(const Placement& place) {
    Placement frame = place;
    frame.z = frame.x.crossProduct({0, 0, 1});
    if (frame.z.length() < 1e-4) {
        frame.z = frame.x.crossProduct({0, 1, 0});
    }
    frame.z.normalize();
    frame.y = frame.z.crossProduct(frame.x);
    return frame;
}

Placement frameOf(FrameKind kind, const Placement& place) {
    Placement frame = kind == FrameKind::ByWorldZ ? uprightFrame(place) : place;
    frame.z = kind == FrameKind::Mirrored ? -frame.z : frame.z;
    return frame;
}

Point inFrame(const Placement& frame, const Point& world) {
    const Vector v = world - frame.origin;
    return {v.dotProduct(frame.x), v.dotProduct(frame.y), v.dotProduct(frame.z)};
}

const Point cylinderEnds[] = {{10, 20, 30}, {-40, 70, 55}};
const Point coneEnds[] = {{5, 25, 65}, {70, 10, -30}};

// A component of the family with a cylinder and a cone, at a place in the plant.
void addFamily(std::string& more, const Family& family, const Placement& place) {
    const auto ends = [&](const Point(&p)[2]) {
        return R"("startPoint":)" + json(place.at(p[0])) + R"(,"endPoint":)" + json(place.at(p[1]));
    };
    more = R"("refVec":)" + json(Point() + place.along({0, 3, 0})) + R"(,"primitives":[{"type":"HextCylinder3D",)" +
           ends(cylinderEnds) + R"(,"diameter":40},{"type":"HextConcone3D",)" + ends(coneEnds) +
           R"(,"startDiameter":60,"endDiameter":20}])" + family.more;
}

// A point without a place of its own counts as standing at the world's origin, so key points there would touch it.
constexpr const char* awayFromOrigin = R"("keyPoints":[{"no":1,"at":[9,9,9]}])";

constexpr const char* fourEnds = R"("end1":"BW","end2":"SW","end3":"FL","end4":"TH",)"
                                 R"("size1":"50","size2":"40","size3":"30","size4":"20","minsul":"0")";

TEST_F(CatalogueTest, EqualComponentsAnywhereGiveTheSameTextAndTheirSolidsReadBack) {
    Random random(11);
    for (const Family& family : families) {
        std::string first;
        for (int turn = 0; turn < 12; ++turn) {
            const Placement place = turn == 0 ? Placement{{1000, 2000, 3000}} : random.placement();
            objects.clear();
            std::string more;
            addFamily(more, family, place);
            add(10, "HxDbTubeModelSpec", std::string(R"("item":"PART","smrtln":")") + family.word + R"(",)" + fourEnds,
                family.points, more, place);
            model.reset();
            const std::string text = branchText({10});
            const CataText read(text);
            std::vector<std::string> points = pointList(read);
            ASSERT_GT(points.size(), 2U) << family.word << "\n" << text;
            EXPECT_EQ(points[points.size() - 1][0], '6') << family.word;
            EXPECT_EQ(points[points.size() - 2][0], '5') << family.word;
            points.resize(points.size() - 2);
            EXPECT_EQ(points, family.expected) << family.word;
            first = turn == 0 ? withoutNoise(text) : first;
            if (family.frame != FrameKind::ByWorldZ) {
                EXPECT_EQ(withoutNoise(text), first) << family.word;
            }
            const Placement frame = frameOf(family.frame, place);
            const auto local = [&](const Point& p) { return inFrame(frame, place.at(p)); };
            const std::vector<SolidShape> solids = read.solids();
            ASSERT_EQ(solids.size(), 2U) << family.word << "\n" << text;
            expectSame(solids[0], {"cylinder", {40}, {local(cylinderEnds[0]), local(cylinderEnds[1])}}, family.word);
            const Point a = local(coneEnds[0]);
            const Point b = local(coneEnds[1]);
            expectSame(solids[1], {"cone", {80}, {a, b, a + (b - a) * 0.25}}, family.word);
            if (HasFailure()) {
                return;
            }
        }
    }
}

// Against its reference vector and its insertion vector, which need not be square or of length 1.
TEST_F(CatalogueTest, ABalloonStandsInTheFrameOfItsVectors) {
    Random random(4);
    for (int turn = 0; turn < 6; ++turn) {
        const Placement place = turn == 0 ? Placement{{100, 200, 300}} : random.placement();
        objects.clear();
        std::string solids;
        addFamily(solids, families[0], place);
        add(11, "HxDbTubeModelSpec", std::string(R"("item":"TEE","smrtln":"Tee",)") + fourEnds,
            {{0, {}}, {2, {}, 0, 10}}, "", place);
        add(10, "HxDbBalloon", R"("item":"INST","specname":"S","minsul":"0")", {{1, {}, 0, 11}},
            R"("refVec":)" + json(Point() + place.along({-3, 0, 0})) + R"(,"insVec":)" +
                json(Point() + place.along({0, -2, 0})) + solids.substr(solids.find(R"(,"primitives")")),
            place);
        model.reset();
        const CataText text(branchText({10}));
        const std::vector<std::string> points = pointList(text);
        ASSERT_EQ(points.size(), 4U);
        EXPECT_EQ(points[0], "0  40.0 0.0 Y");
        EXPECT_EQ(points[1], "1 OPEN 40.0 0.0 Y");
        expectSame(text.solids().at(0), {"cylinder", {40}, {cylinderEnds[0], cylinderEnds[1]}}, "balloon");
        const Point a = coneEnds[0];
        expectSame(text.solids().at(1), {"cone", {80}, {a, coneEnds[1], a + (coneEnds[1] - a) * 0.25}}, "balloon");
    }
}

// An axis that lies along a world axis in its own frame reads as a whole angle, however the component is turned.
TEST_F(CatalogueTest, AnglesCarryNoNoise) {
    Random random(5);
    for (int turn = 0; turn < 100; ++turn) {
        const Placement place = random.placement();
        objects.clear();
        add(10, "HxDbTubeModelSpec", std::string(R"("item":"TEE","smrtln":"Tee",)") + fourEnds, families[0].points,
            R"("primitives":[{"type":"HextCylinder3D","startPoint":)" + json(place.at({-80, 0, 0})) +
                R"(,"endPoint":)" + json(place.at({90, 0, 0})) + R"(,"diameter":40}])",
            place);
        model.reset();
        std::string axis = CataText(branchText({10})).calls("LCYL").at(0)->arguments.at(2);
        axis = axis[1] == '-' ? "X" + axis.substr(2) : axis;
        EXPECT_EQ(axis, "X0.000000Y");
    }
}

TEST_F(CatalogueTest, OletsTakeTheirFourthPointFromTheBranchOrTheFarEnd) {
    const std::vector<At> points = {{0, {0, 0, 0}}, {1, {-30, 0, 0}}, {2, {30, 0, 0}}, {3, {0, 40, 0}}};
    const std::string solid =
        awayFromOrigin +
        std::string(
            R"(,"primitives":[{"type":"HextCylinder3D","startPoint":[0,0,0],"endPoint":[0,40,0],"diameter":20}])");
    add(10, "HxDbTubeModelSpec", std::string(R"("item":"OLET","smrtln":"Normal",)") + fourEnds, points, solid);
    add(11, "HxDbTubeModelSpec", std::string(R"("item":"BOSS","smrtln":"Normal",)") + fourEnds,
        {points.begin(), points.begin() + 3}, solid);
    add(12, "HxDbTubeModelSpec", std::string(R"("item":"OLET","itype":"A","smrtln":"Normal",)") + fourEnds, points,
        solid);
    add(13, "HxDbTubeModelSpec", std::string(R"("item":"OLET","sch":"9","smrtln":"normal",)") + fourEnds, points,
        solid);
    const CataText olet(branchText({10}));
    EXPECT_EQ(pointList(olet), (std::vector<std::string>{"0 BW 50.0 0.0 X", "1 BW 50.0 30.0 -X", "2 SW 40.0 30.0 X",
                                                         "3 FL 30.0 40.0 X DDANGLE Y"}));
    EXPECT_EQ(olet.calls("LCYL").at(0)->arguments,
              (std::vector<std::string>{"(0.000000)", "(40.000000)", "X DDANGLE Y", "20.000000"}));
    EXPECT_EQ(pointList(CataText(branchText({11}))).at(3), "3 FL 30.0 30.0 X DDANGLE Y");
    EXPECT_EQ(pointList(CataText(branchText({12}))).at(2), "2 SW 40.0 30.0 x");  // a type beside the item: no branch
    EXPECT_EQ(pointList(CataText(branchText({13}))).size(), 3U);                 // nor the word in other letters
}

TEST_F(CatalogueTest, NozzlesKeyPointsHosesAndFlangedPipes) {
    add(9, "HxDbTubeSpecification", "", {}, R"("ends":[{"endType":"A"},{"endType":"FLN"}])");
    objects = objects.substr(0, objects.find(R"("points":[],)")) + objects.substr(objects.find(R"("points":[],)") + 12);
    const std::vector<At> straight = {{0, {0, 0, 0}}, {1, {-30, 0, 0}}, {2, {70, 0, 0}}};
    add(10, "HxDbNozzleModel", std::string(R"("item":"NOZ","smrtln":"Normal",)") + fourEnds, straight,
        awayFromOrigin + std::string(R"(,"spec":9)"));
    add(11, "HxDbNozzleModel", R"("item":"NOZ","smrtln":"Normal","end2":"NONE","size1":"50","minsul":"0")", straight,
        awayFromOrigin);
    add(12, "HxDbTubeModelSpec", std::string(R"("item":"TEE","smrtln":"Tee",)") + fourEnds, families[0].points,
        R"("keyPoints":[{"no":3,"at":[100.005,0,0]}],"primitives":[{"type":"HextTorus3D","center":[0,0,0],)"
        R"("startPoint":[100,0,0],"thirdField":[0,100,0],"startDiameter":9,"endDiameter":9},)"
        R"({"type":"HextSphere3D","center":[0,0,0],"radius":70,"material":"hext_temp_material"},)"
        R"({"type":"HextPrimaryAcadEntity","entity":{"type":"line","startPoint":[0,0,0],"endPoint":[9,0,0]}}])");
    add(13, "HxDbTubeModelSpec", std::string(R"("item":"HOSE","smrtln":"Hose",)") + fourEnds,
        {{1, {0, 0, 0}}, {2, {0, 300, 0}}, {3, {0, 10, 0}}, {4, {0, 290, 0}}}, R"("kind":"hose")");
    const std::string cylinder = R"({"type":"HextCylinder3D","startPoint":[0,0,0],"endPoint":)";
    add(14, "HxDbPipeSpec", R"("item":"PIPE","smrtln":"Pipe","end1":"FLG","size1":"50","minsul":"0")",
        {{1, {0, 0, 0}}, {2, {500, 0, 0}}},
        awayFromOrigin + std::string(R"(,"primitives":[)") + cylinder + R"([500,0,0],"diameter":57},)" + cylinder +
            R"([20,0,0],"diameter":165}])");
    add(15, "HxDbTubeModelSpec", std::string(R"("item":"HOSE","itype":"Q","smrtln":"Hose",)") + fourEnds,
        {{1, {0, 0, 0}}, {2, {0, 300, 0}}},
        R"("primitives":[)" + cylinder + R"([5,0,0],"diameter":5},{"type":"HextPrimaryLine","startPoint":[0,0,0],)" +
            R"("endPoint":[1,0,0]}])");
    // The records change places whole; the first end is that of the nozzle's specification.
    EXPECT_EQ(pointList(CataText(branchText({10}))),
              (std::vector<std::string>{"0 FLN 50.0 0.0 X", "2 SW 40.0 70.0 x", "1 FLN 50.0 30.0 -x"}));
    EXPECT_EQ(pointList(CataText(branchText({11}))).at(1), "1  50.0 30.0 -x");
    const std::vector<std::string> tee = pointList(CataText(branchText({12})));
    EXPECT_EQ(tee.at(4), "5 FL 30.0 100.0 0.0 0.0 X-90.000000Y");
    EXPECT_EQ(tee.at(5), "6 0 0.0 0.0 100.0 0.0 X180.000000Y");
    EXPECT_EQ(tolmar::runReport().passed().size(), 1U);
    EXPECT_TRUE(wasPassedOver(12, "has no counterpart in the catalogue"));
    EXPECT_EQ(CataText(branchText({13})).calls("SCYL").at(0)->arguments,
              (std::vector<std::string>{"0.000000", "300.000000", "P3", "60.000000"}));
    const std::string pipe = branchText({14});
    EXPECT_NE(pipe.find("call !!ORNACataSCYL('0.000000','20.000000','X','165.000000')\n"
                        "call !!ORNACataSCYL('20.000000','HEIGHT - 40.000000','X','57.000000')\n"
                        "call !!ORNACataSCYL('HEIGHT - 20.000000','20.000000','X','165.000000')\n"),
              std::string::npos)
        << pipe;
    const std::size_t tail = pipe.find("-PT','1','FLG','(50.000000)','(0.000000)','-x')\n");
    EXPECT_NE(tail, std::string::npos) << pipe;
    EXPECT_NE(pipe.find("-PT','2','FLG','(50.000000)','(+HEIGHT)','x')\n", tail), std::string::npos) << pipe;
    EXPECT_EQ(CataText(branchText({15})).calls("LCYL").size(), 0U);  // a hose by family alone has no frame
    EXPECT_TRUE(wasPassedOver(15, "its component has no local frame"));
    EXPECT_TRUE(wasPassedOver(15, "HextPrimaryLine: it is no solid"));
}

// Points that no solid computed count as standing at the world's origin: a connection there gives them its end and
// size.
TEST_F(CatalogueTest, AConnectionAtTheWorldsOriginTouchesThePlainPoints) {
    const auto pointsWith = [&](const char* keyPoint) {
        objects.clear();
        add(10, "HxDbTubeModelSpec", std::string(R"("item":"TEE","smrtln":"Tee",)") + fourEnds, families[0].points,
            std::string(R"("keyPoints":[{"no":2,"at":)") + keyPoint + "}]");
        model.reset();
        return pointList(CataText(branchText({10})));
    };
    EXPECT_EQ(pointsWith("[0.009,0,0]"), (std::vector<std::string>{"0 SW 40.0 0.0 X", "1 SW 40.0 80.0 -X",
                                                                   "2 SW 40.0 90.0 X", "3 SW 40.0 70.0 Y"}));
    EXPECT_EQ(pointsWith("[0.011,0,0]"), families[0].expected);
}

TEST_F(CatalogueTest, AComponentWithoutFrameKeepsItsTreeAlone) {
    add(10, "HxDbTubeModelSpec", std::string(R"("item":"TEE","smrtln":"Tee",)") + fourEnds,
        {{0, {0, 0, 0}}, {1, {-30, 0, 0}}, {2, {70, 0, 0}}});
    add(11, "HxDbTubeModelSpec", std::string(R"("item":"CAP","smrtln":"Normal",)") + fourEnds, {{0, {}}, {1, {}}});
    add(12, "HxDbTubeModelSpec", std::string(R"("item":"ODD","smrtln":"NOZZLE",)") + fourEnds, {{0, {}}, {1, {}}});
    add(13, "HxDbTubeModelSpec", std::string(R"("item":"TESO","smrtln":"Tee",)") + fourEnds, {{0, {}}});
    add(14, "HxDbTubeModelSpec", std::string(R"("item":"RED","smrtln":"Ru",)") + fourEnds, {{1, {}}});
    const CataText tee(branchText({10}));
    EXPECT_EQ(tee.calls("CreateScom").size(), 1U);
    EXPECT_TRUE(pointList(tee).empty());
    EXPECT_NE(ui.printed.find("\nPpoint:\nid:0\npos:0.00,0.00,0.00\ntype:PTAXI\ncon:BW\nbore:50.00\npaxi:X\ndir:\n"
                              "dist:0.00\nid:1\npos:-30.00,0.00,0.00\ntype:PTAXI\ncon:BW\nbore:50.00\npaxi:-X\n"),
              std::string::npos)
        << ui.printed;
    EXPECT_NE(ui.printed.find("\nID:10 <无效方向>"), std::string::npos);
    EXPECT_EQ(branchText({11, 12}), "");
    EXPECT_NE(ui.printed.find("\nerror Id:11<NormalKeyPt错误>\nID:11 <NormalKeyPt错误>"), std::string::npos);
    EXPECT_NE(ui.printed.find("\nID:12 <智能线类型元件NOZZLE不能转换为HEXT元件>"), std::string::npos);
    EXPECT_TRUE(wasPassedOver(12, "智能线类型元件NOZZLE不能转换为HEXT元件"));
    branchText({13});
    EXPECT_NE(ui.printed.find("\nID:13 <无效方向>"), std::string::npos);
    const CataText reducer(branchText({14}));
    EXPECT_EQ(reducer.calls("CreateScom").size(), 1U);
    EXPECT_EQ(reducer.lines().back().function, "CreateScom");
}

TEST(Bores, StandInForEachOther) {
    EXPECT_EQ(sizeOfEnd({100, 80, 0, 0}, 4), 100);
    EXPECT_EQ(sizeOfEnd({100, 80, 0, 0}, 3), 80);
    EXPECT_EQ(sizeOfEnd({100, 0, 50, 0}, 2), 100);
    EXPECT_EQ(sizeOfEnd({100, 0, 50, 0}, 4), 50);
    EXPECT_EQ(sizeOfEnd({100, 80, 50, 25}, 0), 100);
    EXPECT_EQ(sizeOfEnd({100, 80, 50, 25}, 5), 0);
    EXPECT_EQ(sizeOfEnd({100, 80, 50, 25}, -1), 0);
    EXPECT_EQ(cutToInteger(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(cutToInteger(-49.9), -49);
    EXPECT_EQ(cutToInteger(std::nan("")), 0);
}

}  // namespace
