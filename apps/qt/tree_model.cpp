#include "qt/tree_model.h"

#include "forms/tree_selection.h"
#include "qt/texts.h"

using Item = OrnLogicTree::Item;

TreeModel::TreeModel(OrnLogicForm& form, OrnLogicTree& tree) : form_(form), tree_(tree) {
    facts_.reserve(tree.itemCount());
    order_.reserve(tree.itemCount());
    int row = 0;
    for (const Item item : tree.topItems()) {
        facts_[item].row = row++;
    }
    visitItems(tree, [this](Item item) {
        order_.push_back(item);
        int at = 0;
        for (const Item child : item->children) {
            facts_[child].row = at++;
        }
    });
    countBelow();
}

void TreeModel::countBelow() {
    checked_ = 0;
    for (const Item item : order_) {
        facts_[item].hasUncheckedBelow = false;
    }
    for (auto at = order_.rbegin(); at != order_.rend(); ++at) {
        const Item item = *at;
        checked_ += item->checked ? 1 : 0;
        if (item->parent != nullptr && (!item->checked || facts_[item].hasUncheckedBelow)) {
            facts_[item->parent].hasUncheckedBelow = true;
        }
    }
}

void TreeModel::refresh() {
    countBelow();
    emit statesChanged();
}

Item TreeModel::itemOf(const QModelIndex& index) {
    return static_cast<Item>(index.internalPointer());
}

const std::vector<Item>& TreeModel::childrenOf(const QModelIndex& parent) const {
    return parent.isValid() ? itemOf(parent)->children : tree_.topItems();
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
    const std::vector<Item>& items = childrenOf(parent);
    const bool exists = row >= 0 && static_cast<std::size_t>(row) < items.size() && column == 0;
    return exists ? createIndex(row, column, items[static_cast<std::size_t>(row)]) : QModelIndex();
}

QModelIndex TreeModel::parent(const QModelIndex& child) const {
    const Item above = child.isValid() ? itemOf(child)->parent : nullptr;
    return above != nullptr ? createIndex(facts_.at(above).row, 0, above) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const {
    return static_cast<int>(childrenOf(parent).size());
}

Qt::CheckState TreeModel::stateOf(Item item) const {
    if (!item->checked) {
        return Qt::Unchecked;
    }
    return facts_.at(item).hasUncheckedBelow ? Qt::PartiallyChecked : Qt::Checked;
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
    const Item item = itemOf(index);
    if (role == Qt::DisplayRole) {
        return fromWide(item->label);
    }
    return role == Qt::CheckStateRole ? QVariant(stateOf(item)) : QVariant();
}

Qt::ItemFlags TreeModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable : Qt::NoItemFlags;
}

bool TreeModel::setData(const QModelIndex& index, const QVariant&, int role) {
    if (!index.isValid() || role != Qt::CheckStateRole) {
        return false;
    }
    tree_.setItemUnderMouse(itemOf(index));
    form_.onControlClicked(tree_.id());
    tree_.setItemUnderMouse(nullptr);
    refresh();
    return true;
}
