// Groups, their order, the options, and what breaks a level.
#include "navisworks/scene/tree.h"
#include "support.h"

namespace {

class SceneTreeTest : public NvTest {};

// Names of groups alone, two blanks a level.
std::string groupsOf(const std::string& tree) {
    std::string out;
    std::istringstream lines(tree);
    for (std::string line; std::getline(lines, line);) {
        if (line.find("triangles") == std::string::npos) {
            out += line.substr(0, line.find(" {")) + "\n";
        }
    }
    return out;
}

HxDbTreeNode* nodeOfObject(std::int64_t id) {
    return openAs<HxDbTreeNode>(HxDbObjectId((std::int64_t{1} << 46) + id));
}

TEST_F(SceneTreeTest, NamesAndTheirStandIns) {
    load(node(2, "HextSite", 1) + "," + node(3, "HextZone", 2) + "," + node(4, "HextZoneDirectory", 3) + "," +
         node(5, "HextZoneDirectory", 4, "inner") + "," + node(6, "HextEquipe", 5, "E") + "," +
         item(7, "HxDbEquipment", 6) + "," + node(8, "HextStdFloor", 2, "floor") + "," +
         node(9, "HextZoneDirectory", 2, "at the site") + "," + node(10, "HextEquipe", 9));
    script(namesById);
    EXPECT_EQ(groupsOf(run()), "M\n  ORNA_SITE\n    ORNA_ZONE\n      ORNA_ZONEDIR\n        inner\n          N6\n"
                               "            N7*\n    floor\n    at the site\n      N10\n");
    EXPECT_EQ(passedOver(), "");
}

TEST_F(SceneTreeTest, ATreeMayBeginBelowTheWorld) {
    const auto rooted = [](const std::string& type) {
        return R"({"format":"tessaro-plant","version":1,"databases":[{"name":"D","root":1}],"objects":[)"
               R"({"id":1,"class":")" +
               type + R"(","name":"top"},)" +
               item(2, type == "HextAxiss" ? "HxDbAxissLine" : "HxDbEquipment", 1, "",
                    R"({"type":"HextPrimaryLine","startPoint":[0,0,0],"endPoint":[9,0,0]})") +
               "]}";
    };
    script(namesById);
    const std::pair<const char*, const char*> cases[] = {
        {"HextZone", "ORNA_WORLD\n  top\n    N2\n"},
        {"HextZoneDirectory", "ORNA_WORLD\n  top\n    N2\n"},
        {"HextSite", "ORNA_WORLD\n  top\n"},
        {"HextEquipe", "ORNA_WORLD\n  N1\n    N2*\n      strip 2 #FF0000\n"},
        {"HextAxiss", "grid top [Base 0]\n   (0,0,0)-(9,0,0)\nORNA_WORLD\n"},
    };
    for (const auto& [type, expected] : cases) {
        model.reset();
        model = std::make_unique<TestModel>(rooted(type));
        EXPECT_EQ(groupsOf(run()), expected) << type;
    }
}

const std::string twoZones =
    node(2, "HextSite", 1, "S") + "," + node(3, "HextZone", 2, "Z") + "," + node(4, "HextEquipe", 3, "E4") + "," +
    node(5, "HextZoneDirectory", 3, "D") + "," + node(6, "HextEquipe", 5, "E6") + "," + node(7, "HextEquipe", 5, "E7") +
    "," + node(8, "HextAxiss", 3, "G") + "," + node(9, "HextEquipe", 3, "E9") + "," + node(10, "HextZone", 2, "Y");

TEST_F(SceneTreeTest, TheScriptOrdersTheManagersOfALevel) {
    load(twoZones);
    options({"sortNode"});
    script(std::string(namesById) +
           "function sortTreeNodes(ids) local t = {} for i = #ids, 1, -1 do t[#t + 1] = ids[i] end "
           "t[#t + 1] = 4711 return t end");
    EXPECT_EQ(groupsOf(run()),
              "grid G [Base 0]\nM\n  S\n    Z\n      D\n        N7\n        N6\n      N9\n      N4\n    Y\n")
        << "directories and grids do not wait";
    EXPECT_NE(passedOver().find("4711 node\n"), std::string::npos) << "an id of nothing";
}

TEST_F(SceneTreeTest, WithoutAScriptNothingIsOrderedAndNothingAdded) {
    load(twoZones);
    options({"sortNode"});
    EXPECT_EQ(groupsOf(run()), "grid G [Base 0]\nM\n  S\n    Z\n      D\n    Y\n");
    EXPECT_EQ(tolmar::runReport().passed().size(), 4U) << passedOver();
}

