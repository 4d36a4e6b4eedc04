// The command's frame: dialogs, bars, cancel, failures, several runs.
#include "fixture.h"

#include <cstdlib>
#include <set>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;
using tolmar::RunOutcome;

const std::string plantObjects = object(2, "HextSite", 1) + object(3, "HextZone", 2) + object(4, "HextPipeline", 3) +
                                 object(5, "HxDbPipeSpec", 4, shape(cylinder())) +
                                 object(6, "HxDbTubeModelSpec", 4, shape(box())) + object(7, "HextZoneDirectory", 3) +
                                 object(8, "HextEquipe", 7) + object(9, "HxDbEquipment", 8, shape(box()));

class Obmout : public ObmRun {
protected:
    Obmout() { load(plantObjects); }
    fs::path workingFolder() const {
        for (const auto& entry : fs::directory_iterator(root.path() / "out")) {
            if (entry.is_directory()) {
                return entry.path();
            }
        }
        return {};
    }
    // Runs with something done behind the user's back when the scope dialog is up.
    void runWith(const std::function<void()>& sabotage) {
        ui.onForm = [sabotage](OrnLogicForm& form) {
            TestUi::checkAll(form);
            sabotage();
            form.onControlClicked(OrnLogicForm::ResultOk);
        };
        run();
    }
};

TEST_F(Obmout, WithoutAPlaceForThePackageNothingIsDone) {
    ui.answer.reset();
    run();
    EXPECT_EQ(outcome(), RunOutcome::Cancelled);
    ui.answer = (root.path() / "nowhere" / "x.pmodel").string();
    run();
    EXPECT_EQ(ui.printed, "不能创建OBM:3\n");
    EXPECT_EQ(tolmar::runReport().failedFiles().size(), 1U);
    EXPECT_TRUE(ui.boxes.empty());
    EXPECT_TRUE(filesOut().empty());
}

TEST_F(Obmout, ACancelledScopeDialogStillSavesAPackageWithoutAModel) {
    ui.onForm = [](OrnLogicForm& form) { form.onControlClicked(OrnLogicForm::ResultCancel); };
    run();
    EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出结束"});
    EXPECT_EQ(outcome(), RunOutcome::Cancelled);
    const ReadPackage read(target());
    EXPECT_EQ(read.package.entries, std::vector<std::string>{"package.json"});
    EXPECT_EQ(joined(read.findings), "the package holds no model\n");
    EXPECT_EQ(filesOut(), std::vector<std::string>{"plant.pmodel"});
}

TEST_F(Obmout, A3dPackageThatFailsIsLeftOut) {
    runWith([this] { fs::create_directory(workingFolder() / "output" / "ORNA" / "meshes-1.facets"); });
    EXPECT_NE(ui.printed.find("错误:4\n"), std::string::npos) << ui.printed;
    EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出结束"});
    EXPECT_EQ(outcome(), RunOutcome::Failed);
    EXPECT_EQ(filesOut(), std::vector<std::string>{"plant.pmodel.incomplete"}) << "it does not look whole";
    EXPECT_EQ(ReadPackage(target() += ".incomplete").package.entries, std::vector<std::string>{"package.json"});
    ASSERT_EQ(tolmar::runReport().failures().size(), 1U);
    EXPECT_EQ(tolmar::runReport().failures()[0],
              "it holds no model: a file could not be written whole; what there is of "
              "it is kept as plant.pmodel.incomplete");
    EXPECT_TRUE(tolmar::runReport().files().empty());
}

TEST_F(Obmout, APackageThatCannotBeSavedLeavesNothingBehind) {
    runWith([this] { fs::create_directories(target() / "in the way"); });
    EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出结束"});
    ASSERT_EQ(tolmar::runReport().failedFiles().size(), 1U);
    EXPECT_TRUE(tolmar::runReport().files().empty());
    EXPECT_TRUE(fs::is_directory(target()));
    EXPECT_EQ(filesOut(), std::vector<std::string>{"plant.pmodel"});
}

TEST_F(Obmout, ADryRunTouchesNothing) {
    tolmar::setDryRun(true);
    ui.onForm = [](OrnLogicForm& form) { form.onControlClicked(OrnLogicForm::ResultCancel); };
    run();
    tolmar::setDryRun(false);
    EXPECT_TRUE(filesOut().empty());
    EXPECT_TRUE(tolmar::runReport().files().empty());
    EXPECT_TRUE(tolmar::runReport().failedFiles().empty());
}

// ------------------------------------------------------------------------------------------------ progress and cancel

// Notes every state of the dialog as "bars: text=value ..." where it differs from the one before.
class BarWatcher final : public TestUi {
public:
    explicit BarWatcher(std::optional<std::string> path) { answer = std::move(path); }
    void progressChanged(const tolmar::ProgressState& state) override {
        if (!state.open) {
            return;
        }
        std::string line = state.title;
        for (const tolmar::ProgressBar& bar : state.bars) {
            line += "|" + bar.text + " " + std::to_string(bar.value);
        }
        if (states.empty() || states.back() != line) {
            states.push_back(line);
        }
    }
    std::vector<std::string> states;
};

