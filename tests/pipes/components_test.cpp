#include "fixture.h"
#include "frame/exceptions.h"

namespace {

const Part lead = tube(100, at(0), at(900));

TEST_F(PipesTest, AFlangedPipeWritesItsLength) {
    Part piece = tube(101, at(900), at(2134.5678));
    piece.attrs.replace(piece.attrs.find("\"BW\""), 4, "\"FLRF\"");
    const std::string text = onlyComponent(components(branchText({lead, piece})));
    EXPECT_EQ(text.substr(0, 7), "('FTUB'");
    EXPECT_NE(text.find("'E 900 N 0 U 0','X is E and Y is N',FALSE,"), std::string::npos) << text;
    EXPECT_EQ(text.substr(text.rfind(',')), ",1234.57)");
}

TEST_F(PipesTest, AStraightValveIsTurnedByItsStem) {
    Part gate = valve(101, at(900), at(1100));
    gate.more = R"(,"refVec":[0,0,1])";
    EXPECT_NE(onlyComponent(components(branchText({lead, gate}))).find("'X is E and Y is U'"), std::string::npos);
    gate.more = R"(,"refVec":[-3,0,0])";
    EXPECT_NE(onlyComponent(components(branchText({lead, gate}))).find("'X is E and Y is N'"), std::string::npos);
    gate.more = R"(,"refVec":[0,0,1])";
    gate.attrs.replace(gate.attrs.find("Normal"), 6, "Pipe");
    EXPECT_NE(onlyComponent(components(branchText({lead, gate}))).find("'X is E and Y is N'"), std::string::npos);
}

TEST_F(PipesTest, ABranchThatFailsIsLeftOutWholeAndTheOthersStand) {
    const auto far = [](double y) {
        return std::vector{tube(300, at(0, y), at(900, y)), valve(301, at(900, y), at(1100, y))};
    };
    const std::vector<Part> endless = {tube(208, at(0, 4), at(1e200, 4)), valve(209, at(1e200, 4), at(2e200, 4))};
    const Part noRow = valve(201, at(900, 5), at(1100, 5), R"(,"rating":"PN99")");
    Part wye = valve(203, at(900, 6), at(1100, 6));
    wye.attrs = R"("item":"YTEE","smrtln":"Y","size1":"100")";
    wye.points = {{0, 1000, 6, 0}, {1, 1100, 6, 0, 2}, {4, 900, 6, 0, 1}, {2, 1000, 100, 0, 2}, {3, 1000, 200, 0}};
    Part odd = valve(205, at(900, 7), at(1100, 7));
    odd.attrs = R"("item":"REDU","smrtln":"Knot","size1":"100")";
    Part flat = valve(207, at(900, 8), at(900, 8));
    flat.attrs = R"("item":"REDU","smrtln":"Ecc","size1":"100")";
    load({{.branches = {{tube(200, at(0, 5), at(900, 5)), noRow},
                        {tube(202, at(0, 6), at(900, 6)), wye},
                        {tube(204, at(0, 7), at(900, 7)), odd},
                        {tube(206, at(0, 8), at(900, 8)), flat},
                        endless,
                        far(9)}}},
         {201});
    const std::string text = write();
    EXPECT_EQ(text.find(banner), text.rfind(banner)) << text;
    EXPECT_EQ(components(text).size(), 1U);
    EXPECT_NE(text.find("CreateBranch('/L-1-B6'"), std::string::npos);
    EXPECT_EQ(reasons(), "200 branch: 对象未创建等级\n"
                         "202 branch: 请检查元件端部连接关系,port:2,id:203\n"
                         "204 branch: 智能线类型元件Knot不能转换为HEXT元件\n"
                         "206 branch: 无效方向\n"
                         "208 branch: 无效方向\n");
    EXPECT_EQ(ui.printed, "Error:201<对象未创建等级>\nID:207<无效方向>");
}

TEST_F(PipesTest, ATubeWithoutARowCostsTheBranch) {
    load({{.branches = {{lead, valve(101, at(900), at(1100)), tube(102, at(1100), at(2000), R"(,"sch":"80")")}}}},
         {102});
    EXPECT_EQ(write().find(banner), std::string::npos);
    EXPECT_EQ(ui.printed, "Error:102<对象未创建等级>");
}

TEST_F(PipesTest, TheInsulationOfAComponentMustBeKnown) {
    const std::string insulated = R"("insul":"1","insulcode":"")";
    Part code = lead;
    code.more = R"(,"insulation":{"thickness":50,"material":"wool","code":"HR"})";
    Part gate = valve(101, at(900), at(1100));
    load({{.attrs = insulated, .branches = {{code, gate}}}});
    createdIspecs().insert(names->insulation.getInsulSpecName("HR"));
    const std::string text = write();
    EXPECT_NE(text.find("CreatePipe("), std::string::npos);
    EXPECT_EQ(text.find(banner), std::string::npos);
    EXPECT_EQ(ui.printed, "\nerrId:101\n");
    EXPECT_EQ(reasons(), "100 branch: 保温代号为空\n");
}

TEST_F(PipesTest, CustomNamesComeFromThePlantAndAreUnique) {
    const auto gates = [](const char* first, const char* second) {
        return std::vector{lead, valve(101, at(900), at(1100), first), valve(102, at(1100), at(1300), second)};
    };
    const char* const pair = R"(,"eqno":"V1","eqno1":"A")";
    EXPECT_EQ(branchText(gates(pair, pair)).find("TRUE"), std::string::npos);
    eqnoName() = true;
    const auto lines = components(branchText(gates(pair, R"(,"eqno1":"B")")));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].substr(0, 22), "('VALV',TRUE,'/V1-A','");
    EXPECT_EQ(lines[1].substr(0, 19), "('VALV',TRUE,'/B','");
    customNames().clear();
    EXPECT_EQ(components(branchText(gates(R"(,"eqno":"V1")", ""))).at(1).substr(0, 14), "('VALV',FALSE,");
    customNames().clear();
    EXPECT_EQ(branchText(gates(pair, pair)), "");
    EXPECT_EQ(ui.printed, "Error:102<自定义名称[V1-A]已存在于对象101> ");
    EXPECT_EQ(reasons(), "100 branch: <自定义名称已存在>\n");
    // The table outlives a branch, and an object may come again.
    EXPECT_EQ(components(branchText(gates(pair, ""))).at(0).substr(0, 20), "('VALV',TRUE,'/V1-A'");
}

TEST_F(PipesTest, ANameTooLongIsNoticedWhenTheBranchIsWritten) {
    eqnoName() = true;
    const std::string name(52, 'q');
    const std::vector<Part> parts = {lead, valve(101, at(900), at(1100)),
                                     valve(102, at(1100), at(1300), ",\"eqno\":\"" + name + "\"")};
    const std::string text = branchText(parts);
    EXPECT_EQ(components(text).size(), 1U);
    EXPECT_EQ(text.substr(text.size() - 4), "END\n");
    EXPECT_EQ(text.find("END\nEND\n"), std::string::npos);
    EXPECT_EQ(ui.printed, "Error:create comp name<" + name + "> too long");
    EXPECT_EQ(reasons(), "100 branch: 命名错误\n");
}

}  // namespace
