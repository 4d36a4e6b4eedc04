// Entities of the host: what a drawing holds.
//
// Entities are created on the heap and belong to whoever asked for them, who deletes them through the virtual
// destructor. Lengths are millimetres in world coordinates, angles radians, texts stand in the code page. Operations
// throw nothing but std::bad_alloc.
#pragma once

#include "tolmar/color.h"
#include "tolmar/ge.h"
#include "tolmar/rx.h"
#include "tolmar/solid.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Tl {

// Result of an entity's operations; eOk is 0. tlErrorText gives the reason as a sentence fragment in English.
enum ErrorStatus : int {
    eOk = 0,
    eInvalidInput = 3,       // an argument that the operation cannot use
    eNotApplicable = 5,      // the entity has no such thing
    eNotFinite = 40,         // a coordinate or size is NaN or infinite
    eZeroSize = 41,          // a size that must be above 0 is 0 or negative
    eZeroDirection = 42,     // a direction without length, or two directions along one line
    eCoincidentPoints = 43,  // points that must differ are equal or stand on one line
    eTooLarge = 44,          // a coordinate beyond `tlMaxCoordinate`
    eNoOutline = 45,         // no outline or profile, or one of fewer than three different points
    eBadOutline = 46,        // an outline that encloses nothing or crosses itself
    eBadSides = 47,          // a prism of fewer than 3 or more than 100 sides
    eBadAngle = 48,          // a sweep of 0
    eProfileCrossesAxis = 49,
    eTooManyVertices = 50,  // an outline of more than `tlMaxOutlineVertices`
    eUnknownClass = 51,     // no shape is known for the class
    eSelfCutting = 52,      // a bend tighter than its section, a section that turns over
    eBadSerial = 53,        // serialised content that cannot be read
};

}  // namespace Tl

// Coordinates and sizes beyond this (1000 km) are refused.
inline constexpr double tlMaxCoordinate = 1e9;
inline constexpr std::size_t tlMaxOutlineVertices = 1'000'000;

// The reason behind a status, such as "a size is zero or negative"; "" for eOk. Lives as long as the library.
const char* tlErrorText(Tl::ErrorStatus status);

class TlDbEntity : public TlRxObject {
    TLRX_CLASS(TlDbEntity)
public:
    virtual ~TlDbEntity() = default;
    TlDbEntity(const TlDbEntity&) = delete;
    TlDbEntity& operator=(const TlDbEntity&) = delete;

    // 0 "by block", 1..255, 256 "by layer".
    int colorIndex() const { return color_.colorIndex(); }
    void setColorIndex(int index) { color_.setColorIndex(index); }
    // Appends the parts that the entity falls into; they belong to the caller, in a fixed order. eNotApplicable, with
    // nothing appended, for an entity without parts.
    virtual Tl::ErrorStatus explode(std::vector<TlDbEntity*>& parts) const;
    // Colour of a sub-entity; type 1 is a face, and the faces of a surface have the indexes 5, 9, 13 and so on. What
    // has no colour of its own gives the entity's.
    virtual TlCmColor subentColor(int type, int index) const;
    // The boundary of a solid or surface; null for every other entity. Lives with the entity.
    virtual const tolmar::Body* body() const { return nullptr; }

protected:
    explicit TlDbEntity(const TlRxClass& runtimeClass) : TlRxObject(runtimeClass) {}

private:
    TlCmColor color_ = TlCmColor::byIndex(7);
};

class TlDbCurve : public TlDbEntity {
    TLRX_CLASS(TlDbCurve)
protected:
    using TlDbEntity::TlDbEntity;
};

class TlDbLine final : public TlDbCurve {
    TLRX_CLASS(TlDbLine)
public:
    TlDbLine(const TlGePoint3d& start, const TlGePoint3d& end);
    const TlGePoint3d& startPoint() const { return start_; }
    const TlGePoint3d& endPoint() const { return end_; }

private:
    TlGePoint3d start_;
    TlGePoint3d end_;
};

