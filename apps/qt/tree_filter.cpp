#include "qt/tree_filter.h"

#include "forms/tree_selection.h"
#include "qt/texts.h"

using Item = OrnLogicTree::Item;

TreeFilter::TreeFilter(TreeModel& model, const OrnLogicTree& tree) : tree_(tree) {
    setSourceModel(&model);
    setDynamicSortFilter(false);
}

void TreeFilter::setText(const QString& text) {
    all_ = text.isEmpty();
    matches_ = 0;
    shown_.clear();
    if (!all_) {
        std::unordered_set<const OrnLogicTree::Node*> matching;
        visitItems(tree_, [&](Item item) {
            const bool matches = fromWide(item->label).contains(text, Qt::CaseInsensitive);
            matches_ += matches ? 1 : 0;
            if (!matches && matching.count(item->parent) == 0) {
                return;
            }
            matching.insert(item);
            for (Item above = item; above != nullptr && shown_.insert(above).second; above = above->parent) {
            }
        });
    }
    invalidateFilter();
}

bool TreeFilter::filterAcceptsRow(int row, const QModelIndex& parent) const {
    return all_ || shown_.count(TreeModel::itemOf(sourceModel()->index(row, 0, parent))) != 0;
}
