#include "fixture.h"
#include "frame/exceptions.h"
#include "support/failure.h"
#include "tolmar/color.h"

namespace {

const Part shortTube = tube(100, at(0, 0, 1000), at(900, 0, 1000));
const Part gate = valve(101, at(900, 0, 1000), at(1100, 0, 1000));
const Part longTube = tube(102, at(1100, 0, 1000), at(5000, 0, 1000));

TEST_F(PipesTest, AnInsulatedPipeNamesItsInsulationOnPipeAndBranch) {
    const Line line{.attrs = R"("insul":"1","insulcode":"HR","destemp":"","despress":"1.6")",
                    .branches = {{shortTube, gate, longTube}}};
    load({line});
    const std::string spec = names->insulation.getInsulSpecName("HR");
    createdIspecs().insert(spec);
    const std::string text = write();
    EXPECT_NE(text.find("CreatePipe('/L-1',0,1.6,'/A1','/" + spec + "')"), std::string::npos) << text;
    EXPECT_NE(text.find("CreateBranch('/L-1-B1',0,0,'/" + spec + "',"), std::string::npos) << text;
    load({{.attrs = R"("insul":"1","insulcode":"HR","destemp":"150")", .branches = line.branches}});
    EXPECT_NE(write().find("CreateBranch('/L-1-B1',150,0,'/" + spec + "',"), std::string::npos);
}

TEST_F(PipesTest, APipelineThatFailsIsLeftOutWithItsBranches) {
    const auto lineOf = [](int id, const char* name, const char* attrs) {
        const double x = id * 10000;
        return Line{
            id, name, attrs, {{tube(10 * id, at(x), at(x + 900)), valve(10 * id + 1, at(x + 900), at(x + 1100))}}, {}};
    };
    load({lineOf(11, "L 1", R"("insul":"0")"), lineOf(12, "L-2", R"("insul":"0","destemp":"12C")"),
          lineOf(13, "L-3", R"("insul":"0","despress":"1-2")"), lineOf(14, "L-4", R"("insul":"1","insulcode":"no")"),
          lineOf(15, "L-5", R"("insul":"1")"), lineOf(16, "L-6", R"("insul":"0")"),
          lineOf(17, std::string(52, 'n').c_str(), R"("insul":"0")")});
    const std::string text = write();
    EXPECT_EQ(text.find("CreatePipe("), text.rfind("CreatePipe("));
    EXPECT_EQ(text.find("CreateBranch("), text.find("CreateBranch('/L-6-B1'"));
    EXPECT_EQ(text.find("CreateBranch("), text.rfind("CreateBranch("));
    const std::string ispec = names->insulation.getInsulSpecName("no");
    EXPECT_EQ(ui.printed, "Error:createpipe <L 1> _name attr value not allow space"
                          "Error:createpipe <L-2> temp attr value <12C> invalid"
                          "Error:createpipe <L-3> press attr value <1-2> invalid"
                          "Error:createpipe <L-4> ispec attr value <" +
                              ispec + "> invalid\nerrId:150\nError:create pipe name<" + std::string(52, 'n') +
                              "> too long");
    EXPECT_EQ(reasons(), "11 pipe: 属性错误\n12 pipe: 属性错误\n13 pipe: 属性错误\n14 pipe: 属性错误\n"
                         "15 pipe: 保温代号为空\n17 pipe: 命名错误\n");
}

// The line behind a pipe looks for it by its display name.
TEST_F(PipesTest, APipeWhoseNameIsTakenSaysSo) {
    load({{.branches = {{tube(100, at(0), at(900))}}}, {.id = 11, .branches = {{tube(200, at(5000), at(5900))}}}});
    const std::string text = write();
    EXPECT_NE(text.find("('/L-1_0',"), std::string::npos) << text;
    EXPECT_EQ(reasons(), "11 pipe name: its element is named \"L-1_0\", which its branches do not ask for\n");
}

TEST_F(PipesTest, APipelineWithoutAnItemOfItsOwnIsPassedOver) {
    load({{.branches = {{weld(98, at(0)), weld(99, at(0))}}},
          {.id = 11, .name = "L-2", .branches = {{shortTube, gate, longTube}}},
          {.id = 12, .name = "L-3", .branches = {{tube(200, at(0, 9), at(9, 9))}, {tube(201, at(0, 8), at(9, 8))}}}});
    ObjectSet skip;
    for (const int id : {100, 101, 102, 200}) {
        skip.insert(openAs<HxDbObject>(HxDbObjectId(id)));
    }
    EXPECT_EQ(write(skip), "");
    // What goes out with the structures is no loss.
    EXPECT_EQ(reasons(), "98 pipe: its first branch has no item of its own\n"
                         "200 pipe: its first branch has no item of its own\n");
    // Nor is a branch of it in a pipe that has others.
    Part duct = valve(201, at(0, 8), at(9, 8));
    duct.attrs.replace(duct.attrs.find("\"100\""), 5, R"("600*400")");
    load({{.branches = {{shortTube, gate, longTube}, {duct}}}});
    EXPECT_NE(write({openAs<HxDbObject>(HxDbObjectId(201))}), "");
    EXPECT_EQ(reasons(), "");
    write();
    EXPECT_EQ(reasons(), "201 branch: an end has no plain size\n");
}

TEST_F(PipesTest, BranchTextFollowsTheStateOfTheName) {
    _HextBranchDesc branch(false);
    branch.name = "B1";
    branch.headPosition = "E 0 N 0 U 0";
    branch.headBore = "100";
    branch.colour = "3";
    branch.endKind = 2;
    branch.linkName = "B0";
    const std::string prop = "!!ORNAPipeSetBranchProp('E 0 N 0 U 0','unset','unset','unset','100','unset','unset',"
                             "'unset','unset')\n";
    const std::string handle = "LAST MEM\nhandle (2,113)\nendhandle\n";
    std::string text;
    branch.write(text, false);
    EXPECT_EQ(text, "\n" + banner + "!!ORNAPipeCreateBranch('/B1',0,0,'unset','3')\n" + prop + handle);
    text.clear();
    branch.write(text, true);
    EXPECT_EQ(text, "OLD /B1\n" + prop + "TREF /B0\nOLD /B0\nHREF /B1\nOLD /B1\n" + handle);
    for (const auto& [kind, tail] : {std::pair(-1, std::string()), {0, handle}, {1, std::string()}}) {
        branch.endKind = kind;
        text.clear();
        branch.write(text, true);
        EXPECT_EQ(text, "OLD /B1\n" + prop + tail) << kind;
    }
}

TEST_F(PipesTest, NamesHave51BytesAndBoresNoStar) {
    _HextBranchDesc branch(false);
    std::string text;
    branch.name = std::string(51, 'b');
    branch.write(text, false);
    branch.name = std::string(52, 'b');
    text.clear();
    EXPECT_THROW(branch.write(text, false), ExportException);
    EXPECT_EQ(text, "");
    EXPECT_EQ(ui.printed, "Error:create branch name<" + branch.name + "> too long");
    branch.write(text, true);
    EXPECT_EQ(text.substr(0, 58), "OLD /" + branch.name + "\n");
    EXPECT_EQ(failureOf<ExportException>([&] { branch.setBore(_HextBranchDesc::End::Tail, "100*50"); }), "");
}

TEST_F(PipesTest, ABranchOfStopsAndNozzlesYieldsNothing) {
    const std::vector<std::vector<Part>> nothing = {{stop(200, at(0))},
                                                    {stop(200, at(0)), nozzle(201, at(0))},
                                                    {nozzle(201, at(0)), stop(200, at(0))},
                                                    {nozzle(201, at(0))}};
    for (const auto& parts : nothing) {
        load({{.branches = {{shortTube, gate}, parts}}});
        const std::string text = write();
        EXPECT_EQ(text.find(banner), text.rfind(banner));
        EXPECT_EQ(reasons(), std::to_string(parts.front().id) + " branch: holds nothing but stops and nozzles\n");
    }
}

TEST_F(PipesTest, StopsDecideTheKindOfTheEnd) {
    const std::string handle = "LAST MEM\nhandle (2,113)\nendhandle\n";
    const Part head = stop(98, at(0, 0, 1000));
    const Part tail = stop(99, at(5000, 0, 1000));
    for (const auto& [parts, hasHandle] : {std::pair(std::vector{head, shortTube, gate, longTube}, true),
                                           std::pair(std::vector{shortTube, gate, longTube, tail}, false),
                                           std::pair(std::vector{head, shortTube, gate, longTube, tail}, true)}) {
        const std::string text = branchText(parts);
        EXPECT_EQ(text.find(handle) != std::string::npos, hasHandle) << text;
        EXPECT_EQ(text.find("REF /"), std::string::npos);
        EXPECT_NE(text.find("'E 0 N 0 U 1000','E 5000 N 0 U 1000','E','W'"), std::string::npos) << text;
    }
}

TEST_F(PipesTest, ExportableAreComponentsAndFlangedPipes) {
    load({{.branches = {{tube(100, at(0), at(1)), tube(101, at(1), at(2)), valve(102, at(2), at(3)), stop(103, at(3)),
                         nozzle(104, at(3)), valve(105, at(3), at(4)), weld(106, at(4)), tube(107, at(4), at(5))}}}});
    const ComponentList& items = tree.front().front();
    plant::setAttribute(model->model(), 101, "end1", "FLRF");
    plant::setAttribute(model->model(), 107, "end1", "F");
    plant::setAttribute(model->model(), 105, "size1", "1*2");
    clearBomCache();
    std::vector<int> exportable;
    for (std::size_t at = 0; (at = nextExportable(items, at)) < items.size(); ++at) {
        exportable.push_back(static_cast<int>(items[at]->objectId().toInt()));
    }
    EXPECT_EQ(exportable, (std::vector<int>{101, 102, 106}));
    EXPECT_EQ(nextExportable(items, items.size()), items.size());
}

}  // namespace
