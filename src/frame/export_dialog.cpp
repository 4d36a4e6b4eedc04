#include "frame/export_dialog.h"

#include "forms/scope_dialog.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/id_pages.h"
#include "platform/left_out.h"
#include "platform/tree_walker.h"
#include "scripts/options.h"
#include "scripts/script_host.h"
#include "tolmar/code_page.h"
#include "tolmar/run_report.h"
#include "tolmar/text.h"

#include <cstdio>
#include <optional>
#include <stdexcept>

namespace {

using tolmar::textOrEmpty;

using scopedialog::treeId;

constexpr int clientLeft = 110;
constexpr int rightMargin = 10;
constexpr int formWidth = 560;
constexpr int formHeight = 700;

// The option check boxes: where they stand, what they write, and the modes that enable them (bit = mode).
struct OptionBox {
    int id;
    const char16_t* label;
    FormRect rect;
    const char* option;
    unsigned modes;
};
constexpr unsigned inMode(ExportDataDlg::Mode mode) {
    return 1U << mode;
}
constexpr int idOf(const char* option) {
    return scopedialog::optionOf(option)->id;
}
constexpr unsigned nvOnly = inMode(ExportDataDlg::NvOut);
constexpr unsigned weldModes = nvOnly | inMode(ExportDataDlg::RvmOut) | inMode(ExportDataDlg::HextOut);
constexpr OptionBox optionBoxes[] = {
    {idOf(options::outWeld), u"输出焊点", {10, 0, 100, 25}, options::outWeld, weldModes},
    {idOf(options::nvExpandBranch), u"展开分支", {10, 30, 100, 55}, options::nvExpandBranch, nvOnly},
    {idOf(options::orAxiss), u"OR轴网", {10, 60, 100, 85}, options::orAxiss, nvOnly},
    {idOf(options::clearCache), u"刷新缓存", {10, 90, 100, 115}, options::clearCache, inMode(ExportDataDlg::HextOut)},
};

// What the dialog leaves behind, and its table of which item shows which node.
ExportDataDlg::NodeSelection nodeSelection;
std::optional<ExportDataDlg::ObjectSelection> objectSelection;  // made of the nodes when first asked for
IdPages<OrnLogicTree::Item> nodeItems;

FormRect treeRect(int width, int height) {
    return {clientLeft, 0, width - rightMargin, height};
}

// Null for a node without item.
OrnLogicTree::Item itemOf(const HxDbTreeNode* node) {
    const OrnLogicTree::Item* item = nodeItems.find(node->objectId());
    return item != nullptr ? *item : nullptr;
}

void setBranch(OrnLogicTree::Item top, bool checked) {
    std::vector<OrnLogicTree::Item> open{top};
    while (!open.empty()) {
        const OrnLogicTree::Item item = open.back();
        open.pop_back();
        OrnLogicTree::setChecked(item, checked);
        const auto& children = OrnLogicTree::children(item);
        open.insert(open.end(), children.begin(), children.end());
    }
}

void checkAncestors(OrnLogicTree::Item item) {
    while ((item = OrnLogicTree::parent(item)) != nullptr) {
        OrnLogicTree::setChecked(item, true);
    }
}

bool anyChecked(const std::vector<OrnLogicTree::Item>& items) {
    return std::any_of(items.begin(), items.end(), OrnLogicTree::checked);
}

// An only child takes its parent along, and so on upward; the last checked of several clears its parent and no more.
void uncheckAncestors(OrnLogicTree::Item item) {
    for (OrnLogicTree::Item parent; (parent = OrnLogicTree::parent(item)) != nullptr; item = parent) {
        const auto& siblings = OrnLogicTree::children(parent);
        if (siblings.size() == 1) {
            OrnLogicTree::setChecked(parent, false);
            continue;
        }
        if (!anyChecked(siblings)) {
            OrnLogicTree::setChecked(parent, false);
        }
        return;
    }
}

// Nodes carry one object each, so the order of the items makes no difference.
ExportDataDlg::ObjectSelection objectsOf(const ExportDataDlg::NodeSelection& nodes) {
    IdSet::Builder objects;
    std::vector<HxDbObject*> below;
    const auto forEachObject = [&nodes](bool checked, auto&& use) {
        for (const auto& [id, on] : nodes) {
            const HxDbTreeNode* node = on == checked ? openAs<HxDbTreeNode>(id) : nullptr;
            if (const HxDbObject* object = objectOfNode(node)) {
                use(node, object);
            }
        }
    };
    forEachObject(true, [&](const HxDbTreeNode* node, const HxDbObject* object) {
        if (object->isKindOf(HextManager::desc())) {
            getAllSubObjects(node, below);
            for (const HxDbObject* member : below) {
                objects.insert(member->objectId());
            }
        }
    });
    forEachObject(false, [&](const HxDbTreeNode*, const HxDbObject* object) {
        if (object->isKindOf(HxDbSmrtlnEntity::desc())) {
            objects.erase(object->objectId());
        }
    });
    return objects.build();
}

}  // namespace

