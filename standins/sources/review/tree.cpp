#include "sources/review/tree.h"

#include "sources/text_decoder.h"

#include <tsl/robin_map.h>

namespace plant::review {

namespace {

constexpr std::string_view headerBlock = "Header Information";

}  // namespace

Tree::Tree(std::string_view bytes, const rvm::Survey& survey, const attributes::Index* index)
    : bytes_(bytes), survey_(&survey), index_(index) {
    build();
    lastSon_ = {};
    setTypes();
    inferFromSons();
}

std::string_view Tree::groupName(std::uint32_t group) const {
    return trimmed(rvm::groupFacts(bytes_, survey_->groups[group]).name);
}

std::string_view Tree::rawName(const Node& node) const {
    return node.block != attributes::noBlock ? index_->nameOf(index_->blocks()[node.block]) : groupName(node.group);
}

bool Tree::isLoose(const Node& node) const {
    return node.block == attributes::noBlock && !readUngivenName(rawName(node)).word.empty();
}

std::vector<std::uint32_t> Tree::brothersOf(std::uint32_t group) const {
    std::vector<std::uint32_t> brothers;
    for (; group != rvm::noGroup; group = survey_->groups[group].brother) {
        brothers.push_back(group);
    }
    return brothers;
}

std::vector<std::uint32_t> Tree::blocksFrom(std::uint32_t block) const {
    std::vector<std::uint32_t> blocks;
    for (; block != attributes::noBlock; block = index_->blocks()[block].brother) {
        const attributes::Block& one = index_->blocks()[block];
        if (one.parent != attributes::noBlock || index_->nameOf(one) != headerBlock) {
            blocks.push_back(block);
        }
    }
    return blocks;
}

// The two trees have nearly always the same order; the rest goes by name, of equal ones in order.
Tree::Match Tree::match(const std::vector<std::uint32_t>& groups, const std::vector<std::uint32_t>& blocks) const {
    Match blockOfGroup(groups.size(), attributes::noBlock);
    std::size_t at = 0;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (at < groups.size() && groupName(groups[at]) == index_->nameOf(index_->blocks()[blocks[i]])) {
            blockOfGroup[at++] = blocks[i];
        } else {
            matchByName(groups, blocks, i, blockOfGroup);
            break;
        }
    }
    return blockOfGroup;
}

void Tree::matchByName(const std::vector<std::uint32_t>& groups, const std::vector<std::uint32_t>& blocks,
                       std::size_t from, Match& blockOfGroup) const {
    constexpr std::size_t none = static_cast<std::size_t>(-1);
    tsl::robin_map<std::string_view, std::size_t> first;
    std::vector<std::size_t> following(groups.size(), none);
    for (std::size_t i = groups.size(); i-- > from;) {
        std::size_t& head = first.try_emplace(groupName(groups[i]), none).first.value();
        following[i] = head;
        head = i;
    }
    for (std::size_t i = from; i < blocks.size(); ++i) {
        const auto found = first.find(index_->nameOf(index_->blocks()[blocks[i]]));
        if (found != first.end() && found->second != none) {
            const std::size_t group = found->second;
            blockOfGroup[group] = blocks[i];
            found.value() = following[group];
        }
    }
}

void Tree::add(std::uint32_t parent, std::uint32_t group, std::uint32_t block) {
    const auto number = static_cast<std::uint32_t>(nodes_.size());
    std::uint32_t& last = parent == noNode ? lastTop_ : lastSon_[parent];
    if (last != noNode) {
        nodes_[last].brother = number;
    } else {
        (parent == noNode ? firstTop_ : nodes_[parent].son) = number;
    }
    last = number;
    Node node;
    node.group = group;
    node.block = block;
    node.parent = parent;
    nodes_.push_back(node);
    lastSon_.push_back(noNode);
    matched_ += group != rvm::noGroup && block != attributes::noBlock ? 1 : 0;
}

// In the order of the blocks; a group without one stands behind the group before it.
void Tree::merge(std::uint32_t parent, std::uint32_t firstGroup, std::uint32_t firstBlock) {
    const std::vector<std::uint32_t> groups = brothersOf(firstGroup);
    const std::vector<std::uint32_t> blocks = blocksFrom(firstBlock);
    const Match blockOfGroup = match(groups, blocks);
    tsl::robin_map<std::uint32_t, std::size_t> groupOfBlock;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (blockOfGroup[i] != attributes::noBlock) {
            groupOfBlock.emplace(blockOfGroup[i], i);
        }
    }
    std::size_t at = 0;
    const auto addLoose = [&](std::size_t to) {
        for (; at < to; ++at) {
            if (blockOfGroup[at] == attributes::noBlock) {
                add(parent, groups[at], attributes::noBlock);
            }
        }
    };
    for (const std::uint32_t block : blocks) {
        const auto partner = groupOfBlock.find(block);
        if (partner != groupOfBlock.end()) {
            addLoose(partner->second);
        }
        add(parent, partner != groupOfBlock.end() ? groups[partner->second] : rvm::noGroup, block);
    }
    addLoose(groups.size());
}

