#include "fixture.h"
#include "tolmar/color.h"

#include <ctime>

namespace {

const Part lead = tube(100, at(0), at(900));
const Part gate = valve(101, at(900), at(1100));
const Part behind = tube(102, at(1100), at(5000));

Part teeOf(const char* item, const char* family, PartPoint arm) {
    arm.no = 3;
    return {101,
            "HxDbTubeModelSpec",
            std::string(R"("size1":"100","end1":"BW","end2":"BW","item":")") + item + R"(","smrtln":")" + family + "\"",
            {{0, 1000, 0, 0}, {1, 900, 0, 0, 1}, {2, 1100, 0, 0, 2}, arm},
            ""};
}

TEST_F(PipesTest, AStraightBranchReadsAsAWhole) {
    load({{.attrs = R"("insul":"0","destemp":"常温","despress":"常压")", .branches = {{lead, gate, behind}}}});
    EXPECT_EQ(write(), "OLD /ORNA_ZONE_Z\n"
                       "\n"
                       "-----------------------------PIPE--------------------------------\n"
                       "!!ORNAPipeCreatePipe('/L-1',25,0.1,'/A1','unset')\n"
                       ":OpePress 0\n"
                       ":OpeTemp 0\n"
                       "FUNC 'CLRPIPE5'\n"
                       "OLD /L-1\n"
                       "\n"
                       "-----------------------------BRANCH------------------------------\n"
                       "!!ORNAPipeCreateBranch('/L-1-B1',0,0,'unset','" +
                           names->owners.getColourName(TlCmColor::byIndex(1)) +
                           "')\n"
                           "!!ORNAPipeSetBranchProp('E 0 N 0 U 0','E 5000 N 0 U 0','E','W','100','unset','NONE',"
                           "'NONE','/A1/PIPE_B-SP')\n"
                           "!!ORNAPipeCreateComponent('VALV',FALSE,'/VALV 1 of BRANCH /L-1-B1','E 1000 N 0 U 0',"
                           "'X is E and Y is N',FALSE,'/A1/VALVE_B-SP',1,2,'/A1/PIPE_B-SP','unset')\n"
                           ":UserItem 'VALVE' \n"
                           ":UserType 'GATE' \n"
                           "END\n"
                           "END\n");
    EXPECT_EQ(reasons(), "");
}

TEST_F(PipesTest, NozzlesAtTheEndsAreNoPartOfTheBranch) {
    const std::string text = branchText({nozzle(98, at(0)), lead, gate, behind, nozzle(99, at(5000))});
    EXPECT_NE(text.find("('E 0 N 0 U 0','E 5000 N 0 U 0','E','W','100','unset','FLRF','FLRF','/A1/PIPE_B-SP')"),
              std::string::npos)
        << text;
    EXPECT_EQ(components(text).size(), 1U);
}

TEST_F(PipesTest, AnEndThatMeetsAnotherBranchTakesItsEndType) {
    Part other = valve(110, at(5000), at(5200), R"(,"end3":"SW")");
    other.attrs.replace(other.attrs.find(R"("end2":"FLRF")"), 13, R"("end2":"NONE")");
    load({{.branches = {{lead, gate, behind}, {other}}, .links = {{102, 110}}}});
    const std::string text = write();
    EXPECT_NE(text.find("'100','unset','NONE','SW','/A1/PIPE_B-SP')"), std::string::npos) << text;
    // A single item looks along its own flow: towards the tube that flows into it, and out to nothing.
    EXPECT_NE(text.find("'100','unset','BW','NONE','unset')"), std::string::npos) << text;
}

TEST_F(PipesTest, BoresComeFromTheFirstItemWithAPlainSize) {
    Part skew = lead;
    skew.attrs.replace(skew.attrs.find("\"100\""), 5, R"("100*80")");
    Part small = gate;
    small.attrs.replace(small.attrs.find("\"100\""), 5, R"("80")");
    EXPECT_NE(branchText({skew, small, behind}).find("'E','W','80','unset','NONE'"), std::string::npos);
    // Without any plain size the branch is left out, and the others stand.
    Part lone = tube(120, at(0, 9), at(100, 9));
    lone.attrs.replace(lone.attrs.find("\"100\""), 5, R"("100*80")");
    load({{.branches = {{lead, gate, behind}, {lone}}}});
    const std::string text = write();
    EXPECT_EQ(text.find(banner), text.rfind(banner));
    EXPECT_EQ(reasons(), "120 branch: an end has no plain size\n");
    EXPECT_EQ(ui.printed, "");
    load({{.branches = {{lead, gate, behind}, {weld(120, at(0, 9)), weld(121, at(9, 9))}}}});
    write();
    EXPECT_EQ(reasons(), "120 branch: holds nothing but welds, stops and nozzles\n");
}

// Plain tubes, welds that nobody asked for and what goes out elsewhere lack nothing.
TEST_F(PipesTest, AComponentWithoutAPlainSizeIsToldToTheReport) {
    const auto skewed = [](Part part) {
        part.attrs.replace(part.attrs.find("\"100\""), 5, R"("100*80")");
        return part;
    };
    Part flanged = tube(104, at(1300), at(1500), R"(,"end1":"FLRF")");
    flanged.attrs.erase(flanged.attrs.find(R"("end1":"BW",)"), 12);
    load({{.branches = {{lead, skewed(gate), skewed(weld(102, at(1100))), skewed(tube(103, at(1100), at(1300))),
                         skewed(flanged), skewed(valve(105, at(1500), at(1700))), valve(106, at(1700), at(1900))}}}});
    EXPECT_EQ(components(write({openAs<HxDbObject>(HxDbObjectId(105))})).size(), 1U);
    EXPECT_EQ(reasons(), "101 component: its size is no plain number\n104 component: its size is no plain number\n");
}

TEST_F(PipesTest, ElbowsWriteTheirAngleAndBendsTheirOwnPorts) {
    Part bend = elbow(101, at(900), at(1000), at(1000, 100));
    EXPECT_EQ(onlyComponent(components(branchText({lead, bend}))),
              "('ELBO','/ELBO 1 of BRANCH /L-1-B1','E 1000 N 0 U 0','X is E and Y is N',FALSE,'/A1/ELBOW_B-SP',1,2,"
              "'/A1/PIPE_B-SP',90)");
    bend.more = R"(,"kind":"bend")";
    EXPECT_EQ(onlyComponent(components(branchText({lead, bend}))),
              "('BEND','/BEND 1 of BRANCH /L-1-B1','E 1000 N 0 U 0','X is E and Y is N',FALSE,'/A1/ELBOW_B-SP',5,6,"
              "'/A1/PIPE_B-SP',90)");
    // Six significant digits. The skew tube before it puts two bends in front.
    const auto lines =
        components(branchText({tube(100, at(1200, 60), at(1100, 30)), elbow(101, at(1100, 30), at(1000), at(900))}));
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[2], "('ELBO','/ELBO 1 of BRANCH /L-1-B1','E 1000 N 0 U 0',"
                        "'X is W 16.699244 S and Y is W 73.300756 N',FALSE,'/A1/ELBOW_B-SP',1,2,'unset',16.6992)");
}

