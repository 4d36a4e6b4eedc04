#include "sources/review/branch_teller.h"

#include <algorithm>

namespace plant::review {

namespace {

// How far the ends of a cylinder may stand off those of its tube, in millimetres: single precision a kilometre away.
constexpr double sameTube = 1;

bool isSameLine(const Point& a, const Point& b, const Item& tube) {
    const auto near = [](const Point& p, const Point& q) { return p.distanceTo(q) <= sameTube; };
    return (near(a, tube.from) && near(b, tube.to)) || (near(a, tube.to) && near(b, tube.from));
}

double middleX(const Point& a, const Point& b) {
    return (a.x + b.x) / 2;
}

bool isFlangedPart(const PartRow* row) {
    return row != nullptr && row->ends[0].starts_with("FL");
}

}  // namespace

void BranchTeller::tell(const Branch& branch, const Line& line) {
    branch_ = branch.node;
    tubes_ = 0;
    collectShapes(branch);
    assign(branch);
    const std::span<const Item> items = tools_.piping.itemsOf(branch);
    for (std::size_t i = 0; i < items.size(); ++i) {
        tellItem(items, i, line);
    }
    tellRest(branch, line);
}

// What stands in the branch's group itself, and in groups of tubes that are no items.
void BranchTeller::collectShapes(const Branch& branch) {
    loose_.clear();
    const std::vector<Node>& nodes = tools_.tree.nodes();
    const Node& node = nodes[branch.node];
    if (node.group != rvm::noGroup) {
        loose_ = tools_.shapes.loosePrimitives(node.group);
    }
    std::vector<bool> isItem;
    const std::span<const Item> items = tools_.piping.itemsOf(branch);
    std::size_t next = 0;
    for (std::uint32_t son = node.son; son != noNode; son = nodes[son].brother) {
        while (next < items.size() && items[next].isTube()) {
            ++next;
        }
        if (next < items.size() && items[next].node == son) {
            ++next;
        } else if (nodes[son].group != rvm::noGroup && tools_.tree.isLoose(nodes[son])) {
            tools_.shapes.addLoosePrimitives(nodes[son].group, loose_);
        }
    }
}

// Cylinders to the tubes that they lie on.
void BranchTeller::assign(const Branch& branch) {
    const std::span<const Item> items = tools_.piping.itemsOf(branch);
    shapeOfItem_.assign(items.size(), {});
    rest_.clear();
    std::vector<std::pair<double, std::size_t>> tubes;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const bool isTube =
            items[i].isPlaced && (items[i].isTube() || tools_.tree.nodes()[items[i].node].part->smrtln == "Pipe");
        if (isTube) {
            tubes.emplace_back(middleX(items[i].from, items[i].to), i);
        }
    }
    std::sort(tubes.begin(), tubes.end());
    for (const LoosePrimitive& one : loose_) {
        const double x = middleX(one.from, one.to);
        auto at = std::lower_bound(tubes.begin(), tubes.end(), std::pair(x - sameTube, std::size_t{0}));
        while (one.isStraight && at != tubes.end() && at->first <= x + sameTube &&
               !isSameLine(one.from, one.to, items[at->second])) {
            ++at;
        }
        const bool isFound = one.isStraight && at != tubes.end() && at->first <= x + sameTube;
        (isFound ? shapeOfItem_[at->second] : rest_).push_back(one);
    }
}

Part BranchTeller::partOf(std::span<const Item> items, std::size_t at) {
    const auto row = [&](std::size_t i) {
        return items[i].isTube() ? &tubeRow() : tools_.tree.nodes()[items[i].node].part;
    };
    Part part;
    part.item = &items[at];
    part.row = row(at);
    if (at > 0) {
        part.before = items[at - 1].id;
        part.isFlangedBefore = isFlangedPart(row(at - 1));
    }
    if (at + 1 < items.size()) {
        part.behind = items[at + 1].id;
        part.isFlangedBehind = isFlangedPart(row(at + 1));
    }
    // Along what stands before or behind, past parts without a length.
    constexpr std::size_t farthest = 8;
    const auto along = [](const Item& item) { return item.isPlaced ? (item.to - item.from).normal() : Vector(); };
    for (std::size_t i = 1; i <= std::min(farthest, at) && part.in.isZeroLength(); ++i) {
        part.in = along(items[at - i]);
    }
    for (std::size_t i = 1; i <= farthest && at + i < items.size() && part.out.isZeroLength(); ++i) {
        part.out = along(items[at + i]);
    }
    if (!items[at].isTube()) {
        const Node& node = tools_.tree.nodes()[items[at].node];
        if (node.block != attributes::noBlock) {
            part.facts = readFacts(*tools_.file.index, tools_.file.index->blocks()[node.block]);
        }
        const std::string_view name = tools_.file.nameOf(tools_.tree, node);
        part.name = readUngivenName(name).word.empty() ? withoutStroke(name) : std::string_view();
    }
    return part;
}

