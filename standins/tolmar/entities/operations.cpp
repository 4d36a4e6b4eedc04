// Making of entities that hold no mesh, and what they answer.
#include "tolmar/entity.h"

#include <utility>

namespace {

// A face of a surface as a part of it: its type, and its index among vertices, edges and faces in turn.
constexpr int faceType = 1;
constexpr int firstFaceIndex = 5;
constexpr int faceIndexStep = 4;

}  // namespace

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
