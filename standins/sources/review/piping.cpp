#include "sources/review/piping.h"

#include "sources/attributes/values.h"

#include <algorithm>
#include <charconv>

namespace plant::review {

namespace {

using attributes::readBore;
using attributes::readPosition;

std::uint8_t pointNumber(std::string_view text, std::uint8_t otherwise) {
    std::uint8_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    constexpr std::uint8_t most = 9;
    const bool isGood = error == std::errc() && end == text.data() + text.size() && number >= 1 && number <= most;
    return isGood ? number : otherwise;
}

double boreOf(std::string_view text, double otherwise = 0) {
    const std::optional<double> bore = readBore(text);
    return bore && *bore > 0 ? *bore : otherwise;
}

Item itemOf(std::uint32_t node, ObjectId id, const Facts& facts) {
    Item item;
    item.id = id;
    item.node = node;
    const std::optional<Point> at = readPosition(facts[Key::Position]);
    const std::optional<Point> from = readPosition(facts[Key::ArrivePosition]);
    const std::optional<Point> to = readPosition(facts[Key::LeavePosition]);
    item.isPlaced = (from || to) && (from || at) && (to || at);
    if (item.isPlaced) {
        item.from = from ? *from : *at;
        item.to = to ? *to : *at;
    }
    item.arrive = pointNumber(facts[Key::Arrive], 1);
    item.leave = pointNumber(facts[Key::Leave], item.arrive == 2 ? 1 : 2);
    if (item.leave == item.arrive) {
        item.leave = item.arrive == 2 ? 1 : 2;
    }
    item.boreIn = boreOf(facts[Key::ArriveBore], boreOf(facts[Key::LeaveBore]));
    item.boreOut = boreOf(facts[Key::LeaveBore], item.boreIn);
    item.specification = facts[Key::LeaveTube];
    item.branchReference = facts[Key::BranchReference];
    return item;
}

// Where a branch stands while its parts are laid one behind the other.
struct Front {
    bool isKnown = false;
    Point at;
    double bore = 0;
    std::string_view tube;
};

std::optional<Item> tubeTo(const Front& front, const Point& to, double bore) {
    if (!front.isKnown || front.at.distanceTo(to) <= samePlace) {
        return std::nullopt;
    }
    Item tube;
    tube.isPlaced = true;
    tube.from = front.at;
    tube.to = to;
    tube.boreIn = front.bore > 0 ? front.bore : bore;
    tube.boreOut = tube.boreIn;
    tube.specification = front.tube;
    return tube;
}

}  // namespace

Piping::Piping(const Tree& tree, const attributes::Index* index, ModelBuilder& builder) : tree_(&tree), index_(index) {
    for (std::uint32_t i = 0; i < tree.nodes().size(); ++i) {
        const Node& node = tree.nodes()[i];
        if (node.type != nullptr && node.type->role == Role::Branch) {
            planBranch(i, builder);
        }
    }
    link();
}

Facts Piping::factsOf(std::uint32_t node) const {
    const std::uint32_t block = tree_->nodes()[node].block;
    return block != attributes::noBlock ? readFacts(*index_, index_->blocks()[block]) : Facts();
}

void Piping::addTube(const Item& item, ModelBuilder& builder) {
    items_.push_back(item);
    items_.back().id = builder.newId();
}

// A group of a tube without attributes is no part of its own where the positions tell of tubes.
void Piping::planBranch(std::uint32_t number, ModelBuilder& builder) {
    const Facts facts = factsOf(number);
    Branch branch{number, static_cast<std::uint32_t>(items_.size())};
    std::vector<Item> parts;
    for (std::uint32_t son = tree_->nodes()[number].son; son != noNode; son = tree_->nodes()[son].brother) {
        const Node& node = tree_->nodes()[son];
        if (node.part != nullptr) {
            parts.push_back(itemOf(son, node.id, factsOf(son)));
            branch.isPlaced = branch.isPlaced || parts.back().isPlaced;
        }
    }
    const std::optional<Point> head = readPosition(facts[Key::HeadPosition]);
    const std::optional<Point> tail = readPosition(facts[Key::TailPosition]);
    branch.isPlaced = branch.isPlaced || (parts.empty() && head && tail);
    Front front{head.has_value(), head.value_or(Point()), boreOf(facts[Key::HeadBore]), facts[Key::HeadTube]};
    for (const Item& part : parts) {
        if (const auto tube = part.isPlaced ? tubeTo(front, part.from, part.boreIn) : std::nullopt) {
            addTube(*tube, builder);
        }
        const bool isTubeShape = branch.isPlaced && !part.isPlaced &&
                                 tree_->nodes()[part.node].block == attributes::noBlock &&
                                 tree_->nodes()[part.node].part->className == tubeRow().className;
        if (isTubeShape) {
            continue;
        }
        itemOfNode_[part.node] = static_cast<std::uint32_t>(items_.size());
        items_.push_back(part);
        if (part.isPlaced) {
            const std::string_view behind = saysNothing(part.specification) ? front.tube : part.specification;
            front = {true, part.to, part.boreOut > 0 ? part.boreOut : front.bore, behind};
        }
    }
    const auto last = tail ? tubeTo(front, *tail, boreOf(facts[Key::TailBore])) : std::nullopt;
    if (last && branch.isPlaced) {
        addTube(*last, builder);
    }
    branch.itemCount = static_cast<std::uint32_t>(items_.size()) - branch.firstItem;
    branchOfNode_[number] = static_cast<std::uint32_t>(branches_.size());
    branches_.push_back(branch);
}

const Branch* Piping::branchOf(std::uint32_t node) const {
    const auto at = branchOfNode_.find(node);
    return at != branchOfNode_.end() ? &branches_[at->second] : nullptr;
}

std::span<const Link> Piping::linksOf(ObjectId id) const {
    const auto [first, last] = std::equal_range(links_.begin(), links_.end(), Link{id, End::Arrive, 0, {}, false},
                                                [](const Link& a, const Link& b) { return a.at < b.at; });
    return {first, last};
}

void Piping::collectNames() {
    hasNames_ = true;
    for (std::uint32_t i = 0; i < tree_->nodes().size(); ++i) {
        const Node& node = tree_->nodes()[i];
        if (node.block != attributes::noBlock) {
            const attributes::Block& block = index_->blocks()[node.block];
            if (block.refSize > 0) {
                names_.try_emplace(index_->refOf(block), i);
            }
            names_.try_emplace(index_->nameOf(block), i);
        }
    }
}

std::uint32_t Piping::nodeOf(std::string_view reference) {
    if (saysNothing(reference)) {
        return noNode;
    }
    if (!hasNames_) {
        collectNames();
    }
    const auto at = names_.find(reference);
    return at != names_.end() ? at->second : noNode;
}

void Piping::addPair(const Link& one, const Link& other) {
    if (one.at != one.to && one.at != 0 && one.to != 0) {
        links_.push_back(one);
        links_.push_back(other);
    }
}

const Item* Piping::nearerEnd(const Branch& branch, const Point& place, bool& isHead) const {
    if (branch.itemCount == 0) {
        return nullptr;
    }
    const Item& head = items_[branch.firstItem];
    const Item& tail = items_[branch.firstItem + branch.itemCount - 1];
    isHead = !tail.isPlaced || (head.isPlaced && head.from.distanceTo(place) <= tail.to.distanceTo(place));
    return isHead ? &head : &tail;
}

// A part and the branch that hangs at it.
void Piping::linkPart(const Item& part) {
    const std::uint32_t target = nodeOf(part.branchReference);
    const Branch* branch = target != noNode ? branchOf(target) : nullptr;
    bool isHead = true;
    const Item* end = branch != nullptr ? nearerEnd(*branch, part.from, isHead) : nullptr;
    if (end != nullptr) {
        const Point place = isHead ? end->from : end->to;
        addPair({part.id, End::Outlet, end->id, place, end->isPlaced},
                {end->id, isHead ? End::Arrive : End::Leave, part.id, place, end->isPlaced});
    }
}

void Piping::linkItems(const Item& end, bool atHead, std::uint32_t target) {
    const Point place = atHead ? end.from : end.to;
    const Link here{end.id, atHead ? End::Arrive : End::Leave, tree_->nodes()[target].id, place, end.isPlaced};
    if (const Branch* branch = branchOf(target)) {
        bool isHead = true;
        if (const Item* other = nearerEnd(*branch, place, isHead)) {
            addPair({end.id, here.end, other->id, place, end.isPlaced},
                    {other->id, isHead ? End::Arrive : End::Leave, end.id, place, end.isPlaced});
        }
        return;
    }
    const Node& node = tree_->nodes()[target];
    const bool isConnectable =
        node.part != nullptr || (node.type != nullptr && node.type->className == "HxDbNozzleModel");
    if (!isConnectable) {
        return;
    }
    // The next branch may go on straight behind a part that ends one.
    End there = End::Outlet;
    if (const auto item = itemOfNode_.find(target); item != itemOfNode_.end() && items_[item->second].isPlaced) {
        const Item& part = items_[item->second];
        there = part.to.distanceTo(place) <= samePlace     ? End::Leave
                : part.from.distanceTo(place) <= samePlace ? End::Arrive
                                                           : End::Outlet;
    }
    addPair(here, {node.id, there, end.id, place, end.isPlaced});
}

void Piping::linkEnd(const Branch& branch, bool atHead, std::string_view reference) {
    const std::uint32_t target = nodeOf(reference);
    if (target == noNode || branch.itemCount == 0) {
        return;
    }
    linkItems(items_[branch.firstItem + (atHead ? 0 : branch.itemCount - 1)], atHead, target);
}

void Piping::link() {
    for (const Branch& branch : branches_) {
        const Facts facts = factsOf(branch.node);
        linkEnd(branch, true, facts[Key::HeadReference]);
        linkEnd(branch, false, facts[Key::TailReference]);
    }
    for (const Item& item : items_) {
        if (!item.isTube()) {
            linkPart(item);
        }
    }
    const auto key = [](const Link& link) { return std::pair(link.at, link.to); };
    std::stable_sort(links_.begin(), links_.end(), [&](const Link& a, const Link& b) { return key(a) < key(b); });
    links_.erase(
        std::unique(links_.begin(), links_.end(), [&](const Link& a, const Link& b) { return key(a) == key(b); }),
        links_.end());
}

}  // namespace plant::review
