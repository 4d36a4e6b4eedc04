// What the numbered connection points of a component mean, one class for each geometric family (attribute "smrtln"):
// origin, arrival and departure in the direction of flow, directions, axes and port numbers for the design text, and
// points and local frame for the catalogue.
//
// A point that the entity does not have counts as the origin of the world. Objects are made for one entity and keep the
// ports that initComp found.
#pragma once

#include "hextinterface/hextbasemethod/cata_point.h"
#include "platform/id_pages.h"
#include "platform/objects.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// The items of a branch with a quick answer to whether an object stands among them. The list must outlive this.
class BranchItems {
public:
    explicit BranchItems(const std::vector<HxDbSmrtlnEntity*>& items)
        : items_(&items), sorted_(items.begin(), items.end()) {
        std::sort(sorted_.begin(), sorted_.end(), std::less<>());
    }
    const std::vector<HxDbSmrtlnEntity*>& list() const { return *items_; }
    bool contains(const HxDbObject* object) const {
        return std::binary_search(sorted_.begin(), sorted_.end(), object, std::less<>());
    }

private:
    const std::vector<HxDbSmrtlnEntity*>* items_;
    std::vector<const HxDbObject*> sorted_;  // by address, which shows nowhere
};

// Port number of a connection that the catalogue element does not have.
inline constexpr std::uint16_t noPort = 65535;

class _PCompBase {
public:
    using Entity = const HxDbSmrtlnEntity*;

    _PCompBase() = default;
    virtual ~_PCompBase() = default;
    _PCompBase(const _PCompBase&) = delete;
    _PCompBase& operator=(const _PCompBase&) = delete;

    // The two axes, not normalised; unchanged where the family has none.
    virtual void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const;
    virtual HxGePoint3D getOrigin(Entity entity) const;
    virtual HxGePoint3D getArrivePoint(Entity entity) const;
    virtual HxGePoint3D getLeavePoint(Entity entity) const;
    virtual HxGeVector3D getDirection(Entity entity, bool atArrive) const;
    // Appends two normalised directions, the one asked for first.
    virtual void getDirections(std::vector<HxGeVector3D>& out, Entity entity, bool atArrive) const;
    // Sets `paxi` and `dist` of the points and fills the local frame. ExportException "无效方向" for a zero axis.
    virtual void buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const;
    // The same for an olet or boss of family "Normal".
    virtual void buildFrameOnBranch(CataPoints&, HxGeVector3D&, HxGeVector3D&, HxGeVector3D&) const {}
    // Appends the coordinates of the catalogue points.
    virtual void getPoints(std::vector<HxGePoint3D>& out) const;
    virtual void setArriveLeave(Entity entity, const BranchItems* items);
    // Point number of the catalogue element, or noPort.
    virtual std::uint16_t mapPointNo(std::uint16_t number) const;

    // Cleared when an orientation text finds an axis off the world axes.
    bool isAxis = true;
    Entity entity = nullptr;
    std::uint16_t arrivePoint = 0;
    std::uint16_t leavePoint = 0;
    const BranchItems* items = nullptr;  // may be null for catalogue use
};

// By family word, letter case aside. ExportException "智能线类型元件%s不能转换为HEXT元件" for an unknown word.
std::unique_ptr<_PCompBase> makeComp(std::string_view typeWord);
// Sets entity and items and finds the ports.
void initComp(_PCompBase& comp, const HxDbSmrtlnEntity* entity, const BranchItems* items);

struct CompView {
    std::unique_ptr<_PCompBase> comp;
    const HxDbSmrtlnEntity* entity = nullptr;
    HxGeVector3D x;  // the last axes read by axesOf
    HxGeVector3D y;
    const HxDbSmrtlnEntity* boreEntity = nullptr;  // of a branch end: the item whose size is read
};
// The family word is "Balloon" for a balloon, otherwise the attribute "smrtln".
CompView makeView(const HxDbSmrtlnEntity* entity, const BranchItems* items);

// "X is ... and Y is ..." from the view's own axes. Empty when x is shorter than 1e-5. ExportException "无效方向" for
// an axis shorter than 1e-6 or beyond all numbers, with the entity's id on the command line.
std::string axesOf(CompView& view);
// The same from two vectors; `comp` and `entity` may be null.
std::string axesTextChecked(_PCompBase* comp, const HxDbSmrtlnEntity* entity, HxGeVector3D x, HxGeVector3D y);
// With one axis replaced by `reference`; no test for short axes.
std::string axesWithReference(const CompView& view, const HxGeVector3D& reference, bool useAsX);
// The axes of a tee-like object without axes of its own, from its neighbours at 2 and 3. A neighbour that is missing or
// not among `componentIds` is stood in for by the connection point.
std::string getConnectionAxes(const HxDbSmrtlnEntity* entity, const IdMarks& componentIds, HxGeVector3D& a,
                              HxGeVector3D& b);

enum class WeldRule { Component, BranchEnd };
// A weld has no extent; its axes come from what it touches. Nothing is written when that tells none.
void weldAxes(const HxDbSmrtlnEntity* weld, HxGeVector3D& x, HxGeVector3D& y, WeldRule rule = WeldRule::Component);
