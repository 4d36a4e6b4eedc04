#include "forms/scripted_ui.h"
#include "platform/hxcom.h"
#include "platform/progress.h"
#include "support/scratch_folder.h"
#include "tolmar/code_page.h"

#include <gtest/gtest.h>

namespace {

using namespace tolmar;

// Installs a ScriptedUi for the length of a test.
class Session {
public:
    explicit Session(ScriptedAnswers answers = {}) : ui(std::move(answers)) { setHostUi(&ui); }
    ~Session() { setHostUi(nullptr); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ScriptedUi ui;
};

TEST(Messages, PrintfRulesWithThePlatformsLengths) {
    const Session session;
    hxcad::hextPrintf("\nerrId:%I64d|%08I64x|%lld|%s|%%I64d %5.2lf\n", 9007199254740991LL, 255LL, -1LL, "管", 1.5);
    EXPECT_EQ(session.ui.printed(), toUtf8("\nerrId:9007199254740991|000000ff|-1|管|%I64d  1.50\n"));
    const std::string longText(5000, 'x');
    hxcad::hextPrintf("%s", longText.c_str());
    hxcad::hextPrintf(nullptr);
    EXPECT_EQ(session.ui.printed().substr(session.ui.printed().size() - 5001), "\n" + longText);
}

TEST(Messages, ErrorsGoIntoABoxAndOnTheCommandLine) {
    const Session session;
    hxcom::errorMsg("没有数据");
    hxcom::printMsg(nullptr);
    messageBox("done");
    EXPECT_EQ(session.ui.printed(), toUtf8("没有数据\n\n"));
    EXPECT_EQ(session.ui.boxes(), (std::vector<std::string>{toUtf8("Error: 没有数据"), "done"}));
}

TEST(Progress, TellsChangesOnly) {
    const Session session;
    auto* progress = hxcad::getNamedPipeProgressDialog();
    progress->openProgress(99, "提取", 1);
    progress->setBar(40, 1);
    progress->setBar(40, 1);
    progress->setBar(140, 0);
    progress->setBar(1, 7);
    progress->setBarText(nullptr, -1);
    progress->addBar();
    progress->setBarText("inner", 2);
    progress->removeBar();
    progress->setText("work");
    EXPECT_TRUE(progress->isProgressOpen());
    const auto& states = session.ui.progress();
    ASSERT_EQ(states.size(), 7U);
    EXPECT_EQ(states[2].bars[0].value, 100);
    EXPECT_EQ(states[2].bars[1].value, 40);
    EXPECT_EQ(states[4].bars[2].text, "inner");
    EXPECT_EQ(states[6].bars.size(), 2U);
    EXPECT_EQ(states[6].text, "work");
    progress->close();
    EXPECT_FALSE(progress->isProgressOpen());
}

TEST(Progress, CancelLeavesEveryOperationButClosing) {
    using Dialog = modeling::NamedPipeProgressStatus;
    const Session session({.cancelAfter = 2});
    auto* progress = hxcad::getNamedPipeProgressDialog();
    progress->openProgress(99, "title", 0);
    const std::vector<void (*)(Dialog&)> operations = {
        [](Dialog& d) { d.setBar(0, 0); },       [](Dialog& d) { d.setText("x"); },
        [](Dialog& d) { d.setBarText("x", 0); }, [](Dialog& d) { d.addBar(); },
        [](Dialog& d) { d.removeBar(); },        [](Dialog& d) { d.openProgress(1, "", 0); }};
    for (const auto operation : operations) {
        EXPECT_THROW(operation(*progress), ProgressCancelException);
    }
    EXPECT_TRUE(progress->isProgressOpen());
    EXPECT_NO_THROW(progress->close());
    auto* general = hxcad::getProgressDialog();
    EXPECT_THROW(general->open(3, "t"), ProgressCancelException);
    EXPECT_THROW(general->step(), ProgressCancelException);
    EXPECT_NO_THROW(general->close());
}

TEST(Progress, GeneralDialogCountsSteps) {
    const Session session;
    auto* progress = hxcad::getProgressDialog();
    progress->open(4, "场景");
    for (int i = 0; i < 6; ++i) {
        progress->step();
    }
    progress->close();
    ASSERT_EQ(session.ui.progress().size(), 5U);
    EXPECT_EQ(session.ui.progress()[1].bars[0].value, 25);
    EXPECT_EQ(session.ui.progress()[4].bars[0].value, 100);
    progress->open(0, nullptr);
    EXPECT_NO_THROW(progress->step());
    progress->close();
}

TEST(ScriptedUi, AnswersDialogsFromWhatItWasGiven) {
    const ScratchFolder folder;
    std::vector<std::string> notes;
    ScriptedUi ui({.target = folder.path() / "new", .inputs = {toUtf8("甲"), ""}},
                  [&](auto, const std::string& text) { notes.push_back(text); });
    FileDialog dialog;
    dialog.defaultExtension = "nwc";
    dialog.fileName = "厂区/1";
    EXPECT_EQ(ui.fileDialog(dialog), fromUtf8(folder.file("new/") + toUtf8("厂区_1.nwc")));
    EXPECT_TRUE(std::filesystem::is_directory(folder.path() / "new"));
    EXPECT_EQ(ui.folderDialog("title"), folder.file("new"));
    dialog.fileName = "a.nwc";
    EXPECT_EQ(ui.fileDialog(dialog), folder.file("new/a.nwc"));
    EXPECT_EQ(ui.inputBox("a"), "甲");
    EXPECT_EQ(ui.inputBox("b"), "");
    EXPECT_EQ(ui.inputBox("名称"), std::nullopt);
    ASSERT_EQ(notes.size(), 1U);
    EXPECT_NE(notes[0].find(toUtf8("名称")), std::string::npos);
    ScriptedUi none;
    EXPECT_EQ(none.fileDialog(dialog), std::nullopt);
    EXPECT_EQ(none.folderDialog("title"), std::nullopt);
    setHostUi(nullptr);
    EXPECT_EQ(hostUi().fileDialog({}), std::nullopt);
    EXPECT_EQ(hostUi().inputBox(""), std::nullopt);
    EXPECT_FALSE(hostUi().cancelRequested());
}

}  // namespace
