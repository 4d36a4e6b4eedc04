// The command: questions, files, endings, failures, cancel.
#include "generator/generate.h"
#include "navisworks/library/session.h"
#include "support.h"

namespace {

class Nvout : public NvTest {
protected:
    void loadPlant() { load(equipment(item(5, "HxDbEquipment", 4, R"("color":1)"))); }
};

TEST_F(Nvout, AsksForAFileAndWritesSceneAndSideFile) {
    loadPlant();
    EXPECT_EQ(run(), "M\n  S\n    Z\n      Other {}\n        Other* {}\n          triangles 12 #FF0000\n");
    EXPECT_TRUE(ui.asked.save);
    EXPECT_TRUE(ui.asked.overwritePrompt);
    EXPECT_EQ(ui.asked.fileName, "");
    EXPECT_EQ(ui.asked.defaultExtension, "nwc");
    EXPECT_EQ(ui.asked.filter, "Navisworks缓冲 (*.nwc)|*.nwc|All Files(*.*)|*.*||");
    EXPECT_EQ(ui.folderTitle, "") << "no second question";
    EXPECT_EQ(ui.progressTitle, "NavisWorks导出");
    EXPECT_FALSE(ui.progress.open);
    EXPECT_EQ(ui.boxes, std::vector<std::string>{"提示: 导出结束"});
    EXPECT_NE(ui.printed.find(*ui.fileAnswer + "生成完成"), std::string::npos);
    EXPECT_EQ(filesOut(), (std::vector<std::string>{"P.json", "P.nwc"}));
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Done);
    EXPECT_EQ(tolmar::runReport().files().size(), 2U);
    EXPECT_EQ(passedOver(), "");
}

TEST_F(Nvout, SceneSettings) {
    loadPlant();
    nvout();
    const SceneReading scene = read();
    EXPECT_EQ(scene.scene().title, "Orna Model");
    std::string extras = scene.scene().extras;
    std::erase(extras, ' ');
    for (const char* part :
         {R"("units":"millimetres")", "0.4,0.6901960784313725,0.9137254901960784",
          "0.792156862745098,0.8980392156862745,0.9803921568627451",
          "0.4117647058823529,0.41568627450980394,0.4196078431372549",
          "0.7843137254901961,0.7843137254901961,0.7843137254901961", R"("ambient":[0.9,0.9,0.7])"}) {
        EXPECT_NE(extras.find(part), std::string::npos) << part << " in " << extras;
    }
    std::string views;
    for (const readers::scene::Node& node : scene.scene().nodes) {
        views += node.camera != readers::scene::none ? node.extras : "";
    }
    std::erase(views, ' ');
    EXPECT_EQ(views, R"({"worldUp":[0,0,1],"position":[0,-20,10],"target":[0,0,10]})") << "one view for both";
}

TEST_F(Nvout, WithoutAFileAFolderIsAskedForAndElseTheProjectsServes) {
    loadPlant();
    ui.fileAnswer.reset();
    ui.folderAnswer = out().string();
    nvout();
    EXPECT_EQ(ui.folderTitle, "选择文件夹");
    EXPECT_EQ(filesOut(), (std::vector<std::string>{"P.json", "P.nwc"}));
    load(equipment(""), R"({"name":"A/B","path":")" + *ui.folderAnswer + "\"}");
    ui.folderAnswer.reset();
    nvout();
    EXPECT_EQ(filesOut(), (std::vector<std::string>{"A_B.json", "A_B.nwc", "P.json", "P.nwc"}));
    EXPECT_NE(ui.printed.find(out().string() + "\\A_B.nwc生成完成"), std::string::npos);
}

TEST_F(Nvout, TheEndingDecidesAndItsCaseCounts) {
    loadPlant();
    const std::pair<const char*, bool> cases[] = {
        {"a.nwd", true}, {"b.NWD", false}, {"c.x.nwc", true}, {"d.nwc.txt", false}, {"nwc", false}};
    for (const auto& [file, isScene] : cases) {
        tolmar::runReport().clear();
        answer(file);
        nvout();
        EXPECT_EQ(root.exists(std::string("out/") + file), isScene) << file;
        EXPECT_EQ(passedOver(), isScene ? "" : "0 file\n") << file;
        EXPECT_EQ(ui.boxes.back(), "提示: 导出结束");
    }
    EXPECT_EQ(filesOut(),
              (std::vector<std::string>{"a.json", "a.nwd", "b.json", "c.x.json", "c.x.nwc", "d.nwc.json", "nwc.json"}));
    EXPECT_EQ(SceneReading(root.path() / "out/a.nwd").tree(), SceneReading(root.path() / "out/c.x.nwc").tree());
}

