#include "fixture.h"

namespace {

// The chain shows in the lines: type, position, orientation, ports, tube and size.
std::string fixBend(const char* where, const char* axes, const char* tubeRef = "/A1/PIPE_B-SP") {
    return std::string("('BEND',FALSE,'unset','") + where + "','" + axes + "',FALSE,'/BEND_FIX/BEND_FIX-SP',2,1,'" +
           tubeRef + "','100')";
}
std::string typesOf(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line.substr(2, 4) + " ";
    }
    return text;
}
std::string directionsOf(const std::string& text) {
    const std::size_t prop = text.find("SetBranchProp(");
    std::size_t from = prop;
    for (int i = 0; i < 2; ++i) {
        from = text.find("','", from) + 2;
    }
    return text.substr(from, text.find(",'100'", from) - from);
}

TEST_F(PipesTest, AStraightChainHasNoFixBend) {
    const std::string text =
        branchText({tube(100, at(0), at(900)), valve(101, at(900), at(1100)), tube(102, at(1100), at(2000)),
                    valve(103, at(2000), at(2200)), elbow(104, at(2200), at(2300), at(2300, 0, 100)),
                    valve(105, at(2300, 0, 100), at(2300, 0, 300))});
    EXPECT_EQ(typesOf(components(text)), "VALV VALV ELBO VALV ");
    EXPECT_EQ(directionsOf(text), "'E','D'");
}

// The head of a branch is its first component, so a chain is turned at its head when the first entry stands behind a
// tube that runs another way.
class HeadTest : public PipesTest {
protected:
    std::string turned(double gap) {
        Part first = valve(101, at(gap, 100), at(gap + 200, 100));
        return branchText({tube(100, at(0, 100), at(0, 0), ""), first});
    }
};

TEST_F(HeadTest, ABendStandsAtBothEndsOfALongGapAndOnlyBeforeTheComponentOfAShortOne) {
    // The tube runs south; from its head at (0, 100) the valve lies east.
    const std::string far = turned(5.001);
    EXPECT_EQ(components(far).at(0), fixBend("E 0 N 100 U 0", "X is N and Y is U"));
    EXPECT_EQ(components(far).at(1), fixBend("E 5.001 N 100 U 0", "X is N and Y is U"));
    EXPECT_EQ(typesOf(components(far)), "BEND BEND VALV ");
    EXPECT_EQ(directionsOf(far), "'E','W'");
    const std::string near = turned(5);
    EXPECT_EQ(components(near).at(0), fixBend("E 5 N 100 U 0", "X is N and Y is U"));
    EXPECT_EQ(typesOf(components(near)), "BEND VALV ");
    // No step, no bend; the head keeps its direction.
    const std::string none = turned(0);
    EXPECT_EQ(typesOf(components(none)), "VALV ");
    EXPECT_EQ(directionsOf(none), "'S','W'");
    // The component that was not straight keeps what it has.
    EXPECT_NE(components(far).at(2).find(",1,2,'unset','unset')"), std::string::npos) << components(far).at(2);
}

TEST_F(PipesTest, AStepBetweenComponentsGetsTwoBends) {
    const std::string text = branchText(
        {tube(100, at(0), at(900)), valve(101, at(900), at(1100)), valve(102, at(1100, 0, 50), at(1300, 0, 50))});
    const auto lines = components(text);
    ASSERT_EQ(typesOf(lines), "VALV BEND BEND VALV ");
    EXPECT_EQ(lines[1], fixBend("E 1100 N 0 U 0", "X is E and Y is N"));
    EXPECT_EQ(lines[2], fixBend("E 1100 N 0 U 50", "X is E and Y is N"));
    EXPECT_NE(lines[0].find(",1,2,'/A1/PIPE_B-SP','unset')"), std::string::npos);
    EXPECT_NE(lines[3].find(",1,2,'unset','unset')"), std::string::npos);
    // Down, the axes are others.
    const auto down = components(branchText(
        {tube(100, at(0), at(900)), valve(101, at(900), at(1100)), valve(102, at(1100, 0, -50), at(1300, 0, -50))}));
    EXPECT_EQ(down.at(1), fixBend("E 1100 N 0 U 0", "X is S and Y is W"));
}

