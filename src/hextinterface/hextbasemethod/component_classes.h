// The families of components. Private to the component geometry, which tells what each operation gives.
//
// Most of what a family is stands in its numbers: the connection points that it puts into the catalogue, and the port
// of the catalogue element that each connection has. The frames are in component_frames.cpp, all else in
// component_classes.cpp.
#pragma once

#include "hextinterface/hextbasemethod/component_geometry.h"

#include <cstdint>
#include <span>

// A family whose catalogue points and ports come from tables, which must outlive it.
class NumberedComp : public _PCompBase {
public:
    std::vector<HxGePoint3D> getPoints() const override;
    std::uint16_t mapPointNo(std::uint16_t number) const override;

protected:
    // `ports` by connection number: what lies beyond the table has no port, and without table each number is its own.
    NumberedComp(std::span<const int> points, std::span<const std::uint16_t> ports) : points_(points), ports_(ports) {}

private:
    std::span<const int> points_;
    std::span<const std::uint16_t> ports_;
};

// Runs straight from port to port: both directions are the one along it.
class StraightComp : public NumberedComp {
public:
    HxGeVector3D getDirection(Entity entity, bool atArrive) const override;
    DirectionPair getDirections(Entity entity, bool atArrive) const override;

protected:
    using NumberedComp::NumberedComp;
};

class _PCompPipe final : public StraightComp {
public:
    _PCompPipe();
    Axes getAxes(Entity entity) const override;
    HxGePoint3D getOrigin(Entity entity) const override;
    LocalFrame buildFrame(CataPoints& points) const override;
};

class _PCompNormal final : public StraightComp {
public:
    _PCompNormal();
    Axes getAxes(Entity entity) const override;
    LocalFrame buildFrame(CataPoints& points) const override;
    LocalFrame buildFrameOnBranch(CataPoints& points) const override;
    // ExportException "NormalKeyPt错误" when two points fall together.
    std::vector<HxGePoint3D> getPoints() const override;
};

class _PCompBalloon final : public StraightComp {
public:
    _PCompBalloon();
    Axes getAxes(Entity entity) const override;
    HxGePoint3D getOrigin(Entity entity) const override;
    HxGePoint3D getArrivePoint(Entity entity) const override;
    HxGePoint3D getLeavePoint(Entity entity) const override;
    LocalFrame buildFrame(CataPoints& points) const override;
    void setArriveLeave(Entity entity, const BranchItems* items) override;
};

class _PCompTee : public NumberedComp {
public:
    _PCompTee();
    Axes getAxes(Entity entity) const override;
    LocalFrame buildFrame(CataPoints& points) const override;

protected:
    using NumberedComp::NumberedComp;
};

// A tee with further arms.
class _PCompCross : public _PCompTee {
public:
    _PCompCross();
    LocalFrame buildFrame(CataPoints& points) const override;

protected:
    using _PCompTee::_PCompTee;
};

class _PCompCross3 final : public _PCompCross {
public:
    _PCompCross3();
};

class _PCompLatera final : public NumberedComp {
public:
    _PCompLatera();
    Axes getAxes(Entity entity) const override;
    LocalFrame buildFrame(CataPoints& points) const override;
};

// Components whose two ends each have a second point: 1 pairs with 3, and 2 with 4.
class PairedComp : public NumberedComp {
public:
    PairedComp();
    HxGePoint3D getOrigin(Entity entity) const override;
    HxGeVector3D getDirection(Entity entity, bool atArrive) const override;
    DirectionPair getDirections(Entity entity, bool atArrive) const override;
};

// Eccentric reducers.
class _PCompEcc final : public PairedComp {
public:
    Axes getAxes(Entity entity) const override;
    LocalFrame buildFrame(CataPoints& points) const override;
};

// A hose has four records and a frame of its own would want five: none is built.
class _PCompHose final : public PairedComp {
public:
    Axes getAxes(Entity entity) const override;
};

class _PCompY final : public NumberedComp {
public:
    _PCompY();
    Axes getAxes(Entity entity) const override;
    LocalFrame buildFrame(CataPoints& points) const override;
    void setArriveLeave(Entity entity, const BranchItems* items) override;
};

class _PCompU final : public NumberedComp {
public:
    _PCompU();
};

class _PCompAngle : public NumberedComp {
public:
    _PCompAngle();
    Axes getAxes(Entity entity) const override;
    LocalFrame buildFrame(CataPoints& points) const override;
    void setArriveLeave(Entity entity, const BranchItems* items) override;
    // A bend's catalogue element has its ports at 5 and 6.
    std::uint16_t mapPointNo(std::uint16_t number) const override;
};

class _PCompArc final : public _PCompAngle {
public:
    Axes getAxes(Entity entity) const override;
    LocalFrame buildFrame(CataPoints& points) const override;
};
