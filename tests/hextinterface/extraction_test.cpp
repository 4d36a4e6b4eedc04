#include "hextinterface/hext_commands.h"
#include "hextinterface/hextbasemethod/used_colours.h"
#include "hextinterface/model_extraction.h"

#include "frame/progress_slot.h"
#include "hextinterface/manager/name_manager.h"
#include "hextinterface/ornatohextprocess/design/site_zone.h"
#include "platform/hxcom.h"
#include "support/test_support.h"

namespace {

using Ids = std::vector<std::int64_t>;

template <typename List>
Ids idsOf(const List& objects) {
    Ids ids;
    for (const HxDbObject* object : objects) {
        ids.push_back(object->objectId().toInt());
    }
    return ids;
}

std::vector<Ids> idsOf(const PipelineBranches& branches) {
    std::vector<Ids> ids;
    for (const ComponentList& branch : branches) {
        ids.push_back(idsOf(branch));
    }
    return ids;
}

// A pipe between two others, flowing by the numbers given at its points 1 and 2.
std::string pipe(int id, int in, int flow1, int before, int flow2, int after) {
    const auto to = [](int other) { return other != 0 ? ",\"to\":" + std::to_string(other) : std::string(); };
    return R"({"id":)" + std::to_string(id) + R"(,"class":"HxDbPipeSpec","in":)" + std::to_string(in) +
           R"(,"attrs":{"item":"PIPE","smrtln":"Pipe"},"points":[{"no":1,"at":[0,0,0],"flow":)" +
           std::to_string(flow1) + to(before) + R"(},{"no":2,"at":[1,0,0],"flow":)" + std::to_string(flow2) +
           to(after) + "}]}";
}

class Extraction : public testing::Test {
protected:
    Extraction() {
        usedColours().clear();
        specialSet().clear();
    }
    TestRoot root;
    TestUi ui;
    ProgressScope progress;
    ModelScope scope;
};

const char* const mixedPlant =
    R"({"id":2,"class":"HextSite","in":1,"name":"s"},{"id":3,"class":"HextZone","in":2,"name":"z"},
    {"id":10,"class":"HextPipeline","in":3,"name":"p","color":5},
    {"id":11,"class":"HxDbTubeModelSpec","in":10,"attrs":{"module":"Hvac"}},{"id":12,"class":"HxDbPipeSpec","in":10},
    {"id":13,"class":"HxDbTubeModelSpec","in":10,"attrs":{"module":"hvac"}},
    {"id":20,"class":"HextStruct","in":3,"name":"st","color":6},{"id":21,"class":"HxDbStruct","in":20},
    {"id":30,"class":"HextEquipe","in":3,"name":"e","color":7},{"id":40,"class":"HextSupport","in":3,"name":"su","color":8},
    {"id":50,"class":"HextAxiss","in":3,"name":"g"},{"id":51,"class":"HxDbAxissLine","in":50},
    {"id":60,"class":"HextPIDPaperManager","in":3,"name":"paper"})";

TEST_F(Extraction, SortsManagersByClass) {
    TestModel model(TestModel::withObjects(mixedPlant));
    ASSERT_TRUE(classifyModel(scope, specialSet()));
    EXPECT_EQ(idsOf(scope.pipelines), Ids({10}));
    ASSERT_EQ(scope.containers.size(), 2U);
    EXPECT_EQ(idsOf(scope.containers.begin()->second), Ids({11}));
    EXPECT_EQ(idsOf(scope.containers.rbegin()->second), Ids({21}));
    EXPECT_EQ(idsOf(scope.equipment), Ids({30}));
    EXPECT_EQ(idsOf(scope.supports), Ids({40}));
    EXPECT_EQ(idsOf(scope.grids.begin()->second), Ids({51}));
    EXPECT_EQ(idsOf(specialSet()), Ids({11}));
    EXPECT_EQ(usedColours(), (std::set<std::uint16_t>{0x105, 0x205, 0x206, 0x307, 0x408}));
    EXPECT_EQ(ui.progress.title, "提取所有数据中:");
}

