// The parametric primitives that make up an object's shape.
//
// Lengths are millimetres, points are world coordinates, directions may have any length but 0. A primitive that an
// operation hands out belongs to the caller, who gives it back by freeHextPrimaryArray.
#pragma once

#include "platform/geometry.h"
#include "tolmar/rx.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

class HextPrimary : public TlRxObject {
    TLRX_CLASS(HextPrimary)
public:
    virtual ~HextPrimary() = default;
    // A new primitive with the same fields, owned by the caller.
    virtual HextPrimary* clone() const = 0;

    // Colour of the primitive alone; outside 1..254 the object's colour holds.
    int color = 0;
    int getColor() const { return color; }

protected:
    explicit HextPrimary(const TlRxClass& runtimeClass) : TlRxObject(runtimeClass) {}
    HextPrimary(const HextPrimary&) = default;
    HextPrimary& operator=(const HextPrimary&) = default;
};

// The material that marks a primitive of the object's obstruction volume, such as insulation.
inline constexpr const char* obstructionMaterial = "hext_temp_material";

class HextPrimary3D : public HextPrimary {
    TLRX_CLASS(HextPrimary3D)
public:
    // 1: third axis = first x second; 0: its opposite.
    std::int32_t handedness = 1;
    // Null when there is none. The text belongs to the platform.
    const char* material = nullptr;
    const char* getMaterial() const { return material; }

protected:
    explicit HextPrimary3D(const TlRxClass& runtimeClass) : HextPrimary(runtimeClass) {}
};

#define HEXT_PRIMARY(Class, Base)                                                                                      \
    TLRX_CLASS(Class)                                                                                                  \
public:                                                                                                                \
    Class() : Base(Class::classRecord) {}                                                                              \
    Class* clone() const override {                                                                                    \
        return new Class(*this);                                                                                       \
    }                                                                                                                  \
                                                                                                                       \
protected:                                                                                                             \
    explicit Class(const TlRxClass& runtimeClass) : Base(runtimeClass) {}                                              \
                                                                                                                       \
public:

class HextBox3D : public HextPrimary3D {
    HEXT_PRIMARY(HextBox3D, HextPrimary3D)
    double zLength = 0;
    double yLength = 0;
    double xLength = 0;
    HxGePoint3D point;
    HxGeVector3D xAxis{1, 0, 0};
    HxGeVector3D yAxis{0, 1, 0};
    std::int32_t pointKind = 0;  // 0: `point` is a corner; 1: the centre

    // The centre whatever `pointKind` says; a left-handed box of kind 0 runs against the cross product.
    HxGePoint3D center() const;
};

class HextCylinder3D : public HextPrimary3D {
    HEXT_PRIMARY(HextCylinder3D, HextPrimary3D)
    double diameter = 0;
    HxGePoint3D endPoint;
    HxGePoint3D startPoint;
    double getDiameter() const { return diameter; }
    const HxGePoint3D& getEndPoint() const { return endPoint; }
    const HxGePoint3D& getStartPoint() const { return startPoint; }
};

// A cylinder whose end is cut by the plane with normal `vect`.
class HextScylinder3D : public HextCylinder3D {
    HEXT_PRIMARY(HextScylinder3D, HextCylinder3D)
    HxGeVector3D vect{0, 0, 1};
};

class HextConcone3D : public HextPrimary3D {
    HEXT_PRIMARY(HextConcone3D, HextPrimary3D)
    HxGePoint3D endPoint;
    HxGePoint3D startPoint;
    double startDiameter = 0;
    double endDiameter = 0;
};

// Eccentric cone: the axis splits into the offset along `vect` and the height across it.
class HextEcone3D : public HextPrimary3D {
    HEXT_PRIMARY(HextEcone3D, HextPrimary3D)
    HxGePoint3D endPoint;
    HxGePoint3D startPoint;
    double startDiameter = 0;
    double endDiameter = 0;
    HxGeVector3D vect{1, 0, 0};
    const HxGePoint3D& getStartPoint() const { return startPoint; }
    const HxGePoint3D& getEndPoint() const { return endPoint; }
    const HxGeVector3D& getVect() const { return vect; }
};

