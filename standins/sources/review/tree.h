// The groups of an RVM file and the blocks of its attribute text as one tree: a block belongs to the group of its
// name among the sons of the group that the block around it belongs to. Blocks without a group are elements without a
// shape, groups without a block are elements without attributes.
#pragma once

#include "sources/attributes/index.h"
#include "sources/review/types.h"
#include "sources/rvm/survey.h"

#include <string_view>
#include <vector>

namespace plant::review {

inline constexpr std::uint32_t noNode = 0xFFFFFFFF;

struct Node {
    std::uint32_t group = rvm::noGroup;
    std::uint32_t block = attributes::noBlock;
    std::uint32_t parent = noNode;
    std::uint32_t son = noNode;
    std::uint32_t brother = noNode;
    const TypeRow* type = nullptr;  // null where nothing tells it
    const PartRow* part = nullptr;  // of parts of pipes
    ObjectId id = 0;                // of the object that is told for it; 0 where it has none of its own
};

class Tree {
public:
    // Without attribute text `index` is null. Tells the report what has no partner, where that is no matter of course.
    Tree(std::string_view bytes, const rvm::Survey& survey, const attributes::Index* index);

    std::vector<Node>& nodes() { return nodes_; }
    const std::vector<Node>& nodes() const { return nodes_; }
    std::uint32_t firstTop() const { return firstTop_; }
    // The bytes of the name of the block, or else of the group.
    std::string_view rawName(const Node& node) const;
    bool hasSons(const Node& node) const { return node.son != noNode; }
    std::uint32_t ownPrimitives(const Node& node) const {
        return node.group != rvm::noGroup ? survey_->groups[node.group].primitives : 0;
    }
    // A group of a branch, without block and without a name of its own, whose shape is that of a tube or of the branch.
    bool isLoose(const Node& node) const;
    // Blocks of the text that found their group.
    std::size_t matched() const { return matched_; }

private:
    using Match = std::vector<std::uint32_t>;  // by place among brothers

    std::string_view groupName(std::uint32_t group) const;
    std::vector<std::uint32_t> brothersOf(std::uint32_t firstGroup) const;
    std::vector<std::uint32_t> blocksFrom(std::uint32_t firstBlock) const;
    Match match(const std::vector<std::uint32_t>& groups, const std::vector<std::uint32_t>& blocks) const;
    void matchByName(const std::vector<std::uint32_t>& groups, const std::vector<std::uint32_t>& blocks,
                     std::size_t from, Match& blockOfGroup) const;
    void build();
    void merge(std::uint32_t parent, std::uint32_t firstGroup, std::uint32_t firstBlock);
    void meetTops(std::uint32_t& firstGroup, std::uint32_t& firstBlock) const;
    bool shareAName(std::uint32_t firstGroup, std::uint32_t firstBlock) const;
    void add(std::uint32_t parent, std::uint32_t group, std::uint32_t block);
    void setTypes();
    const TypeRow* typeOf(const Node& node) const;
    const PartRow* partOf(const Node& node) const;
    void inferFromSons();

    std::string_view bytes_;
    const rvm::Survey* survey_;
    const attributes::Index* index_;
    std::vector<Node> nodes_;
    std::vector<std::uint32_t> lastSon_;
    std::uint32_t firstTop_ = noNode;
    std::uint32_t lastTop_ = noNode;
    std::size_t matched_ = 0;
};

}  // namespace plant::review
