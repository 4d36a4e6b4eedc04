// The branches of all pipes of a file, laid out before anything of it is told: parts in order, the tubes between them,
// and what is connected to what. Positions decide: a tube runs where one part leaves and the next arrives elsewhere.
#pragma once

#include "sources/review/facts.h"
#include "sources/review/tree.h"

#include <optional>
#include <span>
#include <tsl/robin_map.h>
#include <vector>

namespace plant::review {

using Point = HxGePoint3D;
using Vector = HxGeVector3D;

// Places nearer than this are one, in millimetres: texts of positions are rounded.
inline constexpr double samePlace = 0.5;

struct Item {
    ObjectId id = 0;
    std::uint32_t node = noNode;  // of a part; none for a tube that only the positions tell
    bool isPlaced = false;
    std::uint8_t arrive = 1;  // numbers of its points as the file has them
    std::uint8_t leave = 2;
    double boreIn = 0;  // 0 for unknown
    double boreOut = 0;
    Point from;
    Point to;
    std::string_view specification;    // of a tube, as the file has it
    std::string_view branchReference;  // to what hangs at a part
    bool isTube() const { return node == noNode; }
};

struct Branch {
    std::uint32_t node = noNode;
    std::uint32_t firstItem = 0;
    std::uint32_t itemCount = 0;
    bool isPlaced = false;  // its parts tell where they stand
};

enum class End : std::uint8_t { Arrive, Leave, Outlet };
struct Link {
    ObjectId at;
    End end;
    ObjectId to;
    Point place;  // where the connection stands
    bool hasPlace = false;
};

class Piping {
public:
    // `tree` has its ids; tubes get theirs from the builder.
    Piping(const Tree& tree, const attributes::Index* index, ModelBuilder& builder);

    // Null for a node that is no branch.
    const Branch* branchOf(std::uint32_t node) const;
    std::span<const Item> itemsOf(const Branch& branch) const {
        return std::span(items_).subspan(branch.firstItem, branch.itemCount);
    }
    // What is connected to an object beyond its branch.
    std::span<const Link> linksOf(ObjectId id) const;

private:
    void planBranch(std::uint32_t node, ModelBuilder& builder);
    void addPart(std::uint32_t node);
    void addTube(const Item& item, ModelBuilder& builder);
    Facts factsOf(std::uint32_t node) const;
    void link();
    void linkPart(const Item& part);
    void linkEnd(const Branch& branch, bool atHead, std::string_view reference);
    void linkItems(const Item& end, bool atHead, std::uint32_t target);
    const Item* nearerEnd(const Branch& branch, const Point& place, bool& isHead) const;
    std::uint32_t nodeOf(std::string_view reference);
    void collectNames();
    void addPair(const Link& one, const Link& other);

    const Tree* tree_;
    const attributes::Index* index_;
    std::vector<Branch> branches_;
    std::vector<Item> items_;
    std::vector<Link> links_;
    tsl::robin_map<std::uint32_t, std::uint32_t> branchOfNode_;
    tsl::robin_map<std::uint32_t, std::uint32_t> itemOfNode_;
    bool hasNames_ = false;
    tsl::robin_map<std::string_view, std::uint32_t> names_;
};

}  // namespace plant::review