TEST_F(Obmout, BarsFollowTheLevelThatOpensTheDialog) {
    load(object(2, "HextSite", 1) + object(3, "HextZone", 2) + object(4, "HextEquipe", 3) +
         object(5, "HxDbEquipment", 4, shape(box())) + object(6, "HextEquipe", 3) + object(7, "HextZone", 2));
    BarWatcher all(ui.answer);
    obmout();
    EXPECT_EQ(joined(all.states), "PModel导出| 0| 0| 0| 0\n"
                                  "PModel导出|总进度: 0| 0| 0| 0\n"
                                  "PModel导出|总进度: 0|N2 0| 0| 0\n"
                                  "PModel导出|总进度: 0|N2 0|N3 0| 0\n"
                                  "PModel导出|总进度: 0|N2 0|N3 0| 100\n"
                                  "PModel导出|总进度: 0|N2 0|N3 0| 0\n"
                                  "PModel导出|总进度: 0|N2 0|N3 0| 100\n"
                                  "PModel导出|总进度: 0|N2 0|N3 0| 0\n"
                                  "PModel导出|总进度: 0|N2 0|N3 50| 0\n"
                                  "PModel导出|总进度: 0|N2 50|N3 50| 0\n"
                                  "PModel导出|总进度: 0|N2 50|N7 50| 0\n"
                                  "PModel导出|总进度: 0|N2 100|N7 50| 0\n");
    tolmar::setHostUi(&ui);
}

TEST_F(Obmout, ADialogOpenedLowerDownHasFewerBars) {
    const std::pair<std::vector<std::u16string>, const char*> cases[] = {{{u"N2", u"N3"}, "PModel导出|总进度: 0| 0| 0"},
                                                                         {{u"N7"}, "PMODEL导出|总进度: 0| 0"}};
    for (const auto& [labels, bars] : cases) {
        checkOnly(labels);
        BarWatcher watcher(ui.answer);
        watcher.onForm = ui.onForm;
        obmout();
        EXPECT_EQ(watcher.states.at(1), bars);
    }
    tolmar::setHostUi(&ui);
}

TEST_F(Obmout, ACancelEndsWithNothingSaved) {
    for (const int at : {1, 7, 15}) {
        ui.cancelAsked = 0;
        ui.cancelAt = at;
        run();
        EXPECT_EQ(ui.boxes, std::vector<std::string>{"导出取消"}) << at;
        EXPECT_EQ(outcome(), RunOutcome::Cancelled) << at;
        EXPECT_TRUE(filesOut().empty()) << at;
        EXPECT_FALSE(ui.progress.open) << at;
    }
}

// ------------------------------------------------------------------------------------------------------ several runs

// Ids and materials go on from run to run as long as the module is loaded.
TEST_F(Obmout, ASecondRunHasNewIdsAndTheMaterialsOfTheFirst) {
    const ReadPackage first = exported();
    load(object(2, "HextSite", 1) + object(3, "HextZone", 2) + object(4, "HextPipeline", 3) +
         object(5, "HxDbPipeSpec", 4, R"(,"color":77)" + shape(cylinder())));
    const ReadPackage second = exported();
    std::set<std::string> ids;
    for (const readers::package::TreeNode& node : first.nodes()) {
        ids.insert(node.databaseId);
    }
    for (const readers::package::TreeNode& node : second.nodes()) {
        EXPECT_EQ(ids.count(node.databaseId), node.parent < 0 ? 1U : 0U) << node.databaseId;
    }
    EXPECT_EQ(first.model().materials.count("m77"), 0U);
    EXPECT_EQ(second.model().materials.count("m77"), 1U);
    EXPECT_EQ(second.model().materials.count("m1000"), 1U) << "used by the fitting of the first run";
}

TEST_F(Obmout, FreshProcessesGiveTheSameBytes) {
    const fs::path example = fs::path(TESSARO_SOURCE_DIR) / "examples";
    root.takeInstallation();
    const auto export_ = [&](const char* zone) {
        const fs::path out = root.path() / "bytes";
        fs::remove_all(out);
        const std::string command = "TZ=" + std::string(zone) + " '" + TESSARO_BIN_DIR +
                                    "/tessaro' run OBMOUT --model '" + (example / "pump-station.json").string() +
                                    "' --root '" + root.path().string() + "' --out '" + out.string() +
                                    "' -q 2>/dev/null";
        // Status 3: host content has no place in a package.
        EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 3) << command;
        return root.read("bytes/PumpStation.pmodel");
    };
    const std::string first = export_("UTC");
    EXPECT_GT(first.size(), 100000U);
    EXPECT_TRUE(first == export_("Asia/Shanghai"));
}

}  // namespace