bool Tree::shareAName(std::uint32_t firstGroup, std::uint32_t firstBlock) const {
    const std::vector<std::uint32_t> groups = brothersOf(firstGroup);
    for (const std::uint32_t block : match(groups, blocksFrom(firstBlock))) {
        if (block != attributes::noBlock) {
            return true;
        }
    }
    return false;
}

// One of the two may have a root that the other lacks.
void Tree::meetTops(std::uint32_t& firstGroup, std::uint32_t& firstBlock) const {
    const std::vector<std::uint32_t> blocks = blocksFrom(firstBlock);
    if (firstGroup == rvm::noGroup || blocks.empty() || shareAName(firstGroup, firstBlock)) {
        return;
    }
    const std::uint32_t sons = index_->blocks()[blocks.front()].son;
    if (blocks.size() == 1 && shareAName(firstGroup, sons)) {
        firstBlock = sons;
    }
}

void Tree::build() {
    std::uint32_t firstGroup = survey_->firstTop;
    std::uint32_t firstBlock = index_ != nullptr ? index_->firstTop() : attributes::noBlock;
    meetTops(firstGroup, firstBlock);
    merge(noNode, firstGroup, firstBlock);
    // A root that only the groups have: its sons take the blocks.
    const bool rootOnly = matched_ == 0 && firstBlock != attributes::noBlock && firstGroup != rvm::noGroup &&
                          survey_->groups[firstGroup].brother == rvm::noGroup &&
                          shareAName(survey_->groups[firstGroup].son, firstBlock);
    if (rootOnly) {
        nodes_.clear();
        lastSon_.clear();
        firstTop_ = lastTop_ = noNode;
        add(noNode, firstGroup, attributes::noBlock);
        merge(0, survey_->groups[firstGroup].son, firstBlock);
    }
    for (std::uint32_t i = rootOnly ? 1 : 0; i < nodes_.size(); ++i) {
        const Node node = nodes_[i];
        merge(i, node.group != rvm::noGroup ? survey_->groups[node.group].son : rvm::noGroup,
              node.block != attributes::noBlock ? index_->blocks()[node.block].son : attributes::noBlock);
    }
}

const TypeRow* Tree::typeOf(const Node& node) const {
    if (node.block != attributes::noBlock) {
        const attributes::Block& block = index_->blocks()[node.block];
        const TypeRow* row = typeRow(index_->wordOf(block.classType));
        row = row != nullptr ? row : typeRow(index_->wordOf(block.type));
        if (row != nullptr || block.type != 0) {
            return row;
        }
    }
    return typeRowOfWord(readUngivenName(rawName(node)).word);
}

const PartRow* Tree::partOf(const Node& node) const {
    if (node.block != attributes::noBlock && index_->blocks()[node.block].type != 0) {
        return partRow(index_->wordOf(index_->blocks()[node.block].type));
    }
    return partRow(readUngivenName(rawName(node)).word);
}

void Tree::setTypes() {
    for (Node& node : nodes_) {
        node.type = typeOf(node);
        node.part = partOf(node);
    }
}

// "FLANGE 2 of BRANCH /X/B1" says what its parent is, and a branch stands in a pipe, a pipe in a zone. Sons come
// behind their parents, so that one pass from the end carries it up.
void Tree::inferFromSons() {
    for (std::size_t i = nodes_.size(); i-- > 0;) {
        const Node& node = nodes_[i];
        if (node.parent == noNode || nodes_[node.parent].type != nullptr) {
            continue;
        }
        const UngivenName name = readUngivenName(rawName(node));
        const TypeRow* above = name.ownerWord.empty() ? nullptr : typeRowOfWord(name.ownerWord);
        if (above == nullptr && node.type != nullptr && !node.type->above.empty()) {
            above = typeRow(node.type->above);
        }
        if (above == nullptr && node.part != nullptr) {
            above = typeRow("BRAN");
        }
        nodes_[node.parent].type = above;
    }
}

}  // namespace plant::review
