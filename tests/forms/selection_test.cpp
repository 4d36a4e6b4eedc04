#include "forms/forms.h"

#include "forms/scripted_ui.h"
#include "forms/tree_selection.h"
#include "support/scratch_folder.h"
#include "tolmar/code_page.h"

#include <gtest/gtest.h>

namespace {

using Item = OrnLogicTree::Item;

// A tree whose clicks check a branch and its ancestors, or uncheck a branch and what is left empty above it.
class TreeForm final : public OrnLogicForm {
public:
    explicit TreeForm(std::function<void(OrnLogicTree&)> fill = {}) : fill_(std::move(fill)) {}
    void onInit() override {
        tree = createTree(7, {0, 0, 10, 10});
        createButton(OrnLogicButton::Kind::CheckBox, 12584, u"输出焊点", {});
        createButton(OrnLogicButton::Kind::CheckBox, 12587, u"刷新缓存", {})->enable(false);
        if (fill_) {
            fill_(*tree);
        }
    }
    void onControlClicked(int id) override {
        clicks.push_back(id);
        if (id == 7) {
            clickItem(tree->itemUnderMouse());
        } else if (id == ResultOk || id == ResultCancel) {
            end(id);
        } else {
            auto* box = dynamic_cast<OrnLogicButton*>(control(id));
            box->setChecked(!box->checked());
        }
    }
    void onClosing() override { closed = true; }

    std::vector<std::u16string> checkedLabels() const {
        std::vector<std::u16string> labels;
        visitItems(*tree, [&](Item item) {
            if (item->checked) {
                labels.push_back(item->label);
            }
        });
        return labels;
    }

