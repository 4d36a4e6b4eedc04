#include "fixture.h"

#include "generator/generate.h"

#include <numeric>

namespace {

class Driver : public HextRunTest {
protected:
    void load(const std::string& json) {
        model.reset();
        model = std::make_unique<TestModel>(json);
    }
    // The files of the example when nothing stops the run; its package is gone.
    Files wholeExample() {
        load(example());
        hextout();
        const Files whole = files();
        wasPackaged();
        std::filesystem::remove(root.path() / "temp" / "hext.tar");
        return whole;
    }
    void runCancelledAt(int change) {
        tolmar::runReport().clear();
        ui.cancelAsked = 0;
        ui.cancelAt = change;
        hextout();
        ui.cancelAt = 0;
    }
    std::unique_ptr<TestModel> model;
};

TEST_F(Driver, WritesEveryFileAndAFolderThatHoldsTogether) {
    load(example());
    hextout();
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Done) << tolmar::runReport().reason();
    for (const char* name :
         {"uda.txt", "cata.txt", "SpecCreate.txt", "PipeCompSpecGenerator.txt", "PipeSpcoUdaSet.txt", "ConnTable.txt",
          "nozzleSpec.txt", "TempSpecGenerator.txt", "equip.txt", "struct.txt", "axisline.txt", "sup.txt",
          "sitezone.txt", "pipe.txt", "des-col.pmldat", "des-element-rules.pmldat"}) {
        EXPECT_TRUE(root.exists(std::string("temp/hext/") + name)) << name;
    }
    EXPECT_EQ(folderFindings(), "");
    EXPECT_TRUE(wasPackaged());
    EXPECT_TRUE(ui.boxes.empty());
    const std::size_t prepare = ui.printed.find("\nPrepare:\n");
    EXPECT_NE(prepare, std::string::npos);
    EXPECT_LT(prepare, ui.printed.find("\n创建管线模型:\n"));
}

TEST_F(Driver, ASecondRunInTheSameProcessWritesTheSameBytes) {
    load(example());
    for (const char* key : {"", "eqnoName", "supportSpec", "boltSpec"}) {
        if (*key != '\0') {
            switchOn(key);
        }
        hextout();
        const Files first = files();
        hextout();
        const Files second = files();
        ASSERT_EQ(first.size(), second.size()) << key;
        for (const auto& [name, bytes] : first) {
            EXPECT_TRUE(second.at(name) == bytes) << key << " " << name;
        }
    }
}

