#include "forms/tree_selection.h"

#include "tolmar/code_page.h"
#include "tolmar/file.h"

#include <algorithm>
#include <unordered_set>

namespace {

using Item = OrnLogicTree::Item;

// The fewest patterns that may tell the states: the tops of wholly checked branches, and what was taken out of items
// that stayed checked without any checked item below.
class PatternsOf {
public:
    explicit PatternsOf(const OrnLogicTree& tree) {
        visitItems(tree, [this](Item item) { order_.push_back(item); });
        findWhole();
        for (const Item item : order_) {
            add(item);
        }
        if (std::all_of(order_.begin(), order_.end(), [](Item item) { return item->checked; })) {
            selection_.select.clear();
        } else if (selection_.select.empty()) {
            for (const Item item : tree.topItems()) {
                selection_.deselect.push_back(itemPath(item));
            }
        }
    }
    const TreeSelection& selection() const { return selection_; }

private:
    bool isWhole(Item item) const { return broken_.count(item) == 0; }

    void findWhole() {
        for (auto at = order_.rbegin(); at != order_.rend(); ++at) {
            if (!(*at)->checked || !isWhole(*at)) {
                broken_.insert(*at);
                broken_.insert((*at)->parent);
            }
        }
    }

    void add(Item item) {
        if (isWhole(item) && (item->parent == nullptr || !isWhole(item->parent))) {
            selection_.select.push_back(itemPath(item));
        } else if (item->checked && !isWhole(item) &&
                   std::none_of(item->children.begin(), item->children.end(),
                                [](Item child) { return child->checked; })) {
            addHollow(item);
        }
    }

    // Unchecking the last child would uncheck the item; unchecking the children of that child does not.
    void addHollow(Item item) {
        selection_.select.push_back(itemPath(item));
        const Item first = item->children.front();
        for (const Item child : first->children.size() > 1 ? first->children : std::vector<Item>{first}) {
            selection_.deselect.push_back(itemPath(child));
        }
        for (std::size_t i = 1; i < item->children.size(); ++i) {
            selection_.deselect.push_back(itemPath(item->children[i]));
        }
    }

    std::vector<Item> order_;
    std::unordered_set<const OrnLogicTree::Node*> broken_;
    TreeSelection selection_;
};

std::string textOf(const TreeSelection& selection) {
    std::string text = "# Items of the scope dialog, for --select-file.\n";
    for (const std::string& pattern : selection.select) {
        text += "+ " + pattern + "\n";
    }
    for (const std::string& pattern : selection.deselect) {
        text += "- " + pattern + "\n";
    }
    return text;
}

std::vector<bool> statesOf(const OrnLogicTree& tree) {
    std::vector<bool> states;
    states.reserve(tree.itemCount());
    visitItems(tree, [&states](Item item) { states.push_back(item->checked); });
    return states;
}

void setStates(const OrnLogicTree& tree, const std::vector<bool>& states) {
    std::size_t next = 0;
    visitItems(tree, [&](Item item) { OrnLogicTree::setChecked(item, states[next++]); });
}

// Empty, or why the patterns do not tell the states.
std::string tryOn(OrnLogicForm& form, OrnLogicTree& tree, const TreeSelection& selection) {
    const std::vector<bool> wanted = statesOf(tree);
    const bool isClear = applySelection(form, tree, selection).empty();
    const std::vector<bool> given = statesOf(tree);
    setStates(tree, wanted);
    if (isClear && given == wanted) {
        return {};
    }
    std::string path = "an item";
    std::size_t at = 0;
    visitItems(tree, [&](Item item) {
        path = given[at] != wanted[at] ? "\"" + itemPath(item) + "\"" : path;
        ++at;
    });
    return "the state of " + path +
           " cannot be told by paths: siblings have the same label, or a label has line breaks";
}

}  // namespace

bool writeSelectFile(const std::filesystem::path& file, OrnLogicForm& form, OrnLogicTree& tree, std::string& error) {
    const std::string text = textOf(PatternsOf(tree).selection());
    TreeSelection read;
    readSelectText(text, read);
    error = tryOn(form, tree, read);
    if (!error.empty()) {
        return false;
    }
    tolmar::OutputFile out(tolmar::fromUtf8(file.string()), tolmar::FileMode::Text);
    out.write(text);
    if (!out.isOpen() || !out.close()) {
        error = file.string() + ": cannot be written";
        return false;
    }
    return true;
}