// A model without data has said so itself.
bool askScope(ExportDataDlg::Mode mode) {
    if (ExportDataDlg(mode, true).DoModal() == OrnLogicForm::ResultOk && !nodeSelection.empty()) {
        return true;
    }
    if (hxcom::getDataManTreeRoot() != nullptr) {
        tolmar::runReport().ended(tolmar::RunOutcome::Cancelled, "nothing was selected");
    }
    return false;
}

bool isChecked(const ExportDataDlg::NodeSelection& selection, const HxDbTreeNode* node) {
    const auto at = selection.find(node->objectId());
    return at != selection.end() && at->second;
}

bool selectedValue(const ExportDataDlg::NodeSelection& selection, HxDbObjectId node) {
    const auto at = selection.find(node);
    if (at == selection.end()) {
        throw std::out_of_range("invalid map<K, T> key");
    }
    return at->second;
}

ExportDataDlg::ExportDataDlg(int mode, bool withOtherRoots) : mode_(mode), withOtherRoots_(withOtherRoots) {
    nodeSelection.clear();
    objectSelection.reset();
}

const ExportDataDlg::NodeSelection& ExportDataDlg::selectedNodes() {
    return nodeSelection;
}

const ExportDataDlg::ObjectSelection& ExportDataDlg::selectedObjects() {
    if (!objectSelection) {
        objectSelection = objectsOf(nodeSelection);
    }
    return *objectSelection;
}

void ExportDataDlg::onInit() {
    setFrame(u"导出", formWidth, formHeight);
    tree_ = createTree(treeId, treeRect(formWidth, formHeight));
    createOptions();
    createButton(OrnLogicButton::Kind::Push, ResultOk, u"确定", {10, 130, 100, 155});
    createButton(OrnLogicButton::Kind::Push, ResultCancel, u"取消", {10, 160, 100, 185});
    tree_->setBackground(240, 240, 240);
    if (!fillTree()) {
        end(ResultCancel);
    }
}

void ExportDataDlg::createOptions() {
    for (const OptionBox& option : optionBoxes) {
        OrnLogicButton* box = createButton(OrnLogicButton::Kind::CheckBox, option.id, option.label, option.rect);
        box->setChecked(optionOn(option.option));
        box->enable((option.modes & (1U << mode_)) != 0);
    }
}

bool ExportDataDlg::fillTree() {
    HxDbTreeNode* root = hxcom::getDataManTreeRoot();
    if (root == nullptr) {
        char text[512];
        std::snprintf(text, sizeof text, "用户'%s'的主数据库'%s'中没有数据，请向系统管理员询问",
                      HextSystem::getCurrentUser(), HextSystem::getCurrentDesignItem("CurSelDatabase", false));
        hxcom::errorMsg(text);
        tolmar::runReport().ended(tolmar::RunOutcome::Refused, text);
        return false;
    }
    fillFrom(root, nullptr);
    std::vector<HxDbObject*> others;
    if (withOtherRoots_ && hxcom::getTreeRootOfOther(others)) {
        for (HxDbObject* other : others) {
            HxDbTreeNode* otherRoot = HxDbTreeNode::cast(other);
            if (otherRoot != nullptr && itemOf(otherRoot) == nullptr) {
                fillFrom(otherRoot, "协同模型：");
            }
        }
    }
    return true;
}