// Rectangular frustum; the second side axis is `zAxis` x `xAxis`.
class HextSqucone3D : public HextPrimary3D {
    HEXT_PRIMARY(HextSqucone3D, HextPrimary3D)
    double bottomX = 0;
    double bottomY = 0;
    double topX = 0;
    double topY = 0;
    double height = 0;
    HxGePoint3D point;  // centre of the bottom
    HxGeVector3D zAxis{0, 0, 1};
    HxGeVector3D xAxis{1, 0, 0};
    HxGeVector3D offsetDirection{1, 0, 0};
    double offsetLength = 0;

    // `point` + `zAxis`·`height` + `offsetDirection`·`offsetLength`.
    HxGePoint3D topCenter() const;
};

// The triangle of the three points, extruded by `wedgeSize` along (`point3` - `point2`) x (`point1` - `point2`).
class HextWedge3D : public HextPrimary3D {
    HEXT_PRIMARY(HextWedge3D, HextPrimary3D)
    HxGePoint3D point1;
    HxGePoint3D point2;
    HxGePoint3D point3;
    double wedgeSize = 0;
};

class HextPrism3D : public HextPrimary3D {
    HEXT_PRIMARY(HextPrism3D, HextPrimary3D)
    HxGePoint3D endPoint;
    HxGePoint3D startPoint;
    HxGePoint3D vertexPoint;  // on the polygon of the end at `endPoint`
    std::int32_t sides = 0;
    std::int32_t sideMode = 0;
};

// Elliptical head.
class HextOval3D : public HextPrimary3D {
    HEXT_PRIMARY(HextOval3D, HextPrimary3D)
    double axialRadius = 0;
    double radialRadius = 0;
    double baseRadius = 0;
    HxGePoint3D point;           // centre of the base
    HxGeVector3D vect{0, 0, 1};  // from the base towards the crown
    std::int32_t segments = 32;

    // Height of the crown above the base of radius `r`: a - (a/b)·sqrt(b² - r²), a negative radicand counting as 0.
    double getHeadHeight(double r) const;
};

class HextSphere3D : public HextPrimary3D {
    HEXT_PRIMARY(HextSphere3D, HextPrimary3D)
    double radius = 0;
    HxGePoint3D center;
};

// Round elbow body. `arcKind` with `form` 0: 0 the short way to `thirdField`, 1 the long way, 2 a whole circle and 3 a
// half circle about the direction `thirdField`. `form` 1: `angle` about the direction `thirdField`; radians, or degrees
// when above 2·pi.
class HextTorus3D : public HextPrimary3D {
    HEXT_PRIMARY(HextTorus3D, HextPrimary3D)
    double startDiameter = 0;
    double endDiameter = 0;
    std::int32_t arcKind = 0;
    double angle = 0;
    HxGePoint3D center;
    HxGePoint3D startPoint;
    HxGePoint3D thirdField;
    std::int16_t form = 0;
};

// Rectangular elbow body: widths lie in the plane of the bend, heights along its axis.
class HextSqutorus3D : public HextPrimary3D {
    HEXT_PRIMARY(HextSqutorus3D, HextPrimary3D)
    double startWidth = 0;
    double startHeight = 0;
    double endWidth = 0;
    double endHeight = 0;
    std::int32_t arcKind = 0;
    HxGePoint3D center;
    HxGePoint3D startPoint;
    HxGePoint3D thirdField;
    std::int16_t form = 0;
    double angle = 0;
    HxGeVector3D normal{0, 0, 1};
};

// A block with a circular trough, extruded by `length` along `axis`.
class HextSaddle3D : public HextPrimary3D {
    HEXT_PRIMARY(HextSaddle3D, HextPrimary3D)
    double length = 0;
    double sectionLength = 0;
    double sectionHeight = 0;
    double circleRadius = 0;
    HxGePoint3D point;
    HxGeVector3D axis{1, 0, 0};
    HxGeVector3D sectionAxis{0, 1, 0};
};

// Square to round.
class HextSqucir3D : public HextPrimary3D {
    HEXT_PRIMARY(HextSqucir3D, HextPrimary3D)
    HxGePoint3D basePoint;
    HxGePoint3D topCenter;
    HxGeVector3D xAxis{1, 0, 0};
    HxGeVector3D baseNormal{0, 0, 1};
    double xLength = 0;
    double yLength = 0;
    double topRadius = 0;
};

