// What the connection numbers of each family mean: ports, axes, directions, and the weld rule.
#include "fixture.h"

#include "hextinterface/hextbasemethod/component_geometry.h"

namespace {

using Vector = HxGeVector3D;

const std::vector<At> sevenPoints = {{0, {0, 0, 0}},      {1, {-100, 0, 0}, 1},  {2, {200, 0, 0}, 2},
                                     {3, {0, 300, 0}, 2}, {4, {0, -400, 50}, 1}, {5, {0, 0, 500}},
                                     {6, {0, 0, -600}}};

void expectVector(const Vector& actual, const Vector& expected, const std::string& what) {
    EXPECT_LT((actual - expected).length(), 1e-9) << what << ": " << actual.x << " " << actual.y << " " << actual.z;
}

struct Family {
    const char* word;
    std::vector<std::uint16_t> ports;  // of the numbers 0 to 7
    Vector x;
    Vector y;
    HxGePoint3D origin;
    int arrive;
    int leave;
    Vector in;   // direction asked for at the arrival
    Vector out;  // and at the departure
};
constexpr std::uint16_t none = 65535;
const HxGePoint3D centre;
const HxGePoint3D first(-100, 0, 0);
const Family families[] = {
    {"Normal",
     {0, 1, 2, none, none, none, none, none},
     {300, 0, 0},
     {0, 300, 0},
     centre,
     1,
     2,
     {300, 0, 0},
     {-300, 0, 0}},
    {"Tee", {0, 1, 2, 3, none, none, none, none}, {200, 0, 0}, {0, 300, 0}, centre, 1, 2, {100, 0, 0}, {200, 0, 0}},
    {"Latera",
     {0, 1, 2, 3, none, none, none, none},
     {200, 0, 0},
     {0, 1.2e7, 0},
     centre,
     1,
     2,
     {100, 0, 0},
     {200, 0, 0}},
    {"Ecc",
     {none, 1, 2, none, none, none, none, none},
     {100, 300, 0},
     {0, -700, 50},
     first,
     1,
     2,
     {100, 300, 0},
     {-200, -400, 50}},
    {"Y", {0, 1, none, 3, 2, none, none, none}, {100, 0, 0}, {0, 3e6, 0}, centre, 4, 2, {0, 400, -50}, {200, 0, 0}},
    {"Cross", {0, 1, 2, 3, 4, none, none, none}, {200, 0, 0}, {0, 300, 0}, centre, 1, 2, {100, 0, 0}, {200, 0, 0}},
    {"Cross3", {0, 1, 2, 3, 4, 5, 6, none}, {200, 0, 0}, {0, 300, 0}, centre, 1, 2, {100, 0, 0}, {200, 0, 0}},
    {"Ru", {none, 2, 1, none, none, none, none, none}, {0, 0, 0}, {0, 0, 0}, centre, 1, 2, {100, 0, 0}, {200, 0, 0}},
    {"Angle",
     {0, 1, none, 2, none, none, none, none},
     {100, 0, 0},
     {0, 300, 0},
     centre,
     1,
     3,
     {100, 0, 0},
     {0, 300, 0}},
    {"Arc", {0, 1, none, 2, none, none, none, none}, {100, 0, 0}, {0, 3e6, 0}, centre, 1, 3, {100, 0, 0}, {0, 300, 0}},
    {"Hose",
     {none, 1, 2, none, none, none, none, none},
     {100, 300, 0},
     {0, 700, -50},
     first,
     1,
     2,
     {100, 300, 0},
     {-200, -400, 50}},
};

TEST_F(CatalogueTest, EachFamilyReadsItsPoints) {
    int id = 10;
    for (const Family& family : families) {
        add(id++, "HxDbTubeModel", R"("smrtln":")" + std::string(family.word) + '"', sevenPoints);
    }
    id = 10;
    for (const Family& family : families) {
        const HxDbSmrtlnEntity* entity = at(id++);
        const CompView view = makeView(entity, nullptr);
        for (std::uint16_t number = 0; number < 8; ++number) {
            EXPECT_EQ(view.comp->mapPointNo(number), family.ports[number]) << family.word << number;
        }
        const auto [x, y] = view.comp->getAxes(entity);
        expectVector(x, family.x, std::string(family.word) + " x");
        expectVector(y, family.y, std::string(family.word) + " y");
        EXPECT_TRUE(view.comp->getOrigin(entity).isEqualTo(family.origin)) << family.word;
        EXPECT_EQ(view.comp->arrivePoint, family.arrive) << family.word;
        EXPECT_EQ(view.comp->leavePoint, family.leave) << family.word;
        EXPECT_TRUE(view.comp->getArrivePoint(entity).isEqualTo(entity->getCoordOfNo(family.arrive)));
        EXPECT_TRUE(view.comp->getLeavePoint(entity).isEqualTo(entity->getCoordOfNo(family.leave)));
        std::vector<Vector> directions;
        for (const bool atArrive : {true, false}) {
            expectVector(view.comp->getDirection(entity, atArrive), atArrive ? family.in : family.out, family.word);
            const DirectionPair pair = view.comp->getDirections(entity, atArrive);
            directions.insert(directions.end(), pair.begin(), pair.end());
        }
        const Vector second = std::string(family.word) == "Normal" ? family.in : family.out;
        expectVector(directions.at(0), family.in.normal(), family.word);
        expectVector(directions.at(1), second.normal(), family.word);
        expectVector(directions.at(2), family.out.normal(), family.word);
    }
    EXPECT_NE(makeComp("pIPE"), nullptr);
    EXPECT_EQ(failureOf([] { makeComp("Bend"); }), "智能线类型元件Bend不能转换为HEXT元件");
}

TEST_F(CatalogueTest, PipesBendsCapsNozzlesAndBalloonsGoTheirOwnWays) {
    add(10, "HxDbPipeSpec", R"("smrtln":"Pipe")", {{1, {0, 0, 0}, 2}, {2, {0, 0, 50}, 1}});
    add(11, "HxDbTubeModel", R"("smrtln":"Arc")", sevenPoints, R"("kind":"bend")");
    add(12, "HxDbTubeModel", R"("smrtln":"Normal","item":"CAP")", sevenPoints);
    add(13, "HxDbNozzleModel", R"("smrtln":"Tee")", {{1, {0, 0, 0}, 2}, {2, {0, 0, 50}, 2}});
    add(14, "HxDbBalloon", "", {{1, {1, 2, 3}}}, R"("insPoint":[4,6,3],"refVec":[0,2,0],"insVec":[0,0,5])");
    add(15, "HxDbTubeModel", R"("smrtln":"Y")", {{1, {0, 0, 0}}, {3, {0, 0, 50}}, {4, {0, 0, 50}, 1}});
    add(16, "HxDbTubeModel", R"("smrtln":"Tee")", {{1, {0, 0, 0}, 1}, {3, {0, 0, 50}, 2}});
    const CompView pipe = makeView(at(10), nullptr);
    EXPECT_EQ(pipe.comp->arrivePoint, 2);
    EXPECT_EQ(pipe.comp->leavePoint, 1);
    EXPECT_EQ(pipe.comp->mapPointNo(9), 9);
    const DirectionPair directions = pipe.comp->getDirections(at(10), true);
    expectVector(directions.at(0), {0, 0, -1}, "pipe");
    expectVector(directions.at(1), {0, 0, -1}, "pipe");
    expectVector(pipe.comp->getAxes(at(10)).y, {50, 0, 0}, "pipe along Z");
    EXPECT_EQ(makeView(at(11), nullptr).comp->mapPointNo(1), 5);
    EXPECT_EQ(makeView(at(11), nullptr).comp->mapPointNo(3), 6);
    EXPECT_TRUE(makeView(at(12), nullptr).comp->getOrigin(at(12)).isEqualTo(first));
    EXPECT_EQ(makeView(at(13), nullptr).comp->arrivePoint, 1);
    const CompView balloon = makeView(at(14), nullptr);
    expectVector(balloon.comp->getDirection(at(14), true), {3, 4, 0}, "balloon");
    const auto [x, y] = balloon.comp->getAxes(at(14));
    expectVector(x, {0, 2, 0}, "balloon");
    expectVector(y, {0, 0, -5}, "balloon");
    EXPECT_EQ(balloon.comp->leavePoint, 2);
    const CompView half = makeView(at(15), nullptr);  // without point 2
    EXPECT_EQ(half.comp->arrivePoint + half.comp->leavePoint, 0);
    EXPECT_EQ(makeView(at(16), nullptr).comp->leavePoint, 3);  // alone, without point 2
}

TEST_F(CatalogueTest, TheNeighboursInTheBranchTellThePorts) {
    add(10, "HxDbTubeModel", R"("smrtln":"Tee")",
        {{0, {}}, {1, {-9, 0, 0}, 2, 11}, {2, {9, 0, 0}, 0, 12}, {3, {0, 9, 0}, 1, 13}});
    for (const int id : {11, 12, 13}) {
        add(id, "HxDbPipeSpec", R"("smrtln":"Pipe")", {{1, {}, 0, 10}});
    }
    const auto ports = [&](std::initializer_list<int> ids) {
        const ComponentList list = this->list(ids);
        const BranchItems items(list);
        const CompView view = makeView(at(10), &items);
        return std::pair<int, int>(view.comp->arrivePoint, view.comp->leavePoint);
    };
    EXPECT_EQ(ports({13, 10, 11}), std::pair(3, 1));
    EXPECT_EQ(ports({13, 10}), std::pair(3, 1));
    EXPECT_EQ(ports({10, 11}), std::pair(2, 1));  // the number after the one that is taken
    EXPECT_EQ(ports({10, 12}), std::pair(1, 2));  // a neighbour without flow tells nothing
}

TEST_F(CatalogueTest, AWeldTakesItsAxisFromWhatItTouches) {
    const auto weld = [&](int id, int flow, int one, int two) {
        add(id, "HxDbTubeWeld", R"("smrtln":"Weld")", {{1, {}, flow, one}, {2, {}, 0, two}});
    };
    weld(10, 2, 20, 21);
    weld(11, 1, 20, 21);
    weld(12, 2, 13, 0);
    weld(13, 0, 12, 22);
    weld(14, 1, 23, 0);
    weld(15, 1, 24, 0);
    add(20, "HxDbPipeSpec", R"("smrtln":"Arc")", {{1, {0, 0, 0}, 1, 10}, {2, {5, 0, 0}, 0, 11}});
    add(21, "HxDbTubeModelSpec", R"("smrtln":"Tee")", {{0, {0, 0, 0}}, {1, {0, 7, 0}, 1, 10}, {3, {0, 0, 8}, 2, 11}});
    add(22, "HxDbTubeModelSpec", R"("smrtln":"Cross")", {{0, {0, 0, 0}}, {4, {0, 0, 3}, 1, 13}});
    add(23, "HxDbTubeModelSpec", R"("smrtln":"Ecc")", {{1, {0, 0, 0}, 2, 14}, {2, {0, 4, 0}, 1}});
    add(24, "HxDbTubeModelSpec", R"("smrtln":"Latera")", {{1, {0, 0, 0}, 2, 15}, {2, {0, 4, 0}, 1}});
    const auto axis = [&](int id, WeldRule rule = WeldRule::Component) { return weldAxes(at(id), rule).x; };
    expectVector(axis(10), {5, 0, 0}, "pipe at 1, whatever its family");
    expectVector(axis(11), {0, 0, 8}, "tee at 2, flow against");
    expectVector(axis(12), {0, 0, -3}, "cross behind a weld");
    expectVector(axis(14), {0, -4, 0}, "reducer at the other side");
    expectVector(axis(14, WeldRule::BranchEnd), {0, 0, 0}, "reducer at the end of a branch");
    expectVector(axis(15), {0, 0, 0}, "lateral");
    CompView view = makeView(at(15), nullptr);
    EXPECT_EQ(failureOf([&] { axesOf(view); }), "无效方向");
    EXPECT_EQ(ui.printed, "\nID:15<无效方向>");
}

TEST_F(CatalogueTest, AxesBecomeOrientationText) {
    add(10, "HxDbTubeModel", R"("smrtln":"Tee")", {{0, {}}, {2, {9, 0, 0}, 0, 11}, {3, {9, 9, 0}, 0, 12}});
    add(11, "HxDbTubeModel", R"("item":"PIPE")", {{1, {10, 0, 0}}, {2, {30, 0, 0}, 0, 10}});
    add(12, "HxDbTubeModel", R"("item":"ELBOW")", {{0, {0, 40, 0}}, {1, {0, 9, 0}, 0, 10}});
    add(13, "HxDbTubeModel", R"("smrtln":"Tee")", {{0, {}}, {2, {1e200, 0, 0}}, {3, {0, 9, 0}}});
    CompView view = makeView(at(10), nullptr);
    EXPECT_TRUE(view.comp->isAxis);
    EXPECT_EQ(axesOf(view), "X is E and Y is E 45 N");
    EXPECT_FALSE(view.comp->isAxis);
    EXPECT_EQ(axesWithReference(view, {0, 0, 1}), "X is E and Y is U");
    EXPECT_EQ(axesWithReference(view, {5, 0, 0}), "X is E and Y is E 45 N");
    EXPECT_EQ(failureOf([] { axesTextChecked(nullptr, nullptr, {1, 0, 0}, {0, 1e-7, 0}); }), "无效方向");
    EXPECT_EQ(ui.printed, "");
    EXPECT_EQ(axesTextChecked(nullptr, nullptr, {1, 0, 0}, {0, -1, 0}), "X is E and Y is S");
    EXPECT_EQ(failureOf([] { axesTextChecked(nullptr, nullptr, {1e200, 0, 0}, {0, 1, 0}); }), "无效方向");
    CompView far = makeView(at(13), nullptr);
    EXPECT_EQ(failureOf([&] { axesWithReference(far, {0, 0, 1}); }), "无效方向");
    EXPECT_EQ(failureOf([&] { getConnectionAxes(at(13), {}); }), "无效方向");
    const auto [a, b] = getConnectionAxes(at(10), {HxDbObjectId(11), HxDbObjectId(12)});
    expectVector(a, {20, 0, 0}, "the middle of a pipe");
    expectVector(b, {0, 40, 0}, "the centre of an elbow");
    expectVector(getConnectionAxes(at(10), {HxDbObjectId(11)}).y, {9, 9, 0}, "the connection itself");
}

}  // namespace