class TlDbCircle final : public TlDbCurve {
    TLRX_CLASS(TlDbCircle)
public:
    TlDbCircle(const TlGePoint3d& center, const TlGeVector3d& normal, double radius);
    const TlGePoint3d& center() const { return center_; }
    const TlGeVector3d& normal() const { return normal_; }  // as given, of any length
    double radius() const { return radius_; }

private:
    TlGePoint3d center_;
    TlGeVector3d normal_;
    double radius_;
};

class TlDbArc final : public TlDbCurve {
    TLRX_CLASS(TlDbArc)
public:
    TlDbArc(const TlDbCircle& circle, double startAngle, double endAngle);
    const TlGePoint3d& center() const { return center_; }
    const TlGeVector3d& normal() const { return normal_; }
    double radius() const { return radius_; }
    double startAngle() const { return startAngle_; }
    double endAngle() const { return endAngle_; }

private:
    TlGePoint3d center_;
    TlGeVector3d normal_;
    double radius_;
    double startAngle_;
    double endAngle_;
};

class TlDbPolyline final : public TlDbCurve {
    TLRX_CLASS(TlDbPolyline)
public:
    explicit TlDbPolyline(std::vector<TlGePoint3d> points);
    unsigned numVerts() const { return static_cast<unsigned>(points_.size()); }
    // eInvalidInput for an index out of range.
    Tl::ErrorStatus getPointAt(unsigned index, TlGePoint3d& point) const;

private:
    std::vector<TlGePoint3d> points_;
};

class TlDbText final : public TlDbEntity {
    TLRX_CLASS(TlDbText)
public:
    struct Data {
        std::string text;
        TlGePoint3d position;
        TlGeVector3d normal{0, 0, 1};
        double rotation = 0;
        double height = 0;
        std::string style;  // name of the text style's record
    };
    explicit TlDbText(Data data);
    const TlGePoint3d& position() const { return data_.position; }
    const TlGeVector3d& normal() const { return data_.normal; }
    double rotation() const { return data_.rotation; }
    double height() const { return data_.height; }
    const char* textString() const { return data_.text.c_str(); }
    // Name of the text style's record; empty when there is none.
    const char* textStyle() const { return data_.style.c_str(); }

private:
    Data data_;
};

class TlDbHatch final : public TlDbEntity {
    TLRX_CLASS(TlDbHatch)
public:
    TlDbHatch();
};

// An entity that draws a dot and nothing else.
class TlDbPoint final : public TlDbEntity {
    TLRX_CLASS(TlDbPoint)
public:
    explicit TlDbPoint(const TlGePoint3d& position);
    const TlGePoint3d& position() const { return position_; }

private:
    TlGePoint3d position_;
};

class TlDb3dSolid final : public TlDbEntity {
    TLRX_CLASS(TlDb3dSolid)
public:
    explicit TlDb3dSolid(tolmar::Body body);
    const tolmar::Body* body() const override { return &body_; }

private:
    tolmar::Body body_;
};

class TlDbSurface final : public TlDbEntity {
    TLRX_CLASS(TlDbSurface)
public:
    // `faceColors` may be shorter than the number of faces; the others have the surface's own colour.
    explicit TlDbSurface(tolmar::Body body, std::vector<int> faceColors = {});
    const tolmar::Body* body() const override { return &body_; }
    TlCmColor subentColor(int type, int index) const override;

private:
    tolmar::Body body_;
    std::vector<int> faceColors_;
};

// A block insertion; explodes into new entities made from its parts.
class TlDbBlockReference final : public TlDbEntity {
    TLRX_CLASS(TlDbBlockReference)
public:
    // Makes one part anew at every explosion.
    class Part {
    public:
        virtual ~Part() = default;
        // Null when the part cannot be made.
        virtual TlDbEntity* create() const = 0;
    };
    explicit TlDbBlockReference(std::vector<std::unique_ptr<Part>> parts);
    // In the order of the block; parts that cannot be made are left out.
    Tl::ErrorStatus explode(std::vector<TlDbEntity*>& parts) const override;
    std::size_t partCount() const { return parts_.size(); }

private:
    std::vector<std::unique_ptr<Part>> parts_;
};

