#include "forms/tree_selection.h"

#include "forms/tree_patterns.h"
#include "tolmar/code_page.h"
#include "tolmar/file.h"

#include <algorithm>

namespace {

using Item = OrnLogicTree::Item;

void click(OrnLogicForm& form, OrnLogicTree& tree, Item item) {
    tree.setItemUnderMouse(item);
    form.onControlClicked(tree.id());
    tree.setItemUnderMouse(nullptr);
}

void setAll(OrnLogicForm& form, OrnLogicTree& tree, bool checked) {
    visitItems(tree, [&](Item item) {
        if (item->checked != checked) {
            click(form, tree, item);
        }
    });
}

// Walks the tree with the patterns' states and clicks what matches. Parents come before children, so that an item is
// clicked for all of its branch; siblings come from the last to the first, because the form looks at the siblings of an
// item that is unchecked from the first on.
class PatternClicker {
public:
    PatternClicker(OrnLogicForm& form, OrnLogicTree& tree, const std::vector<std::string>& patterns, bool check)
        : form_(form), tree_(tree), patterns_(patterns), matched_(patterns.size()), check_(check) {}

    const std::vector<bool>& run() {
        patterns_.start(states_);
        enter(tree_.topItems(), 0);
        while (!open_.empty()) {
            Level& level = open_.back();
            if (level.next == 0) {
                open_.pop_back();
                continue;
            }
            states_.resize(level.statesEnd);
            const Item item = (*level.items)[--level.next];
            patterns_.step(states_, level.statesBegin, level.statesEnd, item->label);
            const std::size_t begin = level.statesEnd;
            if (states_.size() > begin) {
                meet(item, begin);
                enter(item->children, begin);
            }
        }
        return matched_;
    }

private:
    struct Level {
        const std::vector<Item>* items;
        std::size_t next;
        std::size_t statesBegin;
        std::size_t statesEnd;
    };

    void enter(const std::vector<Item>& items, std::size_t statesBegin) {
        open_.push_back({&items, items.size(), statesBegin, states_.size()});
    }

    void meet(Item item, std::size_t statesBegin) {
        bool hit = false;
        for (std::size_t i = statesBegin; i < states_.size(); ++i) {
            for (const std::uint32_t pattern : patterns_.accepted(states_[i])) {
                matched_[pattern] = true;
                hit = true;
            }
        }
        if (hit && item->checked != check_) {
            click(form_, tree_, item);
        }
    }

    OrnLogicForm& form_;
    OrnLogicTree& tree_;
    TreePatterns patterns_;
    std::vector<bool> matched_;
    bool check_;
    std::vector<TreePatterns::State> states_;
    std::vector<Level> open_;
};

void clickMatching(OrnLogicForm& form, OrnLogicTree& tree, const std::vector<std::string>& patterns, bool check,
                   std::vector<std::string>& unmatched) {
    if (patterns.empty()) {
        return;
    }
    PatternClicker clicker(form, tree, patterns, check);
    const std::vector<bool>& matched = clicker.run();
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        if (!matched[i]) {
            unmatched.push_back(patterns[i]);
        }
    }
}

void addPatternLine(std::string_view line, TreeSelection& selection) {
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    const std::size_t first = line.find_first_not_of(" \t");
    if (first == std::string_view::npos || line[first] == '#') {
        return;
    }
    const std::string_view mark = line.substr(first, 2);
    const bool marked = mark == "+ " || mark == "- ";
    line.remove_prefix(marked ? first + 2 : first);
    (mark == "- " ? selection.deselect : selection.select).emplace_back(line);
}

}  // namespace

bool readSelectFile(const std::filesystem::path& file, TreeSelection& selection, std::string& error) {
    std::string text;
    if (!tolmar::readFile(tolmar::fromUtf8(file.string()), text)) {
        error = file.string() + ": cannot be read";
        return false;
    }
    if (!tolmar::isValidUtf8(text)) {
        error = file.string() + ": no UTF-8 text";
        return false;
    }
    readSelectText(text, selection);
    return true;
}

void readSelectText(std::string_view text, TreeSelection& selection) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        addPatternLine(text.substr(0, end), selection);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::vector<std::string> applySelection(OrnLogicForm& form, OrnLogicTree& tree, const TreeSelection& selection) {
    std::vector<std::string> unmatched;
    setAll(form, tree, selection.select.empty());
    clickMatching(form, tree, selection.select, true, unmatched);
    clickMatching(form, tree, selection.deselect, false, unmatched);
    return unmatched;
}

TreeCounts countItems(const OrnLogicTree& tree) {
    TreeCounts counts;
    visitItems(tree, [&counts](Item item) {
        ++counts.items;
        counts.checked += item->checked ? 1 : 0;
    });
    return counts;
}

std::string itemPath(Item item) {
    std::vector<Item> line;
    for (; item != nullptr; item = item->parent) {
        line.push_back(item);
    }
    // A slash more at an end keeps an empty label there.
    std::u16string path = line.back()->label.empty() ? u"/" : u"";
    for (auto at = line.rbegin(); at != line.rend(); ++at) {
        path += at == line.rbegin() ? u"" : u"/";
        for (const char16_t unit : (*at)->label) {
            path += unit == u'/' || unit == u'*' || unit == u'\\' ? u"\\" : u"";
            path += unit;
        }
    }
    path += line.front()->label.empty() ? u"/" : u"";
    return tolmar::wideToUtf8(path);
}

void visitItems(const OrnLogicTree& tree, const std::function<void(Item)>& visit) {
    std::vector<Item> open(tree.topItems().rbegin(), tree.topItems().rend());
    while (!open.empty()) {
        const Item item = open.back();
        open.pop_back();
        visit(item);
        open.insert(open.end(), item->children.rbegin(), item->children.rend());
    }
}
