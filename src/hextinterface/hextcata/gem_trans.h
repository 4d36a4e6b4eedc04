// Turns one primitive of a component (world coordinates) into a catalogue primitive in the component's local frame and
// writes it.
//
// A catalogue primitive stands on an axis. Where the axis runs through the component's origin in a coordinate plane of
// the frame, a text such as X45.000000Y tells it; otherwise a cartesian point is added at the primitive's place, and
// the primitive refers to it by number.
#pragma once

#include "hextinterface/hextbasemethod/cata_point.h"
#include "hextinterface/hextcata/solids.h"
#include "platform/primitives.h"

#include <string>

// The component's frame as the translators get it. Axes need not be normalised.
struct GemFrame {
    HxGePoint3D origin;
    HxGeVector3D x{1, 0, 0};
    HxGeVector3D y{0, 1, 0};
    HxGeVector3D z{0, 0, 1};
    std::string refText;  // "X DDANGLE Y" for an olet or boss, else empty
};

// Number of the first point that the primitives of a component add.
inline constexpr int firstAddedNumber = 5;

class HEXT_CATA_GemTrans {
public:
    HEXT_CATA_GemTrans(const GemFrame& frame, int nextNumber);
    virtual ~HEXT_CATA_GemTrans() = default;
    HEXT_CATA_GemTrans(const HEXT_CATA_GemTrans&) = delete;
    HEXT_CATA_GemTrans& operator=(const HEXT_CATA_GemTrans&) = delete;

    // Places the object on a base point; only the cylinder has something to do here.
    virtual void translateAt(const HxGePoint3D&, bool) {}
    // Writes the finished objects; throws ExportException with `failure` when one that is needed is not valid.
    virtual void write(CataStream& out, const char* failure) const = 0;

    // The points that the translator has added, when there are any to hand back.
    bool hasPoints() const { return hasPoints_; }
    // False when a point or its direction is no finite number: nothing must be written then.
    bool isFinite() const { return isFinite_; }
    const CataPoints& newPoints() const { return newPoints_; }

protected:
    HxGePoint3D toLocal(const HxGePoint3D& world) const;
    HxGeVector3D toLocalVector(const HxGeVector3D& world) const;
    // The reference text, or the angle of a direction in its coordinate plane.
    std::string axisText(const HxGeVector3D& v) const;
    // Adds a cartesian point and gives its reference, "P<number>".
    std::string addPoint(const HxGePoint3D& position, const HxGePoint3D& worldPoint, const HxGeVector3D& direction);
    // The reference of the last point with a small letter.
    std::string smallRef() const { return "p" + std::to_string(nextNumber_ - 1); }

    static void writeOne(CataStream& out, const HEXT_CATA_CateBase& object, const char* failure);
    // Throws only when neither is valid.
    static void writeTwo(CataStream& out, const HEXT_CATA_CateBase& first, const HEXT_CATA_CateBase& second,
                         const char* failure);

    bool hasPoints_ = false;
    int nextNumber_;

private:
    GemFrame frame_;
    TlGeMatrix3d localMap_;
    CataPoints newPoints_;
    bool isFinite_ = true;
};

// In which coordinate plane a vector lies: 1 XY, 2 YZ, 3 XZ, -1 none. Tested in this order.
int planeOf(const HxGeVector3D& v, double tolerance);
// The angle of a vector in a plane, such as "X45.000000Y". ExportException with an empty text for plane below 1.
std::string planeText(const HxGeVector3D& v, int plane);
// The image of a point in a frame.
HxGePoint3D toFrame(const HxGePoint3D& point, const HxGePoint3D& origin, const HxGeVector3D& x, const HxGeVector3D& y,
                    const HxGeVector3D& z);

// Picks the translator of the primitive's class and runs it. Added points go to the end of `points`, and `nextNumber`
// follows them. Gives why no line was written: no translator for the class, or a solid too thin or too large; empty
// otherwise, and for texts. ExportException with the failure text of the family; lines written by then stay in the
// file, points are not handed back.
std::string_view translatePrimitive(CataStream& out, const HextPrimary& primitive, const GemFrame& frame,
                                    CataPoints& points, int& nextNumber);
