// Shows the items whose label holds a text, with what is above and below them. States are not touched.
#pragma once

#include "forms/forms.h"
#include "qt/tree_model.h"

#include <QSortFilterProxyModel>
#include <unordered_set>

class TreeFilter final : public QSortFilterProxyModel {
    Q_OBJECT

public:
    // `tree` is what `model` shows.
    TreeFilter(TreeModel& model, const OrnLogicTree& tree);
    // Case aside; an empty text shows everything. One walk of the tree.
    void setText(const QString& text);
    std::size_t matchCount() const { return matches_; }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    const OrnLogicTree& tree_;
    bool all_ = true;
    std::size_t matches_ = 0;
    std::unordered_set<const OrnLogicTree::Node*> shown_;
};