// One vertex of an outline. `kind`: 1 plain, 2 first of a three-point arc, 3 arc middle, 4 last vertex, 5 first of a
// closing arc, 6 the outline is one circle through this vertex and the two after it, 7 raw arc middle.
struct HextVertex {
    std::int16_t kind = 1;
    HxGePoint3D point;
};
using HextVertexList = std::vector<HextVertex>;

// An owned value that may be absent and that copies with its owner.
template <typename T>
class HextOwned {
public:
    HextOwned() = default;
    HextOwned(T value) : value_(std::make_unique<T>(std::move(value))) {}
    HextOwned(const HextOwned& o) : value_(o.value_ ? std::make_unique<T>(*o.value_) : nullptr) {}
    HextOwned(HextOwned&&) noexcept = default;
    HextOwned& operator=(HextOwned o) noexcept {
        value_.swap(o.value_);
        return *this;
    }
    explicit operator bool() const { return value_ != nullptr; }
    T* get() const { return value_.get(); }
    T& operator*() const { return *value_; }
    T* operator->() const { return value_.get(); }

private:
    std::unique_ptr<T> value_;
};

// Extruded outline; vertices are local to `origin`, `xAxis`, `yAxis`, `xAxis` x `yAxis`.
class HextSpolygon : public HextPrimary3D {
    HEXT_PRIMARY(HextSpolygon, HextPrimary3D)
    HxGePoint3D origin;
    HxGeVector3D xAxis{1, 0, 0};
    HxGeVector3D yAxis{0, 1, 0};
    HxGeVector3D direction{0, 0, 1};
    double height = 0;
    HextOwned<HextVertexList> outline;  // absent: the primitive holds nothing
    HextOwned<std::vector<HextVertexList>> holes;
};

// Revolved profile; vertices are world points, `angle` is radians.
class HextRevolve : public HextPrimary3D {
    HEXT_PRIMARY(HextRevolve, HextPrimary3D)
    double angle = 0;
    HxGePoint3D center;
    HxGeVector3D axis{0, 0, 1};
    HextOwned<HextVertexList> profile;  // absent: the primitive holds nothing
};

// Host-CAD content carried as a primitive: a serialised entity.
class HextPrimaryAcad : public HextPrimary3D {
    HEXT_PRIMARY(HextPrimaryAcad, HextPrimary3D)
    std::string serial;
    // The bytes of the entity, for hxcad::setEntitySerialString.
    const std::string& getSer() const { return serial; }
};
class HextPrimaryAcadEntity : public HextPrimaryAcad {
    HEXT_PRIMARY(HextPrimaryAcadEntity, HextPrimaryAcad)
};
class HextPrimaryAcadSolid3D : public HextPrimaryAcad {
    HEXT_PRIMARY(HextPrimaryAcadSolid3D, HextPrimaryAcad)
};
// A block insertion; no HextPrimaryAcad.
class HextAcadBlockReference : public HextPrimary3D {
    HEXT_PRIMARY(HextAcadBlockReference, HextPrimary3D)
    std::string serial;
    const std::string& getSer() const { return serial; }
};

class HextPrimaryLine : public HextPrimary {
    HEXT_PRIMARY(HextPrimaryLine, HextPrimary)
    HxGePoint3D startPoint;
    HxGePoint3D endPoint;
};

// A text item; drawn through its host entity.
class HextPrimaryText : public HextPrimary {
    HEXT_PRIMARY(HextPrimaryText, HextPrimary)
    std::string text;
    HxGePoint3D position;
    HxGeVector3D normal{0, 0, 1};
    double rotation = 0;  // radians
    double height = 0;
    std::string style;
};

#undef HEXT_PRIMARY

using HextPrimaryArray = std::vector<HextPrimary*>;
// Primitives that belong to somebody else.
using HextPrimaryView = std::span<const HextPrimary* const>;

// Destroys every primitive of a list and empties it.
void freeHextPrimaryArray(HextPrimaryArray& list);