    OrnLogicTree* tree = nullptr;
    std::vector<int> clicks;
    bool closed = false;

private:
    static void clickItem(Item item) {
        const bool on = !item->checked;
        std::vector<Item> open{item};
        while (!open.empty()) {
            const Item next = open.back();
            open.pop_back();
            next->checked = on;
            open.insert(open.end(), next->children.begin(), next->children.end());
        }
        for (Item parent = item->parent; parent != nullptr; parent = parent->parent) {
            const bool any = std::any_of(parent->children.begin(), parent->children.end(), OrnLogicTree::checked);
            parent->checked = any;
        }
    }
    std::function<void(OrnLogicTree&)> fill_;
};

void fillPlant(OrnLogicTree& tree) {
    const Item world = tree.insertLast(nullptr, u"World", nullptr);
    for (const char16_t* site : {u"Site A", u"Site B"}) {
        const Item siteItem = tree.insertSorted(world, site, nullptr);
        for (const char16_t* zone : {u"管道/1", u"Zone*", u"Zone 2"}) {
            const Item zoneItem = tree.insertSorted(siteItem, zone, nullptr);
            tree.insertSorted(zoneItem, u"P-1", nullptr);
            tree.insertSorted(zoneItem, u"P-2", nullptr);
        }
    }
}

std::vector<std::u16string> labelsOf(const std::vector<Item>& items) {
    std::vector<std::u16string> labels;
    for (const Item item : items) {
        labels.push_back(item->label);
    }
    return labels;
}

TEST(Tree, SortsWithoutCaseAndKeepsEqualLabelsInOrder) {
    OrnLogicTree tree(1, {});
    int data[3] = {};
    for (const char16_t* label : {u"b", u"É", u"A", u"Я", u"B2", u"é2", u"я", u"阀", u"_"}) {
        tree.insertSorted(nullptr, label, nullptr);
    }
    for (int& value : data) {
        tree.insertSorted(nullptr, &value == &data[1] ? u"B" : u"b", &value);
    }
    EXPECT_EQ(labelsOf(tree.topItems()),
              (std::vector<std::u16string>{u"_", u"A", u"b", u"b", u"B", u"b", u"B2", u"É", u"é2", u"Я", u"я", u"阀"}));
    EXPECT_EQ(tree.topItems()[3]->data, &data[0]);
    EXPECT_EQ(tree.topItems()[5]->data, &data[2]);
    tree.select(tree.topItems()[0]);
    tree.clear();
    EXPECT_EQ(tree.itemCount(), 0U);
    EXPECT_EQ(tree.selected(), nullptr);
}

TEST(Form, WithoutAUserItIsCancelledAndClosed) {
    tolmar::setHostUi(nullptr);
    TreeForm form;
    EXPECT_EQ(form.DoModal(), OrnLogicForm::ResultCancel);
    EXPECT_EQ(form.clicks, std::vector<int>{OrnLogicForm::ResultCancel});
    EXPECT_TRUE(form.closed);
    EXPECT_EQ(form.control(99), nullptr);
    EXPECT_EQ(form.control(7), form.tree);
}

struct Played {
    std::vector<std::string> unmatched;
    std::vector<std::u16string> checked;
    std::size_t clicks;
};
Played play(const TreeSelection& selection) {
    TreeForm form(fillPlant);
    form.onInit();
    Played played;
    played.unmatched = applySelection(form, *form.tree, selection);
    played.checked = form.checkedLabels();
    played.clicks = form.clicks.size();
    return played;
}

using Labels = std::vector<std::u16string>;

TEST(Selection, WithoutPatternsEverythingIsCheckedByOneClick) {
    const Played all = play({});
    EXPECT_EQ(all.checked.size(), 21U);
    EXPECT_EQ(all.clicks, 1U);
    EXPECT_EQ(play({{}, {"World/Site A"}}).checked.size(), 11U);
}

TEST(Selection, StarsStayInALabelDoubleStarsCrossAndEscapesTakeCharactersAsTheyAre) {
    EXPECT_EQ(play({{"World/Site B/Zone 2/P-1"}, {}}).checked, (Labels{u"World", u"Site B", u"Zone 2", u"P-1"}));
    EXPECT_EQ(play({{"World/*/P-1"}, {}}).unmatched, std::vector<std::string>{"World/*/P-1"});
    EXPECT_EQ(play({{"**/P-1"}, {}}).checked.size(), 1U + 2 + 6 + 6);
    EXPECT_EQ(play({{"**/World"}, {}}).checked.size(), 21U);
    EXPECT_EQ(play({{"World/*A/Z*2/*"}, {}}).checked, (Labels{u"World", u"Site A", u"Zone 2", u"P-1", u"P-2"}));
    EXPECT_EQ(play({{"World/**/Zone 2/**"}, {}}).checked.size(), 1U + 2 + 2 + 4);
    EXPECT_EQ(play({{"world", "World/Site A/Zone 2/P-1/**"}, {}}).unmatched.size(), 2U);
    EXPECT_EQ(play({{"World/Site A/Zone\\*"}, {}}).checked, (Labels{u"World", u"Site A", u"Zone*", u"P-1", u"P-2"}));
    EXPECT_EQ(play({{tolmar::toUtf8("World/Site A/管道\\/1")}, {}}).checked.size(), 5U);
    EXPECT_EQ(play({{tolmar::toUtf8("World/Site A/管道/1")}, {}}).unmatched.size(), 1U);
}

TEST(Selection, EveryPathIsAPatternForItsItem) {
    TreeForm form(fillPlant);
    form.onInit();
    visitItems(*form.tree, [&](Item item) {
        TreeForm other(fillPlant);
        other.onInit();
        EXPECT_TRUE(applySelection(other, *other.tree, {{itemPath(item)}, {}}).empty()) << itemPath(item);
    });
}

TEST(Selection, EmptyLabelsHavePathsOfTheirOwn) {
    TreeForm form([](OrnLogicTree& tree) {
        const Item none = tree.insertLast(nullptr, u"", nullptr);
        tree.insertLast(tree.insertLast(none, u"", nullptr), u"P", nullptr);
        tree.insertLast(tree.insertLast(tree.insertLast(nullptr, u"World", nullptr), u"", nullptr), u"", nullptr);
    });
    form.onInit();
    std::vector<std::string> paths;
    visitItems(*form.tree, [&](Item item) { paths.push_back(itemPath(item)); });
    EXPECT_EQ(paths, (std::vector<std::string>{"//", "///", "///P", "World", "World//", "World///"}));
    for (const std::string& path : paths) {
        EXPECT_TRUE(applySelection(form, *form.tree, {{path}, {}}).empty()) << path;
        visitItems(*form.tree, [&](Item item) {
            if (itemPath(item) == path) {
                EXPECT_TRUE(item->checked) << path;
            }
        });
    }
}

// Every state that clicks can reach is written so that reading gives it back, or it is refused.
TEST(Selection, WrittenStatesAreReadBack) {
    const ScratchFolder folder;
    TreeForm form(fillPlant);
    form.onInit();
    std::vector<Item> items;
    visitItems(*form.tree, [&](Item item) { items.push_back(item); });
    const auto statesOf = [](const OrnLogicTree& tree) {
        std::vector<bool> states;
        visitItems(tree, [&](Item item) { states.push_back(item->checked); });
        return states;
    };
    std::uint32_t random = 1;
    for (int step = 0; step < 300; ++step) {
        random = random * 1664525U + 1013904223U;
        form.tree->setItemUnderMouse(items[(random >> 8U) % items.size()]);
        form.onControlClicked(7);
        std::string error;
        const std::vector<bool> states = statesOf(*form.tree);
        ASSERT_TRUE(writeSelectFile(folder.file("s.txt"), form, *form.tree, error)) << error;
        EXPECT_EQ(statesOf(*form.tree), states);
        TreeSelection read;
        ASSERT_TRUE(readSelectFile(folder.file("s.txt"), read, error));
        TreeForm other(fillPlant);
        other.onInit();
        EXPECT_TRUE(applySelection(other, *other.tree, read).empty());
        ASSERT_EQ(statesOf(*other.tree), states) << "step " << step;
    }
}

TEST(Selection, StatesThatPathsCannotTellAreNotWritten) {
    const ScratchFolder folder;
    TreeForm form([](OrnLogicTree& tree) {
        const Item world = tree.insertLast(nullptr, u"World", nullptr);
        tree.insertLast(world, u"twin", nullptr);
        tree.insertLast(world, u"twin", nullptr)->checked = true;
        world->checked = true;
    });
    form.onInit();
    std::string error;
    EXPECT_FALSE(writeSelectFile(folder.file("s.txt"), form, *form.tree, error));
    EXPECT_NE(error.find("\"World/twin\""), std::string::npos) << error;
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "s.txt"));
}

