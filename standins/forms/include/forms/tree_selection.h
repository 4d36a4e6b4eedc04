// Selecting items of a form's tree by path, with the clicks that a user would make.
//
// A path is the labels from the top item down, joined by "/". In a pattern "*" stands for any text within a label and
// "**" as a whole part for any number of labels (at the end: everything below). A backslash takes the next character as
// it is, so "\/" is a slash and "\*" a star within a label. One slash at either end does not count; two in a row hold
// an empty label. Case counts. Patterns are UTF-8.
#pragma once

#include "forms/forms.h"

#include <filesystem>
#include <string>
#include <vector>

struct TreeSelection {
    std::vector<std::string> select{};
    std::vector<std::string> deselect{};
};

struct TreeCounts {
    std::size_t items = 0;
    std::size_t checked = 0;
};

// Reads patterns, one a line: "+ pattern" or just the pattern selects, "- pattern" deselects. Blank lines and lines
// that begin with "#" do not count. False with a message in UTF-8 when the file cannot be read or is no UTF-8 text.
void readSelectText(std::string_view text, TreeSelection& selection);
bool readSelectFile(const std::filesystem::path& file, TreeSelection& selection, std::string& error);

// Writes the tree's states as patterns that give them back. The patterns are tried on the form, which ends in the
// states that it had. False with a message in UTF-8, and without a file, when the file cannot be written, or when no
// patterns tell the states: siblings of one label with different states, or labels with line breaks.
bool writeSelectFile(const std::filesystem::path& file, OrnLogicForm& form, OrnLogicTree& tree, std::string& error);

// Without `select` patterns every item is checked first; with some, every item starts unchecked and what matches is
// clicked unless it is checked already. Then what matches a `deselect` pattern is unchecked. Costs one walk of the tree
// a step. Gives the patterns that match no item.
std::vector<std::string> applySelection(OrnLogicForm& form, OrnLogicTree& tree, const TreeSelection& selection);

TreeCounts countItems(const OrnLogicTree& tree);

// The path of an item as a pattern that matches it, in UTF-8.
std::string itemPath(OrnLogicTree::Item item);

// Calls `visit` with every item, parents before children, siblings in order.
void visitItems(const OrnLogicTree& tree, const std::function<void(OrnLogicTree::Item)>& visit);