void ExportDataDlg::fillFrom(HxDbTreeNode* root, const char* worldPrefix) {
    for (TreeWalker walker(root); !walker.done(); walker.next()) {
        HxDbTreeNode* node = walker.current();
        if (HxDbObject* object = objectOfNode(node)) {
            addNode(node, object, worldPrefix);
        } else {
            reportLeftOutNode(*node, "object", "cannot be opened");
        }
    }
}

void ExportDataDlg::addNode(HxDbTreeNode* node, HxDbObject* object, const char* worldPrefix) {
    const OrnLogicTree::Item parent = parentItem(node);
    OrnLogicTree::Item item = nullptr;
    if (object->isKindOf(HextWorld::desc())) {
        const char* name =
            worldPrefix != nullptr ? hxcom::queryDbShortName(object->database()) : object->getDisplayName();
        const std::string label = std::string(textOrEmpty(worldPrefix)) + textOrEmpty(name);
        item = tree_->insertLast(parent, label.empty() ? u"World" : tolmar::toWide(label), node);
    } else {
        const char* name = node->getName();
        label_.assign(prefixOf(object)).append(name != nullptr ? name : "error node name");
        item = tree_->insertSorted(parent, tolmar::toWide(label_), node);
    }
    nodeItems[node->objectId()] = item;
}

// Brothers come one after the other.
OrnLogicTree::Item ExportDataDlg::parentItem(const HxDbTreeNode* node) {
    const HxDbTreeNode* parent = node->getParent();
    if (parent != lastParent_) {
        lastParent_ = parent;
        lastParentItem_ = parent != nullptr ? itemOf(parent) : nullptr;
    }
    return lastParentItem_;
}

const std::string& ExportDataDlg::prefixOf(const HxDbObject* object) {
    const auto [at, isNew] = prefixes_.try_emplace(object->isA());
    if (isNew) {
        at->second = getNodePrefix(object->isA()->name(), nullptr, nullptr, nullptr);
    }
    return at->second;
}

void ExportDataDlg::onSize(int width, int height) {
    tree_->setRect(treeRect(width, height));
}

void ExportDataDlg::onControlClicked(int id) {
    if (id == treeId) {
        return clickTree();
    }
    if (id == ResultOk) {
        takeResults();
        return end(ResultOk);
    }
    if (id == ResultCancel) {
        return end(ResultCancel);
    }
    if (auto* box = dynamic_cast<OrnLogicButton*>(control(id))) {
        clickOption(*box);
    }
}

void ExportDataDlg::clickTree() {
    const OrnLogicTree::Item item = tree_->itemUnderMouse();
    if (item == nullptr) {
        return;
    }
    const bool checked = !OrnLogicTree::checked(item);
    tree_->select(item);
    setBranch(item, checked);
    if (checked) {
        checkAncestors(item);
    } else {
        uncheckAncestors(item);
    }
}

void ExportDataDlg::clickOption(OrnLogicButton& box) {
    if (!box.enabled()) {
        return;
    }
    box.setChecked(!box.checked());
    for (const OptionBox& option : optionBoxes) {
        if (option.id == box.id()) {
            setOption(option.option, box.checked());
        }
    }
    if (box.id() == idOf(options::clearCache) && box.checked()) {
        clearBomCache();
    }
}

void ExportDataDlg::takeResults() {
    std::vector<NodeSelection::Entry> nodes;
    nodes.reserve(tree_->itemCount());
    nodeItems.forEach([&nodes](HxDbObjectId id, OrnLogicTree::Item item) {
        if (item != nullptr) {
            nodes.emplace_back(id, OrnLogicTree::checked(item));
        }
    });
    nodeSelection.assign(std::move(nodes));
    objectSelection.reset();
}

void ExportDataDlg::onClosing() {
    nodeItems.clear();
}