TEST_F(PipesTest, ComponentsThatTouchOffAxisGetNone) {
    const auto lines = components(
        branchText({tube(100, at(0), at(900)), valve(101, at(900), at(1100)), valve(102, at(1100), at(1100, 200))}));
    EXPECT_EQ(typesOf(lines), "VALV VALV ");
    EXPECT_NE(lines[1].find(",1,2,'unset','unset')"), std::string::npos) << lines[1];
}

TEST_F(PipesTest, ASkewBranchIsNowhereStraight) {
    const auto lines =
        components(branchText({tube(100, at(0), at(300, 400)), valve(101, at(300, 400), at(360, 480)),
                               tube(102, at(360, 480), at(600, 800)), valve(103, at(600, 800), at(660, 880))}));
    EXPECT_EQ(typesOf(lines), "BEND BEND VALV BEND BEND VALV ");
    EXPECT_EQ(lines.at(0), fixBend("E 0 N 0 U 0", "X is W 36.869898 N and Y is U")) << lines.at(0);
}

TEST_F(PipesTest, ATailOffTheLastDirectionGetsOneBend) {
    const std::string text =
        branchText({tube(100, at(0), at(900)), valve(101, at(900), at(1100)), tube(102, at(1100), at(1100, 0, 500))});
    const auto lines = components(text);
    ASSERT_EQ(typesOf(lines), "VALV BEND ");
    EXPECT_EQ(lines[1], fixBend("E 1100 N 0 U 0", "X is E and Y is N"));
    EXPECT_EQ(directionsOf(text), "'E','D'");
    const std::string straight =
        branchText({tube(100, at(0), at(900)), valve(101, at(900), at(1100)), tube(102, at(1100), at(1600))});
    EXPECT_EQ(typesOf(components(straight)), "VALV ");
}

TEST_F(PipesTest, WithoutATubeAtItsHeadABranchBorrowsOne) {
    // The first component has the tube behind it, the second has none and takes the first one's.
    const auto lines = components(branchText({valve(101, at(900), at(1100)), tube(102, at(1100), at(2000)),
                                              valve(103, at(2000), at(2200)), valve(104, at(2200), at(2400))}));
    ASSERT_EQ(lines.size(), 3U);
    for (const std::string& line : lines) {
        EXPECT_NE(line.find(",1,2,'/A1/PIPE_B-SP','unset')"), std::string::npos) << line;
    }
    // With no tube at all it stays unset.
    const auto none = components(branchText({valve(101, at(900), at(1100)), valve(102, at(1100), at(1300))}));
    EXPECT_NE(none.at(1).find(",1,2,'unset','unset')"), std::string::npos);
}

TEST_F(PipesTest, ABranchWithoutComponentsEndsAtOnce) {
    const std::string text = branchText({tube(100, at(0), at(900)), tube(101, at(900), at(900, 500))});
    EXPECT_EQ(components(text).size(), 0U);
    EXPECT_EQ(text.substr(text.find(')', text.find("SetBranchProp"))), ")\nEND\n");
    EXPECT_EQ(directionsOf(text), "'E','S'");
}

TEST(PerpAxes, AreSquareAndFixedForTheVertical) {
    const auto are = [](const Axes& axes, const HxGeVector3D& x, const HxGeVector3D& y) {
        return axes.x.isEqualTo(x) && axes.y.isEqualTo(y);
    };
    EXPECT_TRUE(are(perpAxes({0, 0, 7}), {1, 0, 0}, {0, 1, 0}));
    EXPECT_TRUE(are(perpAxes({0, 0, -7}), {0, -1, 0}, {-1, 0, 0}));
    EXPECT_TRUE(are(perpAxes({5, 0, 0}), {0, 1, 0}, {0, 0, 1}));
    const auto [x, y] = perpAxes({1, 2, 3});
    EXPECT_NEAR(x.length(), 1, 1e-12);
    EXPECT_NEAR(y.length(), 1, 1e-12);
    EXPECT_NEAR(x.dotProduct(y), 0, 1e-12);
    EXPECT_TRUE(x.crossProduct(y).isCodirectionalTo({1, 2, 3}));
}

}  // namespace