TEST_F(SceneTreeTest, UnselectedNodesStayOut) {
    load(twoZones);
    script(namesById);
    ui.uncheck({u"D", u"E4", u"Y"});
    EXPECT_EQ(groupsOf(run()), "grid G [Base 0]\nM\n  S\n    Z\n      N9\n");
    EXPECT_EQ(passedOver(), "");
}

TEST_F(SceneTreeTest, WhatStandsOutsideSitesAndZonesIsTold) {
    load(node(2, "HextSite", 1, "S") + "," + node(3, "HextEquipe", 2, "E") + "," + node(4, "HextZone", 1, "Z") + "," +
         node(5, "HextZone", 2, "Y") + "," + item(6, "HxDbEquipment", 5));
    script(namesById);
    EXPECT_EQ(run(), "M\n  S\n    Y\n      N6 {}\n");
    EXPECT_EQ(passedOver(), "3 node\n6 object\n4 node\n");
}

TEST_F(SceneTreeTest, ABrokenChainLeavesItsZoneEmpty) {
    load(twoZones);
    script(namesById);
    HxDbTreeNode* nine = nodeOfObject(9);
    HxDbTreeNode* five = nodeOfObject(5);
    ui.onProgress = [&](const tolmar::ProgressState&) { plant::relinkBrother(model->model(), *nine, five); };
    EXPECT_EQ(groupsOf(run()), "M\n  S\n    Z\n    Y\n");
    EXPECT_NE(ui.printed.find("\n节点指向错误,指向链表如下:\n\n" + std::to_string(five->objectId().toInt()) + " -->\n"),
              std::string::npos)
        << ui.printed;
    EXPECT_EQ(tolmar::runReport().passed().size(), 1U);
}

TEST_F(SceneTreeTest, ADirectoryBelowItselfHasAnEnd) {
    load(twoZones);
    script(namesById);
    ui.onProgress = [&](const tolmar::ProgressState&) {
        plant::relinkBrother(model->model(), *nodeOfObject(7), nodeOfObject(5));
    };
    run();
    EXPECT_EQ(groupsOf(read().below("D")), "N6\nN7\nN9\n") << "its new brothers, too, but not the directory again";
    EXPECT_NE(passedOver().find("5 tree\n"), std::string::npos) << passedOver();
}

// Objects vanish after the dialog.
TEST_F(SceneTreeTest, AnObjectThatDoesNotOpenEndsItsLevel) {
    load(twoZones + "," + node(11, "HextEquipe", 5, "E11"));
    script(std::string(namesById) + "function sortTreeNodes(ids) return ids end");
    options({"sortNode"});
    ui.onProgress = [this](const tolmar::ProgressState&) { plant::makeUnavailable(model->model(), 7); };
    EXPECT_EQ(groupsOf(run()), "grid G [Base 0]\nM\n  S\n    Z\n      D\n      N4\n      N9\n    Y\n")
        << "managers of the directory wait in vain";
    EXPECT_NE(ui.printed.find("\nOpen ObjId:7 Fail"), std::string::npos);
    EXPECT_EQ(passedOver(), "11 node\n6 node\n7 node\n");

    tolmar::runReport().clear();
    ui.printed.clear();
    load(twoZones);
    ui.onProgress = [this](const tolmar::ProgressState&) { plant::makeUnavailable(model->model(), 5); };
    EXPECT_EQ(groupsOf(run()), "M\n  S\n    Z\n      N4\n    Y\n") << "a zone keeps what came before";
    EXPECT_EQ(ui.printed.find("Fail"), std::string::npos);
    EXPECT_EQ(passedOver(), "8 node\n9 node\n5 node\n");
}

// -------------------------------------------------------------------------------------------------------------
// managers

const std::string pipeline =
    node(2, "HextSite", 1, "S") + "," + node(3, "HextZone", 2, "Z") +
    R"(,{"id":4,"class":"HextPipeline","in":3,"name":"L",)"
    R"("runs":[{"name":"run A","items":[5,6],"attrs":[{"key":"k1","value":"v1","description":"label"},{"key":"k2","value":2}]},)"
    R"({"name":"run B","items":[7]}]},)" +
    item(5, "HxDbPipeSpec", 4) + "," + item(6, "HxDbTubeWeld", 4) + "," + item(7, "HxDbTubeModelSpec", 4) + "," +
    item(8, "HxDbTubeStop", 4) + "," + item(9, "HxDbTubeModelSpec", 4);