void BranchTeller::tellItem(std::span<const Item> items, std::size_t at, const Line& line) {
    at_ = at;
    tellPart(partOf(items, at), line);
}

// As such tubes are called in names.
std::string BranchTeller::tubeName() {
    const Node& branch = tools_.tree.nodes()[branch_];
    const std::string number = std::to_string(++tubes_);
    return "TUBE " + number + " of BRANCH " + std::string(tools_.file.nameOf(tools_.tree, branch));
}

void BranchTeller::tellPart(const Part& part, const Line& line) {
    parts_.prepare(part, line);
    ModelBuilder& builder = tools_.builder;
    const Node* node = part.item->isTube() ? nullptr : &tools_.tree.nodes()[part.item->node];
    builder.beginObject(part.item->id, parts_.className());
    builder.parent(line.id);
    builder.name(node != nullptr ? std::string(withoutStroke(tools_.file.nameOf(tools_.tree, *node))) : tubeName());
    const std::uint32_t group = node != nullptr             ? node->group
                                : shapeOfItem_[at_].empty() ? rvm::noGroup
                                                            : shapeOfItem_[at_].front().group;
    tools_.shapes.tellColor(group);
    parts_.tellMembers();
    parts_.tellAttributes();
    if (node != nullptr && node->block != attributes::noBlock) {
        tools_.attributes.tellBlock(node->block);
    }
    tools_.shapes.tellLook(group);
    parts_.tellPoints();
    tellPartShape(part, at_);
    builder.endObject();
}

void BranchTeller::tellPartShape(const Part& part, std::size_t at) {
    tools_.builder.shape();
    const std::uint32_t node = part.item->node;
    if (!part.item->isTube() && tools_.tree.nodes()[node].group != rvm::noGroup) {
        tools_.shapes.tellGroup(tools_.tree.nodes()[node].group, [](std::uint32_t) { return false; });
    }
    tools_.shapes.tellPrimitives(shapeOfItem_[at]);
    if (part.item->isTube() && shapeOfItem_[at].empty()) {
        putTube(*part.item);
    }
}

// The file has no shape of it: a cylinder of the nominal bore.
void BranchTeller::putTube(const Item& tube) {
    if (!(tube.boreIn > 0)) {
        return tools_.file.report->tell(
            "piping.tube-without-shape", SourceGrade::Note,
            {tools_.file.textName, "a tube between two parts has no cylinder and no bore; it has no shape"});
    }
    HextCylinder3D cylinder;
    cylinder.startPoint = tube.from;
    cylinder.endPoint = tube.to;
    cylinder.diameter = tube.boreIn;
    tools_.builder.primitive(cylinder);
    tools_.file.report->tell("piping.tube-by-bore", SourceGrade::Note,
                             {tools_.file.textName, "a tube between two parts has no cylinder; it is shown as one of "
                                                    "its nominal bore"});
}

// What lies on no tube goes to an object of its own, beside the branch's parts.
void BranchTeller::tellRest(const Branch& branch, const Line& line) {
    if (rest_.empty()) {
        return;
    }
    ModelBuilder& builder = tools_.builder;
    const Node& node = tools_.tree.nodes()[branch.node];
    builder.beginObject(builder.newId(), "HxDbTubeModelSpec");
    builder.parent(line.id);
    builder.name(withoutStroke(tools_.file.nameOf(tools_.tree, node)));
    tools_.shapes.tellColor(node.group);
    tools_.shapes.tellLook(node.group);
    builder.shape();
    tools_.shapes.tellPrimitives(rest_);
    builder.endObject();
}

}  // namespace plant::review
