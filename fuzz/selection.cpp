// Selection files and patterns on a small tree: no pattern hangs, and an item's own path selects it.
#include "forms/tree_selection.h"
#include "scratch_file.h"

namespace {

class Form final : public OrnLogicForm {
public:
    void onInit() override {
        tree_ = createTree(1, {});
        OrnLogicTree::Item world = tree_->insertLast(nullptr, u"World", nullptr);
        for (const char16_t* label : {u"a", u"a/b", u"a*b\\", u"\u6cf5 1", u""}) {
            OrnLogicTree::Item site = tree_->insertLast(world, label, nullptr);
            tree_->insertLast(tree_->insertLast(site, u"aaaaaaaaaaaaaaaaaaaaaaaa", nullptr), u"P-1", nullptr);
        }
    }
    void onControlClicked(int) override {
        if (OrnLogicTree::Item item = tree_->itemUnderMouse()) {
            OrnLogicTree::setChecked(item, !OrnLogicTree::checked(item));
        }
    }
    OrnLogicTree& tree() { return *tree_; }

private:
    OrnLogicTree* tree_ = nullptr;
};

void requireOwnPathsMatch() {
    static bool done = false;
    if (done) {
        return;
    }
    done = true;
    Form form;
    form.onInit();
    std::vector<OrnLogicTree::Item> items;
    visitItems(form.tree(), [&](OrnLogicTree::Item item) { items.push_back(item); });
    for (const OrnLogicTree::Item item : items) {
        fuzz::require(applySelection(form, form.tree(), {{itemPath(item)}, {}}).empty());
        fuzz::require(OrnLogicTree::checked(item));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    requireOwnPathsMatch();
    static const fuzz::Root root("selection.txt");
    root.put(fuzz::asText(data, size));
    TreeSelection selection;
    std::string error;
    if (!readSelectFile(root.file(), selection, error)) {
        fuzz::require(!error.empty());
        return 0;
    }
    Form form;
    form.onInit();
    const std::size_t lost = applySelection(form, form.tree(), selection).size();
    fuzz::require(lost <= selection.select.size() + selection.deselect.size());
    return 0;
}
