// Which records come out, under which parents, and what stays out.
#include "fixture.h"

namespace {

class ObmWalkTest : public ObmRun {};

const std::string siteAndZone = object(2, "HextSite", 1) + object(3, "HextZone", 2);

TEST_F(ObmWalkTest, RecordsFollowTheTree) {
    load(siteAndZone + object(4, "HextEquipe", 3) + object(5, "HxDbEquipment", 4, shape(box() + "," + box())) +
         object(6, "HextZone", 2) + object(7, "HextStdFloor", 2) + object(8, "HextStruct", 7) +
         object(9, "HxDbStruct", 8, R"(,"color":3)" + shape(box())));
    const ReadPackage read = exported();
    EXPECT_EQ(read.outline(), "P\n"
                              " M\n"
                              "  N2\n"
                              "   N3\n"
                              "    N4\n"
                              "     N5 m0 m0\n"
                              "   N6\n"
                              "   N7\n"
                              "    N8\n"
                              "     N9 m3\n");
    EXPECT_EQ(read.package.projectName, "Item");
    EXPECT_EQ(read.package.sourceProgram, "pkgb_obm.exe");
    EXPECT_EQ(read.model().views, (std::vector<std::string>{tolmar::toUtf8("俯视图"), tolmar::toUtf8("三维视图")}));
    EXPECT_EQ(read.model().trees[0].name, tolmar::toUtf8("模型树"));
    EXPECT_EQ(read.nodes()[0].databaseId, "-12581");
    for (const readers::package::TreeNode& node : read.nodes()) {
        EXPECT_EQ(node.type, 4);
    }
    EXPECT_EQ(read.scene().nodes.at(read.scene().roots.at(0)).name, "-2");
    EXPECT_EQ(passedOverRows(), "");
}

TEST_F(ObmWalkTest, EveryDatabaseHasAWorldOfItsOwn) {
    loadText(R"({"format":"tessaro-plant","version":1,"project":{"name":"P"},"databases":[
        {"name":"A","shortName":"a","root":1},{"name":"B","shortName":"b","root":10},{"name":"C","shortName":"c","root":20}],
        "objects":[{"id":1,"class":"HextWorld"},{"id":10,"class":"HextWorld"},{"id":11,"class":"HextSite","in":10},
        {"id":20,"class":"HextSite"},{"id":21,"class":"HextZone","in":20},{"id":22,"class":"HextZoneDirectory","in":21}]})");
    // What has no name, and a tree without a world at its root.
    EXPECT_EQ(outline(), "P\n a\n b\n  ORNA_SITE\n c\n  ORNA_SITE\n   ORNA_ZONE\n    Other\n    ORNA_ZONEDIR\n");
}

TEST_F(ObmWalkTest, GridsWeldsAndStopsStayOut) {
    const std::string pipe = object(11, "HextPipeline", 10) + object(12, "HxDbTubeWeld", 11, shape(cylinder())) +
                             object(13, "HxDbTubeStop", 11, shape(cylinder())) +
                             object(14, "HxDbPipeSpec", 11, shape(cylinder()));
    load(siteAndZone + object(4, "HextAxiss", 3) + object(5, "HxDbAxissLine", 4, shape(box())) +
         object(10, "HextZoneDirectory", 3) + pipe + object(20, "HextAxiss", 10) +
         object(21, "HxDbAxissLine", 20, shape(box())));
    const std::string text = outline();
    for (const char* name : {"N4", "N5", "N12", "N13", "N20", "N21"}) {
        EXPECT_EQ(text.find(name), std::string::npos) << name << "\n" << text;
    }
    EXPECT_NE(text.find("N14"), std::string::npos);
    EXPECT_EQ(passedOverRows(),
              "4 node: grids have no place in a package\n20 node: grids have no place in a package\n");
}

// It is a son of its zone like any manager, and a zone of the site beside that.
TEST_F(ObmWalkTest, AZoneInsideAZoneIsAZoneOfTheSite) {
    load(siteAndZone + object(4, "HextStdFloor", 3) + object(5, "HextStruct", 4) +
         object(6, "HxDbStruct", 5, shape(box())));
    EXPECT_EQ(outline(), "P\n M\n  N2\n   N3\n    N4\n     N6 m0\n   N4\n    N5\n     N6 m0\n");
}

// A directory is a son of its zone like any manager, and has a record of its own beside that.
TEST_F(ObmWalkTest, ADirectoryHoldsTheObjectsOfItsManagers) {
    load(siteAndZone + object(4, "HextZoneDirectory", 3) + object(5, "HextEquipe", 4) +
         object(6, "HxDbEquipment", 5, shape(box())) + object(7, "HextZoneDirectory", 4) + object(8, "HextStruct", 7) +
         object(9, "HxDbStruct", 8, shape(box())));
    EXPECT_EQ(outline(), "P\n"
                         " M\n"
                         "  N2\n"
                         "   N3\n"
                         "    N4\n"
                         "     N6 m0\n"
                         "     N9 m0\n"
                         "    N4\n"
                         "     N6 m0\n"
                         "     N7\n"
                         "      N9 m0\n"
                         "    N7\n"
                         "     N9 m0\n");
}

