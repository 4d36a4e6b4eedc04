// The families of components. Private to the component geometry.
#pragma once

#include "hextinterface/hextbasemethod/component_geometry.h"

namespace component {

// Coordinates of a point by number; the world's origin when there is none.
HxGePoint3D at(const HxDbSmrtlnEntity* entity, int number);
// Flow of a point by number; 0 when there is none.
int flowAt(const HxDbSmrtlnEntity* entity, int number);
// The vector from point `from` to point `to`.
HxGeVector3D between(const HxDbSmrtlnEntity* entity, int from, int to);

// Sets `paxi` of record i, and `dist` as its distance from record 0.
void setPaxi(CataPoints& points, std::size_t i, std::string_view word);
void normalise(HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z);
// ExportException "无效方向" with all points on the command line when an axis has no length.
void checkFrame(const CataPoints& points, const HxGeVector3D& x, const HxGeVector3D& y, const HxGeVector3D& z);
bool hasRecords(const CataPoints& points, std::size_t count);

}  // namespace component

class _PCompPipe final : public _PCompBase {
public:
    void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const override;
    HxGePoint3D getOrigin(Entity entity) const override;
    HxGeVector3D getDirection(Entity entity, bool atArrive) const override;
    void getDirections(std::vector<HxGeVector3D>& out, Entity entity, bool atArrive) const override;
    void buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const override;
    void getPoints(std::vector<HxGePoint3D>& out) const override;
};

class _PCompNormal final : public _PCompBase {
public:
    void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const override;
    HxGeVector3D getDirection(Entity entity, bool atArrive) const override;
    void getDirections(std::vector<HxGeVector3D>& out, Entity entity, bool atArrive) const override;
    void buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const override;
    void buildFrameOnBranch(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const override;
    // ExportException "NormalKeyPt错误" when two points fall together.
    void getPoints(std::vector<HxGePoint3D>& out) const override;
    std::uint16_t mapPointNo(std::uint16_t number) const override;
};

class _PCompTee final : public _PCompBase {
public:
    void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const override;
    void buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const override;
    void getPoints(std::vector<HxGePoint3D>& out) const override;
    std::uint16_t mapPointNo(std::uint16_t number) const override;
};

class _PCompLatera final : public _PCompBase {
public:
    void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const override;
    void buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const override;
    void getPoints(std::vector<HxGePoint3D>& out) const override;
    std::uint16_t mapPointNo(std::uint16_t number) const override;
};

// An eccentric reducer pairs 1 with 3 and 2 with 4.
class _PCompEcc final : public _PCompBase {
public:
    void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const override;
    HxGePoint3D getOrigin(Entity entity) const override;
    HxGeVector3D getDirection(Entity entity, bool atArrive) const override;
    void getDirections(std::vector<HxGeVector3D>& out, Entity entity, bool atArrive) const override;
    void buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const override;
    void getPoints(std::vector<HxGePoint3D>& out) const override;
    std::uint16_t mapPointNo(std::uint16_t number) const override;
};

class _PCompY final : public _PCompBase {
public:
    void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const override;
    void buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const override;
    void getPoints(std::vector<HxGePoint3D>& out) const override;
    void setArriveLeave(Entity entity, const BranchItems* items) override;
    std::uint16_t mapPointNo(std::uint16_t number) const override;
};

class _PCompCross final : public _PCompBase {
public:
    void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const override;
    void buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const override;
    void getPoints(std::vector<HxGePoint3D>& out) const override;
    std::uint16_t mapPointNo(std::uint16_t number) const override;
};

class _PCompCross3 final : public _PCompBase {
public:
    void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const override;
    void buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const override;
    void getPoints(std::vector<HxGePoint3D>& out) const override;
    std::uint16_t mapPointNo(std::uint16_t number) const override;
};

class _PCompU final : public _PCompBase {
public:
    std::uint16_t mapPointNo(std::uint16_t number) const override;
};

class _PCompAngle final : public _PCompBase {
public:
    void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const override;
    void buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const override;
    void getPoints(std::vector<HxGePoint3D>& out) const override;
    void setArriveLeave(Entity entity, const BranchItems* items) override;
    std::uint16_t mapPointNo(std::uint16_t number) const override;
};

class _PCompArc final : public _PCompBase {
public:
    void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const override;
    void buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const override;
    void getPoints(std::vector<HxGePoint3D>& out) const override;
    void setArriveLeave(Entity entity, const BranchItems* items) override;
    std::uint16_t mapPointNo(std::uint16_t number) const override;
};

// A hose has four records and a frame of its own would want five: none is built.
class _PCompHose final : public _PCompBase {
public:
    void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const override;
    HxGePoint3D getOrigin(Entity entity) const override;
    HxGeVector3D getDirection(Entity entity, bool atArrive) const override;
    void getDirections(std::vector<HxGeVector3D>& out, Entity entity, bool atArrive) const override;
    void getPoints(std::vector<HxGePoint3D>& out) const override;
    std::uint16_t mapPointNo(std::uint16_t number) const override;
};

class _PCompBalloon final : public _PCompBase {
public:
    void getAxes(Entity entity, HxGeVector3D& x, HxGeVector3D& y) const override;
    HxGePoint3D getOrigin(Entity entity) const override;
    HxGePoint3D getArrivePoint(Entity entity) const override;
    HxGePoint3D getLeavePoint(Entity entity) const override;
    HxGeVector3D getDirection(Entity entity, bool atArrive) const override;
    void getDirections(std::vector<HxGeVector3D>& out, Entity entity, bool atArrive) const override;
    void buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const override;
    void getPoints(std::vector<HxGePoint3D>& out) const override;
    void setArriveLeave(Entity entity, const BranchItems* items) override;
};
