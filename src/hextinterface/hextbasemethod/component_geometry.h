// What the numbered connection points of a component mean, one class for each geometric family (attribute "smrtln"):
// origin, arrival and departure in the direction of flow, directions, axes and port numbers for the design text
// (makeView), and points and local frame for the catalogue (makeComp). All in world coordinates and millimetres.
//
// A point that the entity does not have counts as the origin of the world. Objects are made for one entity and keep the
// ports that makeView found; those of makeComp have none.
#pragma once

#include "hextinterface/hextbasemethod/cata_point.h"
#include "platform/id_pages.h"
#include "platform/objects.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// The items of a branch, for a quick answer to whether an object stands among them.
class BranchItems {
public:
    explicit BranchItems(const std::vector<HxDbSmrtlnEntity*>& items) : sorted_(items.begin(), items.end()) {
        std::sort(sorted_.begin(), sorted_.end(), std::less<>());
    }
    bool contains(const HxDbObject* object) const {
        return std::binary_search(sorted_.begin(), sorted_.end(), object, std::less<>());
    }

private:
    std::vector<const HxDbObject*> sorted_;  // by address, which shows nowhere
};

// Port number of a connection that the catalogue element does not have.
inline constexpr std::uint16_t noPort = 65535;

namespace component {
// The vector from one connection point to another, by their numbers.
HxGeVector3D between(const HxDbSmrtlnEntity* entity, int from, int to);
}  // namespace component

// Two axes of a component, not normalised; zero where it tells none.
struct Axes {
    HxGeVector3D x;
    HxGeVector3D y;
};
// The frame in which a component's catalogue entry stands, normalised; zero where its family has none.
struct LocalFrame {
    HxGeVector3D x;
    HxGeVector3D y;
    HxGeVector3D z;
};
using DirectionPair = std::array<HxGeVector3D, 2>;

class _PCompBase {
public:
    using Entity = const HxDbSmrtlnEntity*;

    _PCompBase() = default;
    virtual ~_PCompBase() = default;
    _PCompBase(const _PCompBase&) = delete;
    _PCompBase& operator=(const _PCompBase&) = delete;

    virtual Axes getAxes(Entity entity) const;
    virtual HxGePoint3D getOrigin(Entity entity) const;
    virtual HxGePoint3D getArrivePoint(Entity entity) const;
    virtual HxGePoint3D getLeavePoint(Entity entity) const;
    virtual HxGeVector3D getDirection(Entity entity, bool atArrive) const;
    // Both directions, normalised, the one asked for first.
    virtual DirectionPair getDirections(Entity entity, bool atArrive) const;
    // The local frame; sets `paxi` and `dist` of the points. ExportException "无效方向" for a zero axis, with the
    // points on the command line.
    virtual LocalFrame buildFrame(CataPoints& points) const;
    // The same for an olet or boss of family "Normal"; an axis may be zero.
    virtual LocalFrame buildFrameOnBranch(CataPoints& points) const;
    // The coordinates of the catalogue points, in the order of their records.
    virtual std::vector<HxGePoint3D> getPoints() const = 0;
    // Finds the ports by the flow and by the neighbours among `items`, which may be null.
    virtual void setArriveLeave(Entity entity, const BranchItems* items);
    // Point number of the catalogue element for a connection number, or noPort.
    virtual std::uint16_t mapPointNo(std::uint16_t number) const = 0;

    // Cleared when an orientation text finds an axis off the world axes.
    bool isAxis = true;
    Entity entity = nullptr;
    std::uint16_t arrivePoint = 0;
    std::uint16_t leavePoint = 0;
};

// By family word, letter case aside. ExportException "智能线类型元件%s不能转换为HEXT元件" for an unknown word.
std::unique_ptr<_PCompBase> makeComp(std::string_view typeWord);

// An entity with the object of its family.
struct CompView {
    std::unique_ptr<_PCompBase> comp;
    const HxDbSmrtlnEntity* entity = nullptr;
    Axes axes;  // the last ones read by axesOf
};
// The family word is "Balloon" for a balloon, otherwise the attribute "smrtln". Finds the ports; `items` may be null.
CompView makeView(const HxDbSmrtlnEntity* entity, const BranchItems* items);

// "X is ... and Y is ..." from the view's own axes, which it keeps. Empty when x is shorter than 1e-5. ExportException
// "无效方向" for an axis shorter than 1e-6 or beyond all numbers, with the entity's id on the command line.
std::string axesOf(CompView& view);
// The same from two vectors; `comp` and `entity` may be null.
std::string axesTextChecked(_PCompBase* comp, const HxDbSmrtlnEntity* entity, HxGeVector3D x, HxGeVector3D y);
// With Y replaced by `reference`, unless that runs along X; no test for short axes.
std::string axesWithReference(const CompView& view, const HxGeVector3D& reference);
// The axes of a tee-like object without axes of its own, towards its neighbours at 2 and 3. A neighbour that is missing
// or not among `componentIds` is stood in for by the connection point. ExportException "无效方向" for axes beyond all
// numbers.
Axes getConnectionAxes(const HxDbSmrtlnEntity* entity, const IdMarks& componentIds);

enum class WeldRule { Component, BranchEnd };
// A weld has no extent; its axes come from what it touches downstream, else upstream. Zero when that tells none, as an
// eccentric reducer at the end of a branch.
Axes weldAxes(const HxDbSmrtlnEntity* weld, WeldRule rule = WeldRule::Component);