// A name that the plant gives belongs to one object of a run.
TEST_F(Driver, NamesOfTheRunBeforeAreFreeAgain) {
    switchOn("eqnoName");
    for (const char* id : {"11", "12"}) {
        load(TestModel::withObjects(
            R"({"id":3,"class":"HextZone","in":1,"name":"z"},{"id":10,"class":"HextPipeline","in":3,"name":"L",
                "attrs":{"insul":"0"},"branches":[[)" +
            std::string(id) + R"(]]},{"id":)" + id + R"(,"class":"HxDbTubeModelSpec","in":10,
                "attrs":{"item":"TEE","smrtln":"Tee","size1":"50","specname":"S","lineno":"10","insul":"0","eqno":"X"},
                "points":[{"no":0,"at":[0,0,0]},{"no":1,"at":[-50,0,0]},{"no":2,"at":[50,0,0]},{"no":3,"at":[0,50,0]}],
                "primitives":[{"type":"HextBox3D","point":[0,0,0],"xLength":1,"yLength":1,"zLength":1}]})"));
        hextout();
        EXPECT_NE(root.read("temp/hext/pipe.txt").find("/X'"), std::string::npos) << id << passedOverRows();
    }
}

// A slow packaging program, which a second run must not pull the files away from.
TEST_F(Driver, ARunWaitsForThePackagingOfTheOneBefore) {
    load(example());
    const std::string script = "bin/v80-win32/HextPackage.sh";
    std::string text = root.read(script);
    const std::size_t work = text.find("find hext");
    root.write(script, text.insert(work, "ls hext >../listed.$$\nsleep 0.3\nls hext | diff ../listed.$$ - >&2\n"));
    hextout();
    hextout();
    EXPECT_TRUE(wasPackaged());
}

TEST_F(Driver, EveryConfigurationGivesAFolderThatHoldsTogether) {
    load(example());
    const std::string config = root.read("temp/hext/config.json");
    for (const char* change :
         {R"("eqnoName": 1)", R"("equipPostName": 0)", R"("boltSpec": 1)", R"("supportSpec": 1)"}) {
        std::string changed = config;
        const std::string key = std::string(change).substr(0, std::string(change).find(':'));
        const std::size_t at = changed.find(key);
        ASSERT_NE(at, std::string::npos) << key;
        changed.replace(at, changed.find_first_of(",\n}", at) - at, change);
        configure(changed);
        hextout();
        EXPECT_EQ(outcome(), tolmar::RunOutcome::Done) << change << tolmar::runReport().reason();
        EXPECT_EQ(folderFindings(), "") << change;
    }
}

TEST_F(Driver, GeneratedPlantsGiveFoldersThatHoldTogether) {
    for (const std::uint64_t seed : {1, 2, 3}) {
        load(plant::generateModelText({.objects = 2000, .seed = seed}));
        hextout();
        EXPECT_EQ(outcome(), tolmar::RunOutcome::Done) << seed << ": " << tolmar::runReport().reason();
        EXPECT_EQ(folderFindings(), "") << seed;
        EXPECT_TRUE(root.exists("temp/hext/pipe.txt"));
    }
}

// What was left out but for items that are no solids and pipes whose name another one has, each once.
std::string lossesOfBranches() {
    std::set<std::string> losses;
    for (const tolmar::PassedOver& row : tolmar::runReport().passed()) {
        const bool isSymbol = row.what == "primitive" && row.why.find("it is no solid") != std::string::npos;
        if (!isSymbol && row.what != "pipe name") {
            losses.insert(row.what + ": " + row.why);
        }
    }
    return std::accumulate(losses.begin(), losses.end(), std::string());
}

// The branches of the example keep their components, their bends and one line for each weld; in any plant only a weld
// that touches nothing it can take an axis from costs its branch.
TEST_F(Driver, ExportingWeldsAddsThemToTheirBranches) {
    const auto linesWith = [&](const char* word, bool having) {
        std::istringstream lines(root.read("temp/hext/pipe.txt"));
        std::size_t count = 0;
        for (std::string line; std::getline(lines, line);) {
            count += line.starts_with("!!ORNAPipeCreate") && (line.find(word) != std::string::npos) == having;
        }
        return count;
    };
    load(example());
    hextout();
    const std::size_t others = linesWith("('WELD',", false);
    EXPECT_EQ(linesWith("('WELD',", true), 0U);
    root.write("plugins/nvoutplugins.ini", "[Control]\noutWeld=1\n");
    hextout();
    EXPECT_EQ(lossesOfBranches(), "") << "nothing but symbols of instruments is left out";
    EXPECT_EQ(linesWith("('WELD',", false), others);
    EXPECT_EQ(linesWith("('WELD',", true), 36U);
    EXPECT_EQ(folderFindings(), "");
    for (const std::uint64_t seed : {4, 5}) {
        load(plant::generateModelText({.objects = 3000, .seed = seed}));
        tolmar::runReport().clear();
        hextout();
        const std::string losses = lossesOfBranches();
        EXPECT_TRUE(losses.empty() || losses == "branch: 无效方向") << seed << ": " << losses;
        EXPECT_GT(linesWith("('WELD',", true), 100U) << seed;
        EXPECT_EQ(folderFindings(), "");
    }
}

TEST_F(Driver, EquipmentAloneWritesNoPipesAndIsPackaged) {
    load(example());
    ui.onForm = [](OrnLogicForm& form) {
        TestUi::eachItem(form, [&](OrnLogicTree::Item item) {
            auto* node = static_cast<HxDbTreeNode*>(item->data);
            if (openAs<HextEquipe>(node->getTreeNodeValue()) != nullptr && !OrnLogicTree::checked(item)) {
                TestUi::click(form, item);
            }
        });
        form.onControlClicked(OrnLogicForm::ResultOk);
    };
    hextout();
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Done);
    EXPECT_FALSE(root.exists("temp/hext/pipe.txt"));
    EXPECT_EQ(root.read("temp/hext/cata.txt").find("FIX_BEND"), std::string::npos);
    EXPECT_NE(root.read("temp/hext/equip.txt").size(), 0U);
    EXPECT_EQ(ui.printed.find("Prepare:"), std::string::npos);
    EXPECT_EQ(ui.printed.find("创建支架库:"), std::string::npos);
    EXPECT_NE(ui.printed.find("创建管嘴库:"), std::string::npos);
    EXPECT_TRUE(wasPackaged());
}

TEST_F(Driver, CancellingTheDialogLeavesOldFilesDeletedAndStartsNothing) {
    load(example());
    root.write("temp/hext/CONNTABLE.TXT", "old");
    root.write("temp/hext/gtype_lost.log", "kept");
    ui.onForm = [](OrnLogicForm& form) { form.onControlClicked(OrnLogicForm::ResultCancel); };
    hextout();
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Cancelled);
    EXPECT_FALSE(root.exists("temp/hext/CONNTABLE.TXT"));
    EXPECT_TRUE(root.exists("temp/hext/gtype_lost.log"));
    EXPECT_TRUE(files().empty());
    EXPECT_FALSE(wasPackaged());
}

