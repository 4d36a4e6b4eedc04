// The items of a form's tree for a view. Nothing is copied: the model asks the form's own items.
#pragma once

#include "forms/forms.h"

#include <QAbstractItemModel>
#include <unordered_map>

class TreeModel final : public QAbstractItemModel {
    Q_OBJECT

public:
    // Both must outlive the model. The form has filled the tree.
    TreeModel(OrnLogicForm& form, OrnLogicTree& tree);

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex&) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // Clicks the item's check box; whatever value is asked for, the form decides.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    static OrnLogicTree::Item itemOf(const QModelIndex& index);
    // Takes the states from the tree anew, after somebody else has changed them.
    void refresh();
    // Items and checked items.
    std::size_t itemCount() const { return facts_.size(); }
    std::size_t checkedCount() const { return checked_; }

signals:
    void statesChanged();

private:
    // What an item does not know itself.
    struct Facts {
        int row = 0;
        bool hasUncheckedBelow = false;
    };

    void countBelow();
    const std::vector<OrnLogicTree::Item>& childrenOf(const QModelIndex& parent) const;
    Qt::CheckState stateOf(OrnLogicTree::Item item) const;

    OrnLogicForm& form_;
    OrnLogicTree& tree_;
    std::unordered_map<OrnLogicTree::Item, Facts> facts_;
    std::vector<OrnLogicTree::Item> order_;  // parents before children
    std::size_t checked_ = 0;
};