TEST(Selection, DeselectsComeLastAndUnmatchedOnesAreNamed) {
    const Played played = play({{"World/Site A", "World/Site A/Zone 2", "none"}, {"**/P-2", "World/**/Zone\\*", ""}});
    EXPECT_EQ(played.unmatched, (std::vector<std::string>{"none", ""}));
    EXPECT_EQ(played.checked, (Labels{u"World", u"Site A", u"Zone 2", u"P-1", tolmar::toWide("管道/1"), u"P-1"}));
}

// Twenty thousand patterns on as many siblings, and a line twenty thousand items deep.
TEST(Selection, LargeTreesStayLinear) {
    constexpr int count = 20'000;
    TreeForm form([](OrnLogicTree& tree) {
        const Item world = tree.insertLast(nullptr, u"World", nullptr);
        for (int i = 0; i < count; ++i) {
            tree.insertLast(world, tolmar::toWide("item " + std::to_string(i)), nullptr);
        }
        for (Item deep = world; tree.itemCount() < 2 * count;) {
            deep = tree.insertLast(deep, u"deep", nullptr);
        }
    });
    form.onInit();
    TreeSelection selection;
    for (int i = 0; i < count; ++i) {
        selection.select.push_back("World/item " + std::to_string(i));
    }
    selection.select.push_back("World/deep/**");
    selection.deselect = {"World/item *"};
    EXPECT_TRUE(applySelection(form, *form.tree, selection).empty());
    EXPECT_EQ(countItems(*form.tree).checked, static_cast<std::size_t>(count));
}

TEST(Selection, FilesHoldOnePatternALine) {
    const ScratchFolder folder;
    const std::string path = folder.put("s.txt", "# comment\r\n+ World/A b\r\n\n  - World/A/c\nplain\n-dash");
    TreeSelection selection;
    std::string error;
    EXPECT_TRUE(readSelectFile(path, selection, error)) << error;
    EXPECT_EQ(selection.select, (std::vector<std::string>{"World/A b", "plain", "-dash"}));
    EXPECT_EQ(selection.deselect, std::vector<std::string>{"World/A/c"});
    folder.put("s.txt", "bad \xFF byte");
    EXPECT_FALSE(readSelectFile(path, selection, error));
    EXPECT_EQ(error, path + ": no UTF-8 text");
    EXPECT_FALSE(readSelectFile(folder.file("none"), selection, error));
}

class ScriptedForm : public testing::Test {
protected:
    int run(tolmar::ScriptedAnswers answers) {
        ui = std::make_unique<tolmar::ScriptedUi>(std::move(answers));
        tolmar::setHostUi(ui.get());
        const int result = form.DoModal();
        tolmar::setHostUi(nullptr);
        return result;
    }
    TreeForm form{fillPlant};
    std::unique_ptr<tolmar::ScriptedUi> ui;
};

TEST_F(ScriptedForm, ClicksOptionsThatDifferAndAreEnabled) {
    EXPECT_EQ(run({.options = {{"outWeld", true}, {"clearCache", true}, {tolmar::toUtf8("输出焊点"), true}}}),
              OrnLogicForm::ResultOk);
    EXPECT_EQ(form.clicks, (std::vector<int>{12584, 7, OrnLogicForm::ResultOk}));
    EXPECT_TRUE(ui->refusal().empty());
    EXPECT_EQ(ui->lastCounts().checked, 21U);
}

TEST_F(ScriptedForm, WhatTheFormLacksIsRefused) {
    EXPECT_EQ(run({.options = {{"noSuch", true}}}), OrnLogicForm::ResultCancel);
    EXPECT_NE(ui->refusal().find("noSuch"), std::string::npos);
}

TEST_F(ScriptedForm, PatternWithoutAMatchIsRefused) {
    EXPECT_EQ(run({.selection = {{"World", "Wrold"}, {}}}), OrnLogicForm::ResultCancel);
    EXPECT_NE(ui->refusal().find("\"Wrold\""), std::string::npos);
}

TEST_F(ScriptedForm, DryRunCountsAndCancels) {
    EXPECT_EQ(run({.selection = {{"World/Site A"}, {}}, .dryRun = true}), OrnLogicForm::ResultCancel);
    EXPECT_TRUE(ui->refusal().empty());
    EXPECT_EQ(ui->lastCounts().checked, 11U);
    EXPECT_EQ(ui->lastCounts().items, 21U);
}

}  // namespace
