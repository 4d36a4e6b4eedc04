// The dialogs on Qt's offscreen platform: what they show, what clicks do, and that they stay quick.
#include "forms/scripted_ui.h"
#include "forms/tree_selection.h"
#include "qt/form_window.h"
#include "qt/progress_window.h"
#include "qt/screen_ui.h"
#include "qt/texts.h"
#include "qt/tree_filter.h"
#include "qt/tree_model.h"
#include "support/scratch_folder.h"
#include "support/ui_double.h"

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>
#include <gtest/gtest.h>

namespace {

using Item = OrnLogicTree::Item;

// The click rules of the scope dialog, on sites of zones of pipes.
class PlantForm final : public OrnLogicForm {
public:
    PlantForm(int sites, int zones, int pipes) : sites_(sites), zones_(zones), pipes_(pipes) { onInit(); }
    void onInit() override {
        setFrame(u"导出", 560, 700);
        tree = createTree(12581, {110, 0, 550, 700});
        tree->setBackground(240, 240, 240);
        weld = createButton(OrnLogicButton::Kind::CheckBox, 12584, u"输出焊点", {10, 0, 100, 25});
        createButton(OrnLogicButton::Kind::CheckBox, 12587, u"刷新缓存", {10, 90, 100, 115})->enable(false);
        createButton(OrnLogicButton::Kind::Push, ResultOk, u"确定", {10, 130, 100, 155});
        createButton(OrnLogicButton::Kind::Push, ResultCancel, u"取消", {10, 160, 100, 185});
        const Item world = tree->insertLast(nullptr, u"World", nullptr);
        for (int s = 0; s < sites_; ++s) {
            const Item site = tree->insertLast(world, numbered(u"Site ", s), nullptr);
            for (int z = 0; z < zones_; ++z) {
                const Item zone = tree->insertLast(site, numbered(u"泵房 ", z), nullptr);
                for (int p = 0; p < pipes_; ++p) {
                    tree->insertLast(zone, numbered(u"P-", p), nullptr);
                }
            }
        }
    }
    void onSize(int width, int height) override { tree->setRect({110, 0, width - 10, height}); }
    void onControlClicked(int id) override {
        if (id == tree->id()) {
            setBranch(tree->itemUnderMouse(), !tree->itemUnderMouse()->checked);
        } else if (id == weld->id()) {
            weld->setChecked(!weld->checked());
        } else if (id == ResultOk || id == ResultCancel) {
            end(id);
        }
    }

    OrnLogicTree* tree = nullptr;
    OrnLogicButton* weld = nullptr;

private:
    static std::u16string numbered(std::u16string text, int number) {
        for (const char c : std::to_string(number)) {
            text += static_cast<char16_t>(c);
        }
        return text;
    }
    static void setBranch(Item item, bool checked) {
        std::vector<Item> open{item};
        while (!open.empty()) {
            const Item at = open.back();
            open.pop_back();
            at->checked = checked;
            open.insert(open.end(), at->children.begin(), at->children.end());
        }
        for (Item above = item->parent; above != nullptr; above = above->parent) {
            const auto isChecked = [](Item child) { return child->checked; };
            if (!checked && std::any_of(above->children.begin(), above->children.end(), isChecked)) {
                return;
            }
            above->checked = checked;
            if (!checked && above->children.size() > 1) {
                return;
            }
        }
    }

