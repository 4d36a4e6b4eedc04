#include "tolmar/entity.h"

#include <utility>

TLRX_DEFINE_ROOT(TlDbEntity);
TLRX_DEFINE(TlDbCurve, TlDbEntity);
TLRX_DEFINE(TlDbLine, TlDbCurve);
TLRX_DEFINE(TlDbCircle, TlDbCurve);
TLRX_DEFINE(TlDbArc, TlDbCurve);
TLRX_DEFINE(TlDbPolyline, TlDbCurve);
TLRX_DEFINE(TlDbText, TlDbEntity);
TLRX_DEFINE(TlDbHatch, TlDbEntity);
TLRX_DEFINE(TlDbPoint, TlDbEntity);
TLRX_DEFINE(TlDb3dSolid, TlDbEntity);
TLRX_DEFINE(TlDbSurface, TlDbEntity);
TLRX_DEFINE(TlDbBlockReference, TlDbEntity);
TLRX_DEFINE(TlDbSubDMesh, TlDbEntity);
TLRX_DEFINE(ORNACadPrimary3D, TlDbEntity);
TLRX_DEFINE(TlDbPolyFaceMesh, TlDbEntity);
TLRX_DEFINE(HextPolygonMeshView, TlDbEntity);

namespace {

struct StatusText {
    Tl::ErrorStatus status;
    const char* text;
};

constexpr StatusText statusTexts[] = {
    {Tl::eOk, ""},
    {Tl::eInvalidInput, "an argument cannot be used"},
    {Tl::eNotApplicable, "the entity has no such thing"},
    {Tl::eNotFinite, "a coordinate or size is not a finite number"},
    {Tl::eZeroSize, "a size is zero or negative"},
    {Tl::eZeroDirection, "a direction has no length, or two directions are parallel"},
    {Tl::eCoincidentPoints, "points that must differ coincide or stand on one line"},
    {Tl::eTooLarge, "a coordinate or size is beyond 1000 km"},
    {Tl::eNoOutline, "there is no outline, or one of fewer than three different points"},
    {Tl::eBadOutline, "the outline encloses nothing or is not flat"},
    {Tl::eBadSides, "the number of sides is below 3 or above 100"},
    {Tl::eBadAngle, "the sweep is zero"},
    {Tl::eProfileCrossesAxis, "the profile crosses the axis"},
    {Tl::eTooManyVertices, "the outline has too many vertices"},
    {Tl::eUnknownClass, "no shape is known for the class"},
    {Tl::eSelfCutting, "the shape would cut itself"},
    {Tl::eBadSerial, "the serialised content cannot be read"},
};

constexpr int faceType = 1;
constexpr int firstFaceIndex = 5;
constexpr int faceIndexStep = 4;

}  // namespace

const char* tlErrorText(Tl::ErrorStatus status) {
    for (const StatusText& row : statusTexts) {
        if (row.status == status) {
            return row.text;
        }
    }
    return "unknown status";
}

Tl::ErrorStatus TlDbEntity::explode(std::vector<TlDbEntity*>&) const {
    return Tl::eNotApplicable;
}

TlCmColor TlDbEntity::subentColor(int, int) const {
    return color_;
}

TlDbLine::TlDbLine(const TlGePoint3d& start, const TlGePoint3d& end)
    : TlDbCurve(classRecord), start_(start), end_(end) {}

TlDbCircle::TlDbCircle(const TlGePoint3d& center, const TlGeVector3d& normal, double radius)
    : TlDbCurve(classRecord), center_(center), normal_(normal), radius_(radius) {}

TlDbArc::TlDbArc(const TlDbCircle& circle, double startAngle, double endAngle)
    : TlDbCurve(classRecord), center_(circle.center()), normal_(circle.normal()), radius_(circle.radius()),
      startAngle_(startAngle), endAngle_(endAngle) {}

TlDbPolyline::TlDbPolyline(std::vector<TlGePoint3d> points) : TlDbCurve(classRecord), points_(std::move(points)) {}

Tl::ErrorStatus TlDbPolyline::getPointAt(unsigned index, TlGePoint3d& point) const {
    if (index >= points_.size()) {
        return Tl::eInvalidInput;
    }
    point = points_[index];
    return Tl::eOk;
}

TlDbText::TlDbText(Data data) : TlDbEntity(classRecord), data_(std::move(data)) {}

TlDbHatch::TlDbHatch() : TlDbEntity(classRecord) {}

TlDbPoint::TlDbPoint(const TlGePoint3d& position) : TlDbEntity(classRecord), position_(position) {}

TlDb3dSolid::TlDb3dSolid(tolmar::Body body) : TlDbEntity(classRecord), body_(std::move(body)) {}

TlDbSurface::TlDbSurface(tolmar::Body body, std::vector<int> faceColors)
    : TlDbEntity(classRecord), body_(std::move(body)), faceColors_(std::move(faceColors)) {}

TlCmColor TlDbSurface::subentColor(int type, int index) const {
    const bool isFace = type == faceType && index >= firstFaceIndex && (index - firstFaceIndex) % faceIndexStep == 0;
    const auto face = static_cast<std::size_t>((index - firstFaceIndex) / faceIndexStep);
    return TlCmColor::byIndex(isFace && face < faceColors_.size() ? faceColors_[face] : colorIndex());
}

TlDbBlockReference::TlDbBlockReference(std::vector<std::unique_ptr<Part>> parts)
    : TlDbEntity(classRecord), parts_(std::move(parts)) {}

Tl::ErrorStatus TlDbBlockReference::explode(std::vector<TlDbEntity*>& parts) const {
    for (const std::unique_ptr<Part>& part : parts_) {
        if (TlDbEntity* entity = part->create()) {
            parts.push_back(entity);
        }
    }
    return Tl::eOk;
}

ORNACadPrimary3D::ORNACadPrimary3D() : TlDbEntity(classRecord) {}

Tl::ErrorStatus ORNACadPrimary3D::explode(std::vector<TlDbEntity*>& parts) const {
    TlDb3dSolid* solid = nullptr;
    const Tl::ErrorStatus status = getSolid(solid);
    if (status == Tl::eOk) {
        parts.push_back(solid);
    }
    return status;
}