TEST_F(Extraction, AGridOutsideOfZonesStandsWhereStructuresDo) {
    TestModel model(TestModel::withObjects(
        R"({"id":2,"class":"HextAxiss","in":1,"name":"g"},{"id":3,"class":"HextZone","in":1,"name":"z"},
           {"id":4,"class":"HextAxiss","in":3,"name":"h"})"));
    ASSERT_TRUE(classifyModel(scope, specialSet()));
    NameManager names;
    writeGridFile((root.path() / "grids.txt").string(), scope.grids, names);
    const std::string text = root.read("grids.txt");
    EXPECT_EQ(text.rfind("OLD /ZONE_EQUIP_STRUCTURE\r\n\r\n\r\nNEW STRU /ORGridSys0\r\n", 0), 0U) << text;
    EXPECT_NE(text.find("OLD /ORNA_ZONE_z\r\n\r\n\r\nNEW STRU /ORGridSys1\r\n"), std::string::npos) << text;
}

TEST_F(Extraction, AComponentAloneSelectsItsWholePipeline) {
    TestModel model(TestModel::withObjects(mixedPlant));
    ui.onForm = [](OrnLogicForm& form) {
        auto item = TestUi::treeOf(form).topItems()[0];
        while (!item->children.empty()) {
            item = item->children.back();
        }
        TestUi::click(form, item);
        form.onControlClicked(OrnLogicForm::ResultOk);
    };
    ASSERT_TRUE(classifyModel(scope, specialSet()));
    EXPECT_EQ(scope.pipelines.size() + scope.containers.size() + scope.equipment.size() + scope.supports.size() +
                  scope.grids.size(),
              1U);
}

TEST_F(Extraction, NothingSelectedIsNothingToDo) {
    TestModel model(TestModel::withObjects(mixedPlant));
    ui.onForm = [](OrnLogicForm& form) { form.onControlClicked(OrnLogicForm::ResultCancel); };
    EXPECT_FALSE(classifyModel(scope, specialSet()));
    EXPECT_FALSE(ui.progress.open);
}

TEST_F(Extraction, BranchesRunWithTheFlow) {
    TestModel model(TestModel::withObjects(
        R"({"id":10,"class":"HextPipeline","in":1,"branches":[[11,12],[13,14],[15]]},)" + pipe(11, 10, 1, 0, 2, 12) +
        "," + pipe(12, 10, 1, 11, 2, 0) + "," + pipe(13, 10, 1, 14, 2, 0) + "," + pipe(14, 10, 1, 0, 2, 13) + "," +
        pipe(15, 10, 1, 0, 1, 0)));
    const PipelineBranches branches = getPipelineBranches(openAs<HextPipeline>(HxDbObjectId(10)));
    EXPECT_EQ(idsOf(branches), (std::vector<Ids>{{11, 12}, {14, 13}, {15}}));
}

TEST_F(Extraction, PipelinesWithoutAUsableStartHaveNoBranches) {
    TestModel model(TestModel::withObjects(
        R"({"id":10,"class":"HextPipeline","in":1,"name":"empty"},
           {"id":20,"class":"HextPipeline","in":1,"name":"crowded","start":21,"branches":[[21,22]]},
           {"id":21,"class":"HxDbNozzleModel","points":[{"no":1,"at":[0,0,0],"to":[22,23]}]},)" +
        pipe(22, 20, 1, 0, 2, 0) + "," + pipe(23, 20, 1, 0, 2, 0)));
    const BranchTree branches =
        extractBranches({openAs<HextPipeline>(HxDbObjectId(10)), openAs<HextPipeline>(HxDbObjectId(20))});
    EXPECT_TRUE(branches.empty());
    const auto& passed = tolmar::runReport().passed();
    ASSERT_EQ(passed.size(), 2U);
    EXPECT_EQ(passed[0].name, "empty");
    EXPECT_EQ(passed[1].name, "crowded");
}

class SharedEnds : public Extraction {
protected:
    BranchTree load(const std::string& lists) {
        std::string objects = R"({"id":10,"class":"HextPipeline","in":1,"branches":)" + lists + "}";
        for (int id = 11; id <= 16; ++id) {
            objects += "," + pipe(id, 10, 0, 0, 0, 0);
        }
        model.reset();
        model = std::make_unique<TestModel>(TestModel::withObjects(objects));
        return {getPipelineBranches(openAs<HextPipeline>(HxDbObjectId(10)))};
    }
    std::unique_ptr<TestModel> model;
    IdMarks seen;
};

TEST_F(SharedEnds, TheLaterExaminedBranchLosesTheEnd) {
    BranchTree branches = load("[[11,12],[12,13,14]]");
    EXPECT_TRUE(checkSharedComponents(branches, seen));
    EXPECT_EQ(idsOf(branches[0]), (std::vector<Ids>{{11}, {12, 13, 14}})) << "examined from the last branch on";
    EXPECT_TRUE(seen.contains(HxDbObjectId(11)) && seen.contains(HxDbObjectId(12)));
    EXPECT_FALSE(seen.contains(HxDbObjectId(15)));
    seen.clear();
    branches = load("[[12],[12,13]]");
    EXPECT_TRUE(checkSharedComponents(branches, seen));
    EXPECT_EQ(idsOf(branches[0]), (std::vector<Ids>{{12, 13}})) << "an emptied branch goes";
}

TEST_F(SharedEnds, AnEmptiedPipelineGoesAndTheNextIsStillExamined) {
    BranchTree branches = load("[[11]]");
    branches.push_back(branches[0]);
    branches.push_back({{branches[0][0][0], branches[0][0][0]}});
    EXPECT_TRUE(checkSharedComponents(branches, seen));
    EXPECT_EQ(branches.size(), 1U);
}

TEST_F(SharedEnds, AComponentSharedInsideIsAFault) {
    BranchTree branches = load("[[13,14,15],[11,14,12]]");
    EXPECT_FALSE(checkSharedComponents(branches, seen));
    EXPECT_NE(ui.printed.find("多个分支存在相同管件14:"), std::string::npos) << ui.printed;
}

TEST_F(Extraction, ShowHextBranchColoursOnePipeline) {
    TestModel model(TestModel::withObjects(R"({"id":10,"class":"HextPipeline","in":1,"branches":[[11],[12,13]]},)" +
                                           pipe(11, 10, 0, 0, 0, 0) + "," + pipe(12, 10, 0, 0, 0, 0) + "," +
                                           pipe(13, 10, 0, 0, 0, 0)));
    showHextBranch();
    const auto& colours = tolmar::runReport().colours();
    ASSERT_EQ(colours.size(), 3U);
    EXPECT_EQ(colours[0].color, 1);
    EXPECT_EQ(colours[2].color, 2);
    EXPECT_EQ(openAs<HxDbPipeSpec>(HxDbObjectId(13))->getColorIdx(), 2);
    EXPECT_FALSE(ui.progress.open);
}

TEST_F(Extraction, ShowHextBranchEndsQuietlyOnACancel) {
    TestModel model(TestModel::withObjects(mixedPlant));
    ui.cancelAt = 2;
    showHextBranch();
    EXPECT_EQ(tolmar::runReport().outcome(), tolmar::RunOutcome::Cancelled);
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_FALSE(ui.progress.open);
}

}  // namespace
