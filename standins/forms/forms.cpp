#include "forms/forms.h"

#include "tolmar/case_fold.h"
#include "tolmar/host_ui.h"

#include <algorithm>

OrnLogicTree::Item OrnLogicTree::insertAt(Item parent, std::size_t index, std::u16string label, void* data) {
    Node& node = items_.emplace_back();
    node.label = std::move(label);
    node.data = data;
    node.parent = parent;
    std::vector<Item>& siblings = parent == nullptr ? top_ : parent->children;
    siblings.insert(siblings.begin() + static_cast<std::ptrdiff_t>(index), &node);
    return &node;
}

OrnLogicTree::Item OrnLogicTree::insertLast(Item parent, std::u16string label, void* data) {
    const std::size_t last = parent == nullptr ? top_.size() : parent->children.size();
    return insertAt(parent, last, std::move(label), data);
}

// Most trees arrive in order, so the end is tried first.
OrnLogicTree::Item OrnLogicTree::insertSorted(Item parent, std::u16string label, void* data) {
    const std::vector<Item>& siblings = parent == nullptr ? top_ : parent->children;
    if (siblings.empty() || !tolmar::lessWithoutCase(label, siblings.back()->label)) {
        return insertAt(parent, siblings.size(), std::move(label), data);
    }
    const auto place =
        std::upper_bound(siblings.begin(), siblings.end(), label, [](const std::u16string& wanted, Item item) {
            return tolmar::lessWithoutCase(wanted, item->label);
        });
    return insertAt(parent, static_cast<std::size_t>(place - siblings.begin()), std::move(label), data);
}

void OrnLogicTree::clear() {
    top_.clear();
    items_.clear();
    selected_ = nullptr;
    underMouse_ = nullptr;
}

int OrnLogicForm::DoModal() {
    ended_ = false;
    result_ = ResultCancel;
    onInit();
    if (!ended_) {
        tolmar::hostUi().runForm(*this);
    }
    // A form that nobody answered closes as by its Cancel button.
    if (!ended_) {
        onControlClicked(ResultCancel);
    }
    onClosing();
    return result_;
}

OrnLogicControl* OrnLogicForm::control(int id) const {
    const auto place =
        std::find_if(controls_.begin(), controls_.end(), [id](const OrnLogicControl* c) { return c->id() == id; });
    return place == controls_.end() ? nullptr : *place;
}

void OrnLogicForm::setFrame(std::u16string caption, int width, int height) {
    caption_ = std::move(caption);
    width_ = width;
    height_ = height;
}

OrnLogicButton* OrnLogicForm::createButton(OrnLogicButton::Kind kind, int id, std::u16string label, FormRect rect) {
    OrnLogicButton& button = buttons_.emplace_back(kind, id, std::move(label), rect);
    controls_.push_back(&button);
    return &button;
}

OrnLogicTree* OrnLogicForm::createTree(int id, FormRect rect) {
    OrnLogicTree& tree = trees_.emplace_back(id, rect);
    controls_.push_back(&tree);
    return &tree;
}

void OrnLogicForm::end(int result) {
    ended_ = true;
    result_ = result;
}