TEST_F(ObmWalkTest, ABoltSetIsARecordWithoutShape) {
    load(siteAndZone + object(4, "HextPipeline", 3) +
         object(5, "HxDbTubeModelSpec", 4, R"(,"attrs":{"item":"FLANGE"},"bolts":6)" + shape(cylinder())) +
         object(6, "HxDbBoltNutModel", 4, shape(cylinder())));
    EXPECT_EQ(outline(), "P\n M\n  N2\n   N3\n    N4\n     N5 m1000\n     N6\n     N6\n");
    EXPECT_EQ(passedOverRows(), "6 object: bolts have no shape in a package\n");
}

// ------------------------------------------------------------------------------------------------------- selection

const std::string twoSites = object(2, "HextSite", 1) + object(3, "HextZone", 2) + object(4, "HextEquipe", 3) +
                             object(5, "HxDbEquipment", 4, shape(box())) + object(10, "HextSite", 1) +
                             object(11, "HextZone", 10) + object(12, "HextZoneDirectory", 11) +
                             object(13, "HextEquipe", 12) + object(14, "HxDbEquipment", 13, shape(box()));

TEST_F(ObmWalkTest, AncestorsThatWereNotSelectedComeFromTheTree) {
    load(twoSites);
    struct Row {
        std::vector<std::u16string> checked;
        const char* outline;
    };
    const Row rows[] = {
        {{u"N10"}, "P\n M\n  N10\n"},
        {{u"N3"}, "P\n M\n  N2\n   N3\n    N4\n     N5 m0\n"},
        {{u"N2", u"N11"}, "P\n M\n  N2\n  N10\n   N11\n    N12\n     N14 m0\n"},
        {{u"N12"}, "P\n M\n  N10\n   N11\n    N12\n     N14 m0\n"},
        {{u"W", u"N3", u"N12"}, "P\n M\n  N2\n   N3\n    N4\n     N5 m0\n  N10\n   N11\n    N12\n     N14 m0\n"},
    };
    for (const Row& row : rows) {
        checkOnly(row.checked);
        EXPECT_EQ(outline(), row.outline);
        EXPECT_EQ(passedOverRows(), "");
    }
}

TEST_F(ObmWalkTest, AManagerComesWithItsZoneOnly) {
    load(twoSites);
    checkOnly({u"W", u"N2", u"N4"});
    EXPECT_EQ(outline(), "P\n M\n  N2\n");
    EXPECT_EQ(passedOverRows(), "4 node: no zone or directory above it is selected\n");
}

// ------------------------------------------------------------------------------------------------- broken trees

TEST_F(ObmWalkTest, ABrokenChainOfSonsLeavesOutTheZone) {
    load(siteAndZone + object(4, "HextEquipe", 3) + object(5, "HextEquipe", 3) + object(6, "HextZone", 2));
    HxDbTreeNode* site = hxcom::getDataManTreeRoot()->getSon();
    HxDbTreeNode* second = site->getSon()->getSon()->getBrother();
    plant::relinkBrother(model->model(), *second, site->getSon()->getSon());
    EXPECT_EQ(outline(), "P\n M\n  N2\n   N3\n   N6\n");
    EXPECT_NE(ui.printed.find("节点指向错误"), std::string::npos);
    EXPECT_NE(passedOverRows(), "");
}

TEST_F(ObmWalkTest, ADirectoryInsideItselfEnds) {
    load(siteAndZone + object(4, "HextZoneDirectory", 3) + object(5, "HextZoneDirectory", 4));
    HxDbTreeNode* outer = hxcom::getDataManTreeRoot()->getSon()->getSon()->getSon();
    plant::relinkSon(model->model(), *outer->getSon(), outer);
    EXPECT_NE(outline().find("N5"), std::string::npos);
    EXPECT_NE(passedOverRows().find("4 node: it stands inside itself"), std::string::npos) << passedOverRows();
}

TEST_F(ObmWalkTest, WhatDoesNotOpenIsPassedOver) {
    load(siteAndZone + object(4, "HextEquipe", 3) + object(5, "HextZoneDirectory", 3) + object(6, "HextEquipe", 5) +
         object(7, "HextZone", 2));
    ui.onForm = [this](OrnLogicForm& form) {
        TestUi::checkAll(form);
        form.onControlClicked(OrnLogicForm::ResultOk);
        for (const int id : {4, 6, 7}) {
            plant::makeUnavailable(model->model(), id);
        }
    };
    EXPECT_EQ(outline(), "P\n M\n  N2\n   N3\n    N5\n    N5\n");
    EXPECT_EQ(passedOverRows(), "4 node: it cannot be opened\n"
                                "4 node: it cannot be opened\n"
                                "6 node: it cannot be opened\n"
                                "6 node: it cannot be opened\n"
                                "7 node: it cannot be opened\n");
}

}  // namespace
