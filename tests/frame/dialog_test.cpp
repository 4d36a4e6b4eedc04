#include "frame/easy_log.h"
#include "frame/exceptions.h"
#include "frame/export_dialog.h"
#include "frame/progress_slot.h"
#include "frame/tessaro_app.h"
#include "platform/hxcom.h"
#include "scripts/options.h"
#include "support/test_support.h"
#include "tolmar/code_page.h"

namespace {

// ------------------------------------------------------------------------------------------------------ application

class RecordingApp final : public TlRxDbxApp {
public:
    int onLoadDrawing(void*) override { return record("load"); }
    int onUnloadDrawing(void*) override { return record("unload"); }
    int onInvokeFunction(void*) override { return record("invoke"); }
    int onOther(int number, void*) override { return record("other" + std::to_string(number)); }
    void registerServerComponents() override {}
    int record(std::string name) {
        called += name + ";";
        return 7;
    }
    std::string called;
};

TEST(App, MessagesReachTheirOperations) {
    RecordingApp app;
    for (const unsigned message : {3U, 4U, 5U, 6U, 15U, 0U}) {
        EXPECT_EQ(dispatchMessage(app, message, nullptr), 7) << message;
    }
    EXPECT_EQ(app.called, "load;unload;invoke;other0;other9;other10;");
    app.called.clear();
    EXPECT_EQ(dispatchMessage(app, 16, nullptr), 0);
    EXPECT_EQ(dispatchMessage(app, 4000000000U, nullptr), 0);
    EXPECT_EQ(app.called, "");
}

// --------------------------------------------------------------------------------------------------------- EasyLog

TEST(Log, EachLineHasItsTimeBehindIt) {
    TestRoot root;
    hextlog::EasyLog log((root.path() / "run.log").c_str(), true);
    root.write("run.log", "old\n");
    log.write("pipe %d", 7);
    log.setTarget(nullptr, true);
    log.write("second");
    const std::string text = root.read("run.log");
    EXPECT_EQ(text.find("old"), std::string::npos);
    EXPECT_EQ(text.rfind("pipe 7\t[2", 0), 0U) << text;
    EXPECT_NE(text.find("]\r\nsecond\t["), std::string::npos) << text;
}

TEST(Log, AFolderThatDoesNotExistLosesTheLine) {
    TestRoot root;
    hextlog::EasyLog log((root.path() / "none" / "run.log").c_str(), false);
    log.write("lost");
    EXPECT_FALSE(root.exists("none"));
    hextlog::EasyLog().write("no target");
}

// --------------------------------------------------------------------------------------------------------- progress

TEST(Progress, InnerPercentagesAreTruncated) {
    EXPECT_EQ(percentage(1, 3), 33);
    EXPECT_EQ(percentage(2, 3), 66);
    EXPECT_EQ(percentage(0, 0), 0);
    EXPECT_EQ(percentage(5, 5), 100);
}

TEST(Progress, ACancelPassesTheInnerBarsAndTheScopeClosesTheDialog) {
    TestUi ui;
    {
        ProgressScope scope;
        progressSlot()->openProgress(99, "t", 0);
        const std::size_t outer = ui.progress.bars.size();
        { const InnerBars bars(2); }
        EXPECT_EQ(ui.progress.bars.size(), outer) << "inner bars go again";
        ui.cancelAt = 1;
        EXPECT_THROW(
            {
                InnerBars bars(2);
                progressSlot()->setBar(1, 1);
            },
            ProgressCancelException);
        ui.cancelAt = 0;
    }
    EXPECT_EQ(progressSlot(), nullptr);
    EXPECT_FALSE(ui.progress.open);
}

// ----------------------------------------------------------------------------------------------------- scope dialog

constexpr int weldBox = 12584;
constexpr int cacheBox = 12587;

const char* const plantTree = R"({"id":2,"class":"HextSite","in":1,"name":"site"},
    {"id":3,"class":"HextZone","in":2,"name":"zone"},
    {"id":4,"class":"HextPipeline","in":3,"name":"b-line"},{"id":5,"class":"HxDbPipeSpec","in":4,"name":"pipe"},
    {"id":6,"class":"HxDbTubeWeld","in":4,"name":"weld"},{"id":7,"class":"HextEquipe","in":3,"name":"A-pump"},
    {"id":8,"class":"HxDbEquipment","in":7,"name":"body"})";