TEST_F(SceneTreeTest, PipelinesAreWholeByDefault) {
    load(pipeline);
    script(namesById);
    EXPECT_EQ(groupsOf(run()), "M\n  S\n    Z\n      N4\n        N5*\n        N7*\n        N9*\n");
    options({"outWeld"});
    EXPECT_EQ(groupsOf(run()), "M\n  S\n    Z\n      N4\n        N5*\n        N6*\n        N7*\n        N9*\n");
    EXPECT_EQ(passedOver(), "") << "welds and stops are no losses";
}

TEST_F(SceneTreeTest, PipelinesOpenIntoTheirRuns) {
    load(pipeline);
    script(namesById);
    options({"nvExpandBranch"});
    nvout();
    EXPECT_EQ(groupsOf(read().tree()),
              "M\n  S\n    Z\n      N4\n        run A\n          N5*\n        run B\n          N7*\n");
    EXPECT_NE(read().tree().find("run A {label=v1, k2=2}\n"), std::string::npos) << read().tree();
    EXPECT_NE(read().tree().find("run B {}\n"), std::string::npos);
    EXPECT_EQ(passedOver(), "9 object\n") << "it stands in no run";
    EXPECT_NE(json().find("\"W`S`Z`L`N5\""), std::string::npos) << "the path is the pipeline's";
}

TEST_F(SceneTreeTest, APipelineWithoutRunsSaysSoAndStaysWhole) {
    load(node(2, "HextSite", 1, "S") + "," + node(3, "HextZone", 2, "Z") + "," + node(4, "HextPipeline", 3, "L") + "," +
         item(5, "HxDbPipeSpec", 4));
    script(namesById);
    options({"nvExpandBranch"});
    EXPECT_EQ(groupsOf(run()), "M\n  S\n    Z\n      N4\n        N5*\n");
    EXPECT_NE(ui.printed.find("\n无法展开piperun分支"), std::string::npos);
}

TEST_F(SceneTreeTest, ManagersBelowAManager) {
    const auto plant = [](const std::string& type) {
        return node(2, "HextSite", 1, "S") + "," + node(3, "HextZone", 2, "Z") + "," + node(4, type, 3, "top") + "," +
               item(5, "HxDbStruct", 4) + "," + node(6, type, 4, "sub") + "," + item(7, "HxDbStruct", 6) + "," +
               node(8, type, 4, "off") + "," + item(9, "HxDbStruct", 8);
    };
    script(namesById);
    ui.uncheck({u"off"});
    load(plant("HextEquipe"));
    EXPECT_EQ(groupsOf(run()), "M\n  S\n    Z\n      N4\n        N5*\n        N7*\n");
    EXPECT_NE(json().find("\"W`S`Z`top`N5\""), std::string::npos) << json();
    EXPECT_NE(json().find("\"W`S`Z`top`sub`N7\""), std::string::npos) << "by the sub-node";
    load(plant("HextStruct"));
    EXPECT_EQ(groupsOf(run()), "M\n  S\n    Z\n      N4\n        N7*\n");
    EXPECT_EQ(passedOver(), "5 object\n");
}

// ----------------------------------------------------------------------------------------------------------------
// grids

const std::string grid = node(2, "HextSite", 1, "S") + "," + node(3, "HextZone", 2, "Z") + "," +
                         node(4, "HextAxiss", 3, "grid") + "," +
                         item(5, "HxDbAxissLine", 4, R"("no":"A")",
                              box() + R"(,{"type":"HextPrimaryLine","startPoint":[1,2,3],"endPoint":[1,9,3]},)"
                                      R"({"type":"HextPrimaryLine","startPoint":[5,5,5],"endPoint":[6,6,6]})") +
                         "," + item(6, "HxDbAxissLine", 4, R"("no":"B")") + "," + item(7, "HxDbEquipment", 4);

TEST_F(SceneTreeTest, AGridIsAGridSystem) {
    load(grid);
    script(namesById);
    EXPECT_EQ(run(), "grid grid [Base 0]\n  A (1,2,3)-(1,9,3)\nM\n  S\n    Z\n");
    EXPECT_EQ(passedOver(), "6 grid line\n7 object\n");
    EXPECT_EQ(json(), "{\n}");
}

TEST_F(SceneTreeTest, AGridMayGoOutAsGeometry) {
    load(grid);
    script(namesById);
    options({"orAxiss"});
    EXPECT_EQ(run(), "M\n  S\n    Z\n      N4 {}\n        N5* {}\n          triangles 12 #FFFFFF\n"
                     "          strip 2 #FF0000\n          strip 2 #FF0000\n        N6* {}\n"
                     "          triangles 12 #FFFFFF\n        N7* {}\n          triangles 12 #FFFFFF\n");
}

}  // namespace
