#include "fixture.h"

namespace {

// Type and orientation of each line, and the reference behind them.
std::string outline(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        const std::size_t axes = line.find("'X is ");
        const std::size_t reference = line.find(",FALSE,'", axes) + 7;
        text += line.substr(2, 4) + line.substr(axes, line.find('\'', axes + 1) + 1 - axes) +
                line.substr(reference, line.find(',', reference) - reference) + "\n";
    }
    return text;
}

// The same of the welds alone.
std::string weldsOf(std::vector<std::string> lines) {
    std::erase_if(lines, [](const std::string& line) { return line.substr(2, 4) != "WELD"; });
    return outline(lines);
}

class WeldTest : public PipesTest {
protected:
    static void exportWelds(const TestRoot& root, const char* value) {
        root.write("plugins/nvoutplugins.ini", std::string("[Control]\noutWeld=") + value + "\n");
    }
    // Two tubes joined by a weld, a valve and a weld behind it.
    const std::vector<Part> run = {tube(100, at(0), at(900)),      weld(101, at(900)),  tube(102, at(900), at(2000)),
                                   valve(103, at(2000), at(2200)), weld(104, at(2200)), tube(105, at(2200), at(3000))};
    const std::string valveLine = "VALV'X is E and Y is N''/A1/VALVE_B-SP'\n";
};

TEST_F(WeldTest, WeldsAreWrittenWhenTheyAreAskedFor) {
    for (const char* value : {"0", "2", "on"}) {
        exportWelds(root, value);
        EXPECT_EQ(outline(components(branchText(run))), valveLine) << value;
    }
    exportWelds(root, "1");
    const std::string weldLine = "WELD'X is E and Y is N''/100_BW/Weld_B-SP'\n";
    EXPECT_EQ(outline(components(branchText(run))), weldLine + valveLine + weldLine);
    EXPECT_EQ(reasons(), "");
}

// Their specification has no rows, so this is the way they come.
TEST_F(WeldTest, AWeldWithoutARowHasNoReferenceAndStands) {
    exportWelds(root, "1");
    load({{.branches = {run}}}, {101, 104});
    const std::string text = write();
    const std::string weldLine = "WELD'X is E and Y is N''unset'\n";
    EXPECT_EQ(outline(components(text)), weldLine + valveLine + weldLine);
    EXPECT_NE(text.find("('WELD',FALSE,'/WELD 1 of BRANCH /L-1-B1','E 900 N 0 U 0','X is E and Y is N',FALSE,'unset',"
                        "1,2,'/A1/PIPE_B-SP','unset')\n:UserItem 'WELD' \nEND\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(ui.printed, "");
    EXPECT_EQ(reasons(), "");
}

TEST_F(WeldTest, TwoWeldsInARowShareTheOrientationThatIsOffTheAxes) {
    exportWelds(root, "1");
    // Only a tube stands between the welds; the second one's axis is that of the valve.
    const auto pair = [&](double x, double y) {
        return weldsOf(
            components(branchText({tube(100, at(0), at(900)), weld(101, at(900)), tube(102, at(900), at(900 + x, y)),
                                   weld(103, at(900 + x, y)), valve(104, at(900 + x, y), at(1100 + x, y))})));
    };
    const std::string skew = "WELD'X is E 53.130102 N and Y is W 36.869898 N''/100_BW/Weld_B-SP'\n";
    const std::string plain = "WELD'X is E and Y is N''/100_BW/Weld_B-SP'\n";
    EXPECT_EQ(pair(300, 400), skew + skew);
    EXPECT_EQ(pair(300, 0), plain + plain);
    // The other way round.
    const Part skewValve = valve(105, at(1200), at(1500, 400));
    EXPECT_EQ(weldsOf(components(branchText({tube(100, at(0), at(900)), weld(101, at(900)),
                                             tube(102, at(900), at(1200)), weld(103, at(1200)), skewValve}))),
              skew + skew);
    // A third weld is not in the pair. One that touches a weld looks for what lies behind that.
    EXPECT_EQ(weldsOf(components(branchText({valve(100, at(0), at(900)), weld(101, at(900)), weld(102, at(900)),
                                             valve(103, at(900), at(1200)), weld(104, at(1200)), skewValve}))),
              plain + plain + skew);
}

TEST_F(WeldTest, AWeldThatTouchesNothingItKnowsCostsTheBranch) {
    exportWelds(root, "1");
    Part lateral = valve(102, at(900), at(1100));
    lateral.attrs.replace(lateral.attrs.find("Normal"), 6, "Hose");
    EXPECT_EQ(branchText({valve(100, at(0), at(900)), weld(101, at(900)), lateral}), "");
    EXPECT_EQ(ui.printed, "\nID:101<无效方向>");
    EXPECT_EQ(reasons(), "100 branch: 无效方向\n");
}

}  // namespace