class ScopeDialog : public testing::Test {
protected:
    int show(int mode = ExportDataDlg::HextOut) { return ExportDataDlg(mode, true).DoModal(); }
    static OrnLogicTree::Item find(OrnLogicForm& form, const std::u16string& label) {
        OrnLogicTree::Item found = nullptr;
        TestUi::eachItem(
            form, [&](OrnLogicTree::Item item) { found = found == nullptr && item->label == label ? item : found; });
        if (found == nullptr) {
            throw std::runtime_error("no such item");
        }
        return found;
    }
    static bool selected(std::int64_t object) {
        const auto& nodes = ExportDataDlg::selectedNodes();
        for (const auto& [id, on] : nodes) {
            HxDbTreeNode* node = openAs<HxDbTreeNode>(id);
            if (node != nullptr && node->getTreeNodeValue().toInt() == object) {
                return on;
            }
        }
        return false;
    }
    static bool hasObject(std::int64_t id) { return ExportDataDlg::selectedObjects().contains(HxDbObjectId(id)); }

    TestRoot root;
    TestUi ui;
    TestModel model{TestModel::withObjects(plantTree)};
};

TEST_F(ScopeDialog, ShowsItsControlsByMode) {
    struct Case {
        int mode;
        std::vector<bool> enabled;
    };
    const Case cases[] = {{0, {true, true, true, false}},
                          {1, {true, false, false, false}},
                          {2, {true, false, false, true}},
                          {3, {false, false, false, false}},
                          {4, {false, false, false, false}}};
    for (const Case& c : cases) {
        ui.onForm = [&](OrnLogicForm& form) {
            EXPECT_EQ(form.caption(), u"导出");
            for (int i = 0; i < 4; ++i) {
                EXPECT_EQ(form.control(weldBox + i)->enabled(), c.enabled[static_cast<std::size_t>(i)]) << c.mode;
            }
            EXPECT_EQ(form.control(12581)->rect(), (FormRect{110, 0, 550, 700}));
            form.onSize(800, 600);
            EXPECT_EQ(form.control(12581)->rect(), (FormRect{110, 0, 790, 600}));
            form.onControlClicked(OrnLogicForm::ResultCancel);
        };
        EXPECT_EQ(show(c.mode), OrnLogicForm::ResultCancel);
    }
}

TEST_F(ScopeDialog, ItemsAreSortedUnderTheirParents) {
    ui.onForm = [&](OrnLogicForm& form) {
        const OrnLogicTree::Item zone = find(form, u"zone");
        ASSERT_EQ(zone->children.size(), 2U);
        EXPECT_EQ(zone->children[0]->label, u"A-pump");
        EXPECT_EQ(zone->children[1]->label, u"b-line");
        EXPECT_EQ(TestUi::treeOf(form).topItems()[0]->label, u"W");
        form.onControlClicked(OrnLogicForm::ResultCancel);
    };
    show();
}

TEST_F(ScopeDialog, CheckingALeafChecksItsAncestors) {
    ui.onForm = [&](OrnLogicForm& form) {
        TestUi::click(form, find(form, u"weld"));
        form.onControlClicked(OrnLogicForm::ResultOk);
    };
    EXPECT_EQ(show(), OrnLogicForm::ResultOk);
    EXPECT_TRUE(selected(1) && selected(2) && selected(3) && selected(4) && selected(6));
    EXPECT_FALSE(selected(5) || selected(7) || selected(8));
    EXPECT_TRUE(hasObject(6));
    EXPECT_FALSE(hasObject(5)) << "unchecked below a checked manager";
    EXPECT_EQ(ExportDataDlg::getSelectedObjectCount(), 1U);
}

TEST_F(ScopeDialog, UncheckingTheLastOfSeveralClearsTheParentOnly) {
    ui.onForm = [&](OrnLogicForm& form) {
        TestUi::checkAll(form);
        TestUi::click(form, find(form, u"pipe"));
        EXPECT_TRUE(OrnLogicTree::checked(find(form, u"b-line")));
        TestUi::click(form, find(form, u"weld"));
        EXPECT_FALSE(OrnLogicTree::checked(find(form, u"b-line")));
        EXPECT_TRUE(OrnLogicTree::checked(find(form, u"zone")));
        TestUi::click(form, find(form, u"A-pump"));
        EXPECT_FALSE(OrnLogicTree::checked(find(form, u"zone")));
        EXPECT_TRUE(OrnLogicTree::checked(find(form, u"site"))) << "one step upward only";
        form.onControlClicked(OrnLogicForm::ResultOk);
    };
    show();
    EXPECT_FALSE(hasObject(5) || hasObject(8));
}