TEST_F(Nvout, NothingSelectedLeavesNothing) {
    loadPlant();
    ui.onForm = [](OrnLogicForm& form) { form.onControlClicked(OrnLogicForm::ResultCancel); };
    nvout();
    EXPECT_TRUE(filesOut().empty());
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Cancelled);
    EXPECT_GT(LiNwcInspectBalance().given, 0U) << "the scene was there and went";
}

TEST_F(Nvout, EveryCancelLeavesNothing) {
    load(equipment(item(5, "HxDbEquipment", 4) + "," + item(6, "HxDbEquipment", 4)) + "," +
         node(7, "HextAxiss", 3, "G") + "," + item(8, "HxDbAxissLine", 7));
    script("function getReference(t) return {{'k', 'v'}} end");
    int cancels = 0;
    for (bool isDone = false; !isDone && cancels < 100;) {
        tolmar::runReport().clear();
        ui.boxes.clear();
        ui.cancelAsked = 0;
        ui.cancelAt = cancels + 1;
        nvout();
        isDone = outcome() == tolmar::RunOutcome::Done;
        cancels += isDone ? 0 : 1;
        EXPECT_EQ(ui.boxes, std::vector<std::string>{isDone ? "提示: 导出结束" : "提示: 导出取消"}) << cancels;
        EXPECT_EQ(filesOut().size(), isDone ? 2U : 0U) << cancels;
        EXPECT_FALSE(ui.progress.open) << cancels;
        EXPECT_EQ(LiNwcInspectBalance().left, 0U) << cancels;
    }
    EXPECT_EQ(cancels, 1 + 8) << "the dialog's opening and one step for each node";
}

TEST_F(Nvout, ALibraryThatDoesNotComeUpEndsTheCommand) {
    loadPlant();
    LiNwcApiErrorInitialise();
    ASSERT_EQ(LiNwcApiInitialise(), LI_NWC_OK);
    nvout();
    LiNwcApiTerminate();
    EXPECT_NE(ui.printed.find("Internal Error\n"), std::string::npos);
    EXPECT_TRUE(filesOut().empty());
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Failed);
}

TEST_F(Nvout, AnErrorOfTheLibraryEndsTheCommandOnce) {
    loadPlant();
    ui.onProgress = [](const tolmar::ProgressState& state) {
        if (state.open && state.bars[0].value > 0) {
            LiNwcNodeDestroy(nullptr);
            LiNwcNodeDestroy(nullptr);
        }
    };
    nvout();
    misused = LiNwcInspectBalance().misused;
    EXPECT_GE(misused, 2U);
    const std::size_t first = ui.printed.find("Error: ");
    EXPECT_NE(first, std::string::npos);
    EXPECT_EQ(ui.printed.find("Error: ", first + 1), std::string::npos);
    EXPECT_TRUE(filesOut().empty());
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_FALSE(ui.progress.open);
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Failed);
}

TEST_F(Nvout, AWarningOfTheLibraryIsALossButNoEnd) {
    loadPlant();
    ui.onProgress = [](const tolmar::ProgressState& state) {
        if (state.open && state.bars[0].value > 0) {
            const LiNwcTextStyle style = LiNwcTextStyleCreate(u"");
            LiNwcTextStyleSetFontHeight(style, -1);
            LiNwcTextStyleDestroy(style);
        }
    };
    nvout();
    EXPECT_NE(ui.printed.find("Warning: "), std::string::npos);
    EXPECT_NE(passedOver().find(" geometry\n"), std::string::npos);
    EXPECT_EQ(filesOut().size(), 2U);
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Done);
}

TEST_F(Nvout, ASceneThatCannotBeWrittenFailsTheRun) {
    loadPlant();
    std::filesystem::create_directories(root.path() / "out" / "P.nwc");
    nvout();
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Failed);
    ASSERT_EQ(tolmar::runReport().failedFiles().size(), 1U);
    EXPECT_EQ(ui.boxes, std::vector<std::string>{"提示: 导出结束"})
        << "the result of writing shows in the report alone";
}

TEST_F(Nvout, SeveralDatabasesAreSeveralTreesOfOneScene) {
    model = std::make_unique<TestModel>(
        R"({"format":"tessaro-plant","version":1,"databases":[{"name":"MAIN","shortName":"M","root":1},)"
        R"({"name":"O","shortName":"o","root":101},{"name":"E","shortName":"E"}],"objects":[)"
        R"({"id":1,"class":"HextWorld"},{"id":2,"class":"HextSite","in":1,"name":"A"},)"
        R"({"id":101,"class":"HextWorld"},{"id":102,"class":"HextSite","in":101,"name":"B"}]})");
    EXPECT_EQ(run(), "M\n  A\no\n  B\n");
    EXPECT_EQ(json(), "{\n}");
}

}  // namespace
