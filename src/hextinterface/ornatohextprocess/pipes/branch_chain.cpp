// From the items of a branch to the entries that are written, with bends inserted where the chain does not run
// straight.
#include "hextinterface/ornatohextprocess/pipes/pipe_writer.h"

#include "hextinterface/hextbasemethod/macro_text.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "platform/attribute_cache.h"
#include "platform/model_tests.h"

#include <algorithm>

namespace {

constexpr double straightTolerance = 1e-8;
constexpr TlGeTol sameDirection(1e-11, 1e-11);
constexpr double nearHead = 5.0;
constexpr const char* fixBendReference = "BEND_FIX/BEND_FIX-SP";

using End = _HextBranchDesc::End;

BranchEntry oneComponent(const BranchSource& source, std::size_t index) {
    BranchEntry entry;
    entry.first = makeComponent(source, index);
    return entry;
}

// Pass 1: from items to entries; two welds in a row make one.
BranchEntries entriesOf(const BranchSource& source, const ObjectSet& skipSet, bool withWelds) {
    BranchEntries entries;
    const ComponentList& items = source.items;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const bool passedOver = !isExportable(items[i]) || skipSet.count(items[i]) != 0;
        if (passedOver || (!withWelds && isWeld(items[i]))) {
            continue;
        }
        entries.push_back(oneComponent(source, i));
        const std::size_t following = withWelds ? nextExportable(items, i + 1) : items.size();
        if (following < items.size() && isWeld(items[i]) && isWeld(items[following])) {
            entries.back().second = makeComponent(source, following);
            entries.back().kind = BranchEntry::WeldPair;
            i = following;
        }
    }
    return entries;
}

bool alongWorldAxis(const HxGeVector3D& v) {
    return v.isParallelTo(HxGeVector3D::kXAxis, sameDirection) || v.isParallelTo(HxGeVector3D::kYAxis, sameDirection) ||
           v.isParallelTo(HxGeVector3D::kZAxis, sameDirection);
}

// The first that is set, else the last.
std::string_view firstSet(std::initializer_list<std::string_view> choices) {
    const auto set = std::find_if(choices.begin(), choices.end(), [](std::string_view text) { return !isUnset(text); });
    return set != choices.end() ? *set : *(choices.end() - 1);
}

// Pass 2: walks the entries along the branch.
class Chain {
public:
    Chain(_HextBranchDesc& branch, BranchEntries entries)
        : branch_(branch), entries_(std::move(entries)), direction_(branch.headDirVector), point_(branch.headPoint) {
        for (const BranchEntry& entry : entries_) {
            components_.push_back(entry.first.get());
        }
    }

    BranchEntries walk() {
        for (std::size_t k = 0; k < components_.size(); ++k) {
            step(k);
        }
        if (!components_.empty()) {
            closeTail();
        }
        return std::move(written_);
    }

private:
    bool isStraight(const _HextComponentDesc& c) const {
        const HxGeVector3D d = (c.arriveAt() - point_).normal();
        return direction_.crossProduct(d).length() < straightTolerance && alongWorldAxis(direction_) &&
               direction_.isParallelTo(c.directions.front(), sameDirection);
    }

    void step(std::size_t k) {
        _HextComponentDesc& c = *components_[k];
        if (isStraight(c)) {
            inheritTube(c);
        } else if (k > 0) {
            bridge(*components_[k - 1], c);
        } else {
            turnHead(c);
        }
        written_.push_back(std::move(entries_[k]));
        direction_ = c.directions.back();
        point_ = c.leaveAt();
    }

    void inheritTube(_HextComponentDesc& c) const {
        if (isUnset(c.lstube)) {
            c.lstube = firstSet({branch_.lstube, components_.front()->lstube, components_.back()->lstube});
        }
    }

    void bridge(const _HextComponentDesc& before, const _HextComponentDesc& c) {
        const HxGePoint3D from = before.leaveAt();
        const HxGePoint3D to = c.arriveAt();
        const HxGeVector3D v = (to - from).normal();
        if (v.length() > 0) {
            const std::string_view tube = firstSet({branch_.lstube, before.lstube, c.lstube});
            insertBend(from, v, tube, c);
            insertBend(to, v, tube, c);
        }
    }

    void turnHead(const _HextComponentDesc& c) {
        const HxGePoint3D to = c.arriveAt();
        const HxGeVector3D v = (to - point_).normal();
        if (v.length() == 0) {
            return;
        }
        const std::string_view tube = firstSet({branch_.lstube, components_.front()->lstube});
        if (point_.distanceTo(to) > nearHead) {
            insertBend(point_, v, tube, c);
        }
        insertBend(to, v, tube, c);
        branch_.setDirection(End::Head, v);
    }

    void closeTail() {
        const _HextComponentDesc& last = *components_.back();
        const HxGeVector3D e = (branch_.tailPoint - last.leaveAt()).normal();
        const HxGeVector3D d = (branch_.tailPoint - point_).normal();
        if (d.length() > straightTolerance && direction_.crossProduct(e).length() > straightTolerance) {
            insertBend(point_, d, firstSet({branch_.lstube, last.lstube}), last);
            branch_.setDirection(End::Tail, -d);
        }
    }

    void insertBend(const HxGePoint3D& at, const HxGeVector3D& along, std::string_view tube,
                    const _HextComponentDesc& cause) {
        const Axes axes = perpAxes(along);
        BranchEntry entry;
        entry.kind = BranchEntry::FixBend;
        entry.first = std::make_unique<_HextComponentDesc>("BEND");
        _HextComponentDesc& bend = *entry.first;
        bend.position = positionText(at);
        bend.setAxes(axes.x, axes.y);
        bend.spref = fixBendReference;
        bend.arrive = 2;
        bend.leave = 1;
        bend.lstube = tube;
        bend.size = getBomValue(cause.entity, "size1");
        written_.push_back(std::move(entry));
    }

    _HextBranchDesc& branch_;
    BranchEntries entries_;
    std::vector<_HextComponentDesc*> components_;  // the first components of the entries, wherever these are by now
    BranchEntries written_;
    HxGeVector3D direction_;
    HxGePoint3D point_;
};

}  // namespace

Axes perpAxes(const HxGeVector3D& direction) {
    const HxGeVector3D v = direction.normal();
    if (v.isEqualTo(HxGeVector3D::kZAxis)) {
        return {{1, 0, 0}, {0, 1, 0}};
    }
    if (v.isEqualTo(-HxGeVector3D::kZAxis)) {
        return {{0, -1, 0}, {-1, 0, 0}};
    }
    const HxGeVector3D x = HxGeVector3D::kZAxis.crossProduct(v).normal();
    return {x, v.crossProduct(x).normal()};
}

BranchEntries prepareEntries(_HextBranchDesc& branch, const BranchSource& source, const ObjectSet& skipSet,
                             bool withWelds) {
    return Chain(branch, entriesOf(source, skipSet, withWelds)).walk();
}