// A polygon mesh with a face array: for each face a count and that many vertex numbers.
class TlDbSubDMesh final : public TlDbEntity {
    TLRX_CLASS(TlDbSubDMesh)
public:
    // eInvalidInput for a face array that ends early or names a vertex that is not there.
    static Tl::ErrorStatus check(std::size_t vertexCount, const std::vector<std::int32_t>& faces);
    // `normals` are one for each vertex, or empty; `faces` must pass `check`. An absent normal is computed.
    TlDbSubDMesh(std::vector<TlGePoint3d> vertices, std::vector<std::int32_t> faces,
                 std::vector<TlGeVector3d> normals = {});
    Tl::ErrorStatus numOfVertices(std::int32_t& count) const;
    Tl::ErrorStatus getVertices(std::vector<TlGePoint3d>& out) const;
    Tl::ErrorStatus getFaceArray(std::vector<std::int32_t>& out) const;
    Tl::ErrorStatus getNormalArray(std::vector<TlGeVector3d>& out) const;  // one for each vertex

private:
    std::vector<TlGePoint3d> vertices_;
    std::vector<std::int32_t> faces_;
    std::vector<TlGeVector3d> normals_;
};

// What a parametric solid turns into. Leaves know the parameters and build the solid on demand.
class ORNACadPrimary3D : public TlDbEntity {
    TLRX_CLASS(ORNACadPrimary3D)
public:
    // 0x10000 stands for "drawn in the inverse colour".
    bool checkGsFlag(unsigned flag) const { return (gsFlags_ & flag) != 0; }
    void setGsFlags(unsigned flags) { gsFlags_ = flags; }
    // eOk and a new solid that belongs to the caller; otherwise the reason, and `solid` is null.
    virtual Tl::ErrorStatus getSolid(TlDb3dSolid*& solid) const = 0;
    // The solid as the only part; the status of getSolid when there is none.
    Tl::ErrorStatus explode(std::vector<TlDbEntity*>& parts) const override;

protected:
    ORNACadPrimary3D();

private:
    unsigned gsFlags_ = 0;
};

// A mesh of triangles as the host holds it, made from a view.
class TlDbPolyFaceMesh final : public TlDbEntity {
    TLRX_CLASS(TlDbPolyFaceMesh)
public:
    using Face = std::array<std::int32_t, 3>;  // vertex numbers from 0
    TlDbPolyFaceMesh(std::vector<TlGePoint3d> points, std::vector<Face> faces);
    const std::vector<TlGePoint3d>& points() const { return points_; }
    const std::vector<Face>& faces() const { return faces_; }

private:
    std::vector<TlGePoint3d> points_;
    std::vector<Face> faces_;
};

// What mesh content turns into.
class HextPolygonMeshView final : public TlDbEntity {
    TLRX_CLASS(HextPolygonMeshView)
public:
    using Face = TlDbPolyFaceMesh::Face;
    HextPolygonMeshView(std::vector<TlGePoint3d> points, std::vector<Face> faces);
    // A new mesh that belongs to the caller; null when there is no face or a face names a point that is not there.
    TlDbPolyFaceMesh* convertToPolyfaceMesh() const;
    // The points, and four values for each face: the count 3 and three point numbers from 0. Empties both first.
    static Tl::ErrorStatus getPolyFaceMeshData(const TlDbPolyFaceMesh* mesh, std::vector<TlGePoint3d>& points,
                                               std::vector<std::int32_t>& faceIndices);

private:
    std::vector<TlGePoint3d> points_;
    std::vector<Face> faces_;
};