TEST_F(PipesTest, TeesGoByTheirItem) {
    const std::string oblique = onlyComponent(components(branchText({lead, teeOf("COMPTee", "Tee", at(1100, 100))})));
    EXPECT_EQ(oblique, "('TEE','/TEE 1 of BRANCH /L-1-B1','E 1000 N 0 U 0','X is E and Y is E 45 N',FALSE,"
                       "'/A1/COMPTee_B-SP',1,2,'/A1/PIPE_B-SP',90)");
    const std::string lateral =
        onlyComponent(components(branchText({lead, teeOf("COMPLatera", "Latera", at(1100, 100))})));
    EXPECT_NE(lateral.find("'X is E and Y is N'"), std::string::npos) << lateral;
    EXPECT_EQ(lateral.substr(lateral.rfind(',')), ",45)");
    // Its axes come from its neighbours at 2 and 3, or from its own points; it has no row. The chain runs straight
    // through it.
    const std::string solid = onlyComponent(components(branchText({lead, teeOf("TESO", "Tee", at(1000, 0, 60))})));
    EXPECT_NE(solid.find("'X is E and Y is U',FALSE,'unset',1,2,'/A1/PIPE_B-SP',90)"), std::string::npos) << solid;
}

TEST_F(PipesTest, TheLastTubeOfTheRunBehindDecides) {
    const auto lines = components(branchText({lead, gate, tube(102, at(1100), at(2000)), weld(103, at(2000)),
                                              tube(104, at(2000), at(3000), R"(,"sch":"80")"),
                                              valve(105, at(3000), at(3200)), valve(106, at(3200), at(3400))}));
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_NE(lines[0].find(",1,2,'/A1/PIPE_C-SP','unset')"), std::string::npos) << lines[0];
    // With no tube behind them, the others take the branch's.
    EXPECT_NE(lines[1].find(",1,2,'/A1/PIPE_B-SP','unset')"), std::string::npos) << lines[1];
    EXPECT_NE(lines[2].find(",1,2,'/A1/PIPE_B-SP','unset')"), std::string::npos) << lines[2];
}

TEST_F(PipesTest, UserAttributesFollowInOrder) {
    const std::string text = branchText(
        {lead, valve(101, at(900), at(1100), R"(,"name":"gate","tag":"V'1","material":"A105","stockno":"9")")});
    EXPECT_NE(text.find(":UserItem 'VALVE' \n:UserType 'GATE' \n:CompName 'gate' \n:Tag 'V''1' \n"
                        ":Material 'A105' \nEND\nEND\n"),
              std::string::npos)
        << text;
}

// A run of flanged pipes, each of which looks for the last tube behind it.
TEST_F(PipesTest, ALongRunOfFlangedPipesCostsByItsLength) {
    const auto secondsFor = [&](int count) {
        std::vector<Part> parts;
        for (int i = 0; i < count; ++i) {
            parts.push_back(tube(100 + i, at(i * 10), at(i * 10 + 10)));
            std::string& attrs = parts.back().attrs;
            attrs.replace(attrs.find("\"BW\""), 4, "\"FLRF\"");
        }
        load({{.branches = {parts}}});
        const std::clock_t start = std::clock();
        EXPECT_EQ(components(write()).size(), static_cast<std::size_t>(count));
        return static_cast<double>(std::clock() - start);
    };
    secondsFor(100);
    const double one = secondsFor(500);
    EXPECT_LT(secondsFor(8000), 50 * one) << "16 times the pipes";
}

}  // namespace