    int sites_;
    int zones_;
    int pipes_;
};

QModelIndex at(const QAbstractItemModel& model, std::initializer_list<int> rows) {
    QModelIndex index;
    for (const int row : rows) {
        index = model.index(row, 0, index);
    }
    return index;
}

int stateAt(const QAbstractItemModel& model, std::initializer_list<int> rows) {
    return model.data(at(model, rows), Qt::CheckStateRole).toInt();
}

TEST(QtTree, ShowsPartlyCheckedParentsAndCounts) {
    PlantForm form(2, 2, 3);
    TreeModel model(form, *form.tree);
    EXPECT_EQ(model.itemCount(), 19U);
    EXPECT_TRUE(model.setData(at(model, {0, 1}), Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(model.checkedCount(), 10U);
    EXPECT_EQ(stateAt(model, {0}), Qt::PartiallyChecked);
    EXPECT_EQ(stateAt(model, {0, 0}), Qt::Unchecked);
    EXPECT_EQ(stateAt(model, {0, 1, 1, 2}), Qt::Checked);
    EXPECT_TRUE(model.setData(at(model, {0, 1, 0, 2}), Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(stateAt(model, {0, 1, 0}), Qt::PartiallyChecked) << "a click turns the state over, whatever was asked";
    EXPECT_EQ(model.parent(at(model, {0, 1, 0})), at(model, {0, 1}));
    EXPECT_FALSE(model.index(3, 0, at(model, {0})).isValid());
}

TEST(QtTree, SearchHidesAndChangesNoState) {
    PlantForm form(2, 2, 3);
    TreeModel model(form, *form.tree);
    TreeFilter filter(model, *form.tree);
    model.setData(at(model, {0, 0}), Qt::Checked, Qt::CheckStateRole);
    filter.setText("p-2");
    EXPECT_EQ(filter.matchCount(), 4U);
    EXPECT_EQ(filter.rowCount(at(filter, {0, 1, 1})), 1);
    EXPECT_EQ(filter.data(at(filter, {0, 1, 1, 0}), Qt::DisplayRole).toString(), "P-2");
    filter.setText(fromWide(u"泵房 1"));
    EXPECT_EQ(filter.rowCount(at(filter, {0, 0})), 1);
    EXPECT_EQ(filter.rowCount(at(filter, {0, 0, 0})), 3) << "what is below a match shows";
    filter.setText("nowhere");
    EXPECT_EQ(filter.rowCount({}), 0);
    filter.setText({});
    EXPECT_EQ(filter.rowCount(at(filter, {0, 0})), 2);
    EXPECT_EQ(model.checkedCount(), 10U);
}

TEST(QtForm, PutsControlsWhereTheFormWantsThem) {
    PlantForm form(1, 1, 1);
    FormWindow window(form);
    window.show();
    QApplication::processEvents();
    EXPECT_EQ(window.windowTitle(), fromWide(u"导出"));
    const auto* tree = window.findChild<QTreeView*>("tree");
    EXPECT_EQ(tree->geometry(), QRect(110, 0, 440, 700));
    const auto* weld = window.findChild<QCheckBox*>("control12584");
    EXPECT_EQ(weld->geometry(), QRect(10, 0, 90, 25));
    EXPECT_EQ(weld->text(), fromWide(u"输出焊点"));
    EXPECT_FALSE(window.findChild<QCheckBox*>("control12587")->isEnabled());
    EXPECT_EQ(tree->palette().color(QPalette::Base), QColor(240, 240, 240));
    window.resize(window.width() + 100, window.height() + 50);
    QApplication::processEvents();
    EXPECT_EQ(tree->geometry(), QRect(110, 0, 540, 750));
}

TEST(QtForm, ClicksReachTheFormAndEndIt) {
    PlantForm form(1, 1, 2);
    FormWindow window(form);
    window.show();
    window.findChild<QCheckBox*>("control12584")->click();
    EXPECT_TRUE(form.weld->checked());
    auto* tree = window.findChild<QTreeView*>("tree");
    tree->model()->setData(at(*tree->model(), {0}), Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(countItems(*form.tree).checked, 5U);
    EXPECT_EQ(window.findChild<QLabel*>("counts")->text(), fromWide(u"已选 5 / 5"));
    window.findChild<QPushButton*>("control1")->click();
    EXPECT_TRUE(form.ended());
    EXPECT_EQ(window.result(), OrnLogicForm::ResultOk);

    PlantForm other(1, 1, 1);
    FormWindow closed(other);
    closed.show();
    closed.close();
    EXPECT_EQ(other.result(), OrnLogicForm::ResultCancel);
    EXPECT_TRUE(other.ended());
}

TEST(QtForm, SavedSelectionIsReadBack) {
    const ScratchFolder folder;
    const std::string file = folder.file("selection");
    PlantForm form(2, 2, 3);
    FormWindow window(form);
    auto* tree = window.findChild<QTreeView*>("tree");
    QAbstractItemModel& model = *tree->model();
    model.setData(at(model, {0, 0, 1}), Qt::Checked, Qt::CheckStateRole);
    model.setData(at(model, {0, 0, 1, 2}), Qt::Checked, Qt::CheckStateRole);
    model.setData(at(model, {0, 1, 0}), Qt::Checked, Qt::CheckStateRole);
    EXPECT_EQ(window.saveSelection(QString::fromStdString(file)), "");
    TreeSelection read;
    std::string error;
    ASSERT_TRUE(readSelectFile(file, read, error)) << error;
    PlantForm again(2, 2, 3);
    EXPECT_TRUE(applySelection(again, *again.tree, read).empty());
    std::vector<bool> before;
    std::vector<bool> after;
    visitItems(*form.tree, [&](Item item) { before.push_back(item->checked); });
    visitItems(*again.tree, [&](Item item) { after.push_back(item->checked); });
    EXPECT_EQ(after, before);
    EXPECT_NE(window.saveSelection("/nowhere/at/all"), "");
}

// 10^5 items: opening, a click on the root and a search each take well under what a hand notices as waiting.
TEST(QtForm, StaysQuickWithManyItems) {
    PlantForm form(10, 100, 100);
    QElapsedTimer clock;
    clock.start();
    FormWindow window(form);
    window.show();
    QApplication::processEvents();
    EXPECT_LT(clock.restart(), 3000);
    auto* tree = window.findChild<QTreeView*>("tree");
    tree->model()->setData(at(*tree->model(), {0}), Qt::Checked, Qt::CheckStateRole);
    QApplication::processEvents();
    EXPECT_EQ(countItems(*form.tree).checked, 101011U);
    EXPECT_LT(clock.restart(), 1000);
    window.findChild<QLineEdit*>("search")->setText("P-77");
    while (tree->model()->rowCount(at(*tree->model(), {0, 0, 0})) != 1 && clock.elapsed() < 5000) {
        QApplication::processEvents(QEventLoop::AllEvents, 50);
    }
    EXPECT_EQ(tree->model()->rowCount(at(*tree->model(), {0, 0, 0})), 1);
    EXPECT_LT(clock.elapsed(), 3000);
}

TEST(QtProgress, ShowsBarsAndTakesTheCancel) {
    UiDouble console;
    QtUi ui(console);
    tolmar::ProgressState state{true, toCodePage(fromWide(u"导出")), "text", {{"total", 40}, {"", 7}}};
    EXPECT_FALSE(ui.cancelRequested());
    ui.progressChanged(state);
    ProgressWindow* window = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        window = window != nullptr ? window : qobject_cast<ProgressWindow*>(widget);
    }
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowTitle(), fromWide(u"导出"));
    ASSERT_EQ(window->findChildren<QProgressBar*>().size(), 2);
    EXPECT_EQ(window->findChildren<QProgressBar*>()[0]->value(), 40);
    window->findChild<QPushButton*>("cancel")->click();
    EXPECT_TRUE(ui.cancelRequested());
    state.open = false;
    ui.progressChanged(state);
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(ui.cancelRequested()) << "the next command starts afresh";
    console.cancel = true;
    EXPECT_TRUE(ui.cancelRequested());
}

// Does something to the next modal window, once it is there.
template <typename Act>
void whenModal(Act act) {
    auto* timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, [timer, act] {
        if (QWidget* window = QApplication::activeModalWidget()) {
            timer->stop();
            timer->deleteLater();
            act(*qobject_cast<QDialog*>(window));
        }
    });
    timer->start(5);
}

TEST(QtDialogs, BoxesAreShownAndTold) {
    UiDouble console;
    QString shown;
    whenModal([&](QDialog& window) {
        shown = dynamic_cast<QMessageBox&>(window).text();
        window.accept();
    });
    QtUi(console).messageBox(toCodePage(fromWide(u"导出结束")), "title");
    EXPECT_EQ(shown, fromWide(u"导出结束"));
    ASSERT_EQ(console.boxes.size(), 1U);
}

TEST(QtDialogs, FilesAndFoldersStartFromTheSuggestion) {
    const ScratchFolder folder;
    tolmar::ScriptedAnswers answers;
    answers.target = folder.path();
    tolmar::ScriptedUi console(answers);
    QtUi ui(console);
    tolmar::FileDialog dialog;
    dialog.defaultExtension = "rvm";
    dialog.filter = "RVM (*.rvm)|*.rvm||";
    QString offered;
    whenModal([&](QDialog& window) {
        offered = dynamic_cast<QFileDialog&>(window).selectedFiles().value(0);
        window.accept();
    });
    const auto file = ui.fileDialog(dialog);
    ASSERT_TRUE(file.has_value());
    EXPECT_EQ(*file, *console.fileDialog(dialog));
    EXPECT_EQ(fromCodePage(*file), offered);
    whenModal([](QDialog& window) { window.reject(); });
    EXPECT_FALSE(ui.fileDialog(dialog).has_value());
    whenModal([](QDialog& window) { window.accept(); });
    EXPECT_EQ(ui.folderDialog("where").value_or("none"), folder.path().string());
    whenModal([](QDialog& window) { window.reject(); });
    EXPECT_FALSE(ui.folderDialog("where").has_value());
}

TEST(QtDialogs, InputsStartFromTheAnswerOfTheCommandLine) {
    tolmar::ScriptedAnswers answers;
    answers.inputs = {"first"};
    tolmar::ScriptedUi console(answers);
    QtUi ui(console);
    whenModal([](QDialog& window) {
        auto& input = dynamic_cast<QInputDialog&>(window);
        input.setTextValue(input.textValue() + fromWide(u" 甲"));
        input.accept();
    });
    EXPECT_EQ(ui.inputBox("code").value_or("none"), toCodePage(fromWide(u"first 甲")));
    whenModal([](QDialog& window) { window.reject(); });
    EXPECT_FALSE(ui.inputBox("code").has_value());
}

TEST(QtDialogs, FormsOpenWithThePatternsOfTheCommandLine) {
    tolmar::ScriptedAnswers answers;
    answers.selection.select = {"World/Site 1/*"};
    answers.options = {{"outWeld", true}};
    tolmar::ScriptedUi console(answers);
    PlantForm form(2, 2, 3);
    whenModal([](QDialog& window) {
        EXPECT_EQ(window.findChild<QLabel*>("counts")->text(), fromWide(u"已选 10 / 19"));
        window.findChild<QPushButton*>("control1")->click();
    });
    QtUi(console).runForm(form);
    EXPECT_EQ(form.result(), OrnLogicForm::ResultOk);
    EXPECT_TRUE(form.weld->checked());
    EXPECT_EQ(countItems(*form.tree).checked, 10U);

    PlantForm untouched(1, 1, 1);
    tolmar::ScriptedUi silent;
    whenModal([](QDialog& window) { window.reject(); });
    QtUi(silent).runForm(untouched);
    EXPECT_EQ(countItems(*untouched.tree).checked, 0U) << "without patterns a form opens as it is";
    EXPECT_EQ(untouched.result(), OrnLogicForm::ResultCancel);

    answers.selection.select = {"Nowhere"};
    tolmar::ScriptedUi wrong(answers);
    PlantForm refused(1, 1, 1);
    QtUi(wrong).runForm(refused);
    EXPECT_EQ(refused.result(), OrnLogicForm::ResultCancel);
    EXPECT_NE(wrong.refusal(), "");
}

TEST(QtTexts, FiltersOfTheHostBecomeQts) {
    EXPECT_EQ(qtFilter("A (*.nwc)|*.nwc|All Files(*.*)|*.*||"), "A (*.nwc);;All Files (*.*)");
    EXPECT_EQ(qtFilter("X|*.a;*.b||"), "X (*.a *.b)");
    EXPECT_EQ(qtFilter(""), "");
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