TEST_F(ScopeDialog, UncheckingAnOnlyChildClearsTheLineUpward) {
    ui.onForm = [&](OrnLogicForm& form) {
        TestUi::checkAll(form);
        TestUi::click(form, find(form, u"zone"));
        EXPECT_FALSE(OrnLogicTree::checked(find(form, u"site")));
        EXPECT_FALSE(OrnLogicTree::checked(TestUi::treeOf(form).topItems()[0]));
        form.onControlClicked(OrnLogicForm::ResultOk);
    };
    show();
    EXPECT_FALSE(selected(1));
}

TEST_F(ScopeDialog, OptionsAreStoredAtOnceAndCancelKeepsThem) {
    root.write("plugins/nvoutplugins.ini", "[Control]\r\noutWeld=0\r\n");
    EXPECT_EQ(getBomValue(openAs<HxDbPipeSpec>(HxDbObjectId(5)), "a"), "");
    plant::setAttribute(model.model(), 5, "a", "new");
    ui.onForm = [&](OrnLogicForm& form) {
        form.onControlClicked(weldBox);
        form.onControlClicked(cacheBox);
        form.onControlClicked(12585);  // disabled in this mode
        form.onControlClicked(OrnLogicForm::ResultCancel);
    };
    EXPECT_EQ(show(), OrnLogicForm::ResultCancel);
    EXPECT_TRUE(optionOn("outWeld"));
    EXPECT_TRUE(optionOn("clearCache"));
    EXPECT_FALSE(optionOn("nvExpandBranch"));
    EXPECT_EQ(getBomValue(openAs<HxDbPipeSpec>(HxDbObjectId(5)), "a"), "new") << "the cache was cleared";
    ui.onForm = [&](OrnLogicForm& form) {
        EXPECT_TRUE(dynamic_cast<OrnLogicButton*>(form.control(weldBox))->checked());
        form.onControlClicked(OrnLogicForm::ResultCancel);
    };
    show();
}

TEST_F(ScopeDialog, ANodeWhoseObjectDoesNotOpenHasNoItemAndItsSonsStandAtTheTop) {
    plant::makeUnavailable(model.model(), 4);
    ui.onForm = [&](OrnLogicForm& form) {
        EXPECT_THROW(find(form, u"b-line"), std::runtime_error);
        EXPECT_EQ(find(form, u"pipe")->parent, nullptr);
        form.onControlClicked(OrnLogicForm::ResultCancel);
    };
    show();
    ASSERT_EQ(tolmar::runReport().passed().size(), 1U);
    EXPECT_EQ(tolmar::runReport().passed()[0].id, 4);
}

TEST_F(ScopeDialog, AnUnknownIdIsAFaultForCallersThatAskSo) {
    show();
    EXPECT_TRUE(selectedValue(ExportDataDlg::selectedNodes(), hxcom::getDataManTreeRoot()->objectId()));
    EXPECT_THROW(selectedValue(ExportDataDlg::selectedNodes(), HxDbObjectId(99999)), std::out_of_range);
    ExportDataDlg next(ExportDataDlg::HextOut, true);
    EXPECT_TRUE(ExportDataDlg::selectedNodes().empty()) << "a new dialog empties the results";
}

TEST(ScopeDialogRoots, OtherDatabasesComeUnderTheirShortNames) {
    TestRoot root;
    TestUi ui;
    TestModel model(
        R"({"format":"tessaro-plant","version":1,"databases":[{"name":"A","root":1},{"name":"B","shortName":"bb","root":2}],
        "objects":[{"id":1,"class":"HextWorld"},{"id":2,"class":"HextWorld","name":"other"}]})");
    ui.onForm = [&](OrnLogicForm& form) {
        const auto& top = TestUi::treeOf(form).topItems();
        ASSERT_EQ(top.size(), 2U);
        EXPECT_EQ(top[0]->label, u"World");
        EXPECT_EQ(top[1]->label, u"协同模型：bb");
        form.onControlClicked(OrnLogicForm::ResultCancel);
    };
    ExportDataDlg(ExportDataDlg::HextOut, true).DoModal();
}

TEST(ScopeDialogRoots, AModelWithoutDataSaysSoAndEnds) {
    TestRoot root;
    TestUi ui;
    TestModel model(
        R"({"format":"tessaro-plant","version":1,"project":{"user":"li"},"databases":[{"name":"A"}],"objects":[]})");
    EXPECT_EQ(ExportDataDlg(ExportDataDlg::HextOut, true).DoModal(), OrnLogicForm::ResultCancel);
    ASSERT_EQ(ui.boxes.size(), 1U);
    EXPECT_EQ(ui.boxes[0], "用户'li'的主数据库'A'中没有数据，请向系统管理员询问");
}

}  // namespace