TEST_F(Driver, ABrokenConfigurationEndsTheRunBeforeAnyFile) {
    load(example());
    for (const char* config : {"", "{", "[1,2", "not json"}) {
        configure(config);
        ui.boxes.clear();
        tolmar::runReport().clear();
        hextout();
        EXPECT_EQ(ui.boxes, std::vector<std::string>{"parse fail"}) << config;
        EXPECT_NE(tolmar::runReport().reason().find("config.json: parse fail"), std::string::npos) << config;
        EXPECT_EQ(outcome(), tolmar::RunOutcome::Failed);
        EXPECT_TRUE(files().empty()) << config;
        EXPECT_FALSE(ui.progress.open);
    }
    EXPECT_FALSE(wasPackaged());
}

TEST_F(Driver, ComponentsWithoutTypeEndTheRunWithAList) {
    load(example());
    configure(R"({"skey":[],"type":{},"color":[]})");
    hextout();
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Failed);
    EXPECT_NE(ui.printed.find("不存在GType\n"), std::string::npos);
    EXPECT_LT(ui.printed.find("不存在GType"), ui.printed.find("不存在该类型到skey的转换"));
    EXPECT_FALSE(root.exists("temp/hext/pipe.txt"));
    EXPECT_TRUE(root.exists("temp/hext/gtype_lost.log"));
    EXPECT_FALSE(wasPackaged());
}

// What only Hvac and Cable objects make up goes out whole with the structures.
TEST_F(Driver, TellsWhatStandsInNoneOfItsFiles) {
    load(TestModel::withObjects(
        R"({"id":3,"class":"HextZone","in":1,"name":"z"},{"id":10,"class":"HextPipeline","in":3,"name":"tray"},
           {"id":11,"class":"HxDbTubeModelSpec","in":10,"attrs":{"module":"Cable"},"primitives":[
              {"type":"HextBox3D","point":[0,0,0],"xLength":1,"yLength":1,"zLength":1}]},
           {"id":12,"class":"HxDbNonTube","in":3},{"id":13,"class":"HxDbNonTube","in":12},
           {"id":20,"class":"HextPIDPaperManager","in":3,"name":"paper"},{"id":21,"class":"HxDbNonTube","in":20},
           {"id":30,"class":"HextPipeline","in":3,"name":"empty"})"));
    hextout();
    EXPECT_EQ(passedOverRows(), "12 object: stands under no manager\n30 pipeline: has no branches: nothing is in it\n");
    EXPECT_NE(root.read("temp/hext/struct.txt").find("'CH_tray_1_strcut'"), std::string::npos);
}

TEST_F(Driver, AComponentInTwoBranchesEndsTheRun) {
    load(TestModel::withObjects(
        R"({"id":10,"class":"HextPipeline","in":1,"branches":[[11,12,13],[14,12,15]]},
           {"id":11,"class":"HxDbPipeSpec"},{"id":12,"class":"HxDbPipeSpec"},{"id":13,"class":"HxDbPipeSpec"},
           {"id":14,"class":"HxDbPipeSpec"},{"id":15,"class":"HxDbPipeSpec"})"));
    hextout();
    EXPECT_EQ(ui.boxes, std::vector<std::string>{"多个分支存在相同管件"});
    EXPECT_NE(ui.printed.find("多个分支存在相同管件12:"), std::string::npos);
    EXPECT_EQ(outcome(), tolmar::RunOutcome::Failed);
}

// Among the branches of pipe.txt: the files before it are whole, those that were open are set aside as far as they go.
TEST_F(Driver, ACancelAmongThePipesKeepsWholeLines) {
    const Files whole = wholeExample();
    std::size_t longest = 0;
    ui.cancelStatus = "创建管线模型......";
    for (int at = 2;; at += 3) {
        runCancelledAt(at);
        if (outcome() != tolmar::RunOutcome::Cancelled) {
            break;
        }
        EXPECT_TRUE(ui.boxes.empty());
        EXPECT_FALSE(wasPackaged());
        const Files written = files();
        ASSERT_FALSE(written.contains("pipe.txt"));
        const std::string& pipes = written.at("pipe.txt.incomplete");
        EXPECT_EQ(pipes, whole.at("pipe.txt").substr(0, pipes.size())) << at;
        EXPECT_TRUE(pipes.empty() || pipes.ends_with("\r\n")) << at;
        longest = std::max(longest, pipes.size());
        for (const std::string name : {"cata.txt", "uda.txt"}) {
            EXPECT_TRUE(written.at(name + ".incomplete") == whole.at(name)) << at << " " << name;
        }
        for (const char* name : {"PipeCompSpecGenerator.txt", "equip.txt", "sitezone.txt"}) {
            EXPECT_TRUE(written.at(name) == whole.at(name)) << at << " " << name;
        }
    }
    EXPECT_GT(longest, whole.at("pipe.txt").size() / 2);
    EXPECT_TRUE(files() == whole);
}

}  // namespace
