#include "hextinterface/hextcata/gem_trans.h"

#include "frame/exceptions.h"
#include "hextinterface/hextcata/gem_classes.h"

#include <cmath>
#include <iterator>
#include <memory>

using gem::planeTolerance;

HEXT_CATA_GemTrans::HEXT_CATA_GemTrans(const GemFrame& frame, int nextNumber) : nextNumber_(nextNumber), frame_(frame) {
    frame_.x.normalize();
    frame_.y.normalize();
    frame_.z.normalize();
    localMap_.setToAlignCoordSys(frame_.origin, frame_.x, frame_.y, frame_.z, {}, HxGeVector3D::kXAxis,
                                 HxGeVector3D::kYAxis, HxGeVector3D::kZAxis);
}

HxGePoint3D HEXT_CATA_GemTrans::toLocal(const HxGePoint3D& world) const {
    return localMap_ * world;
}

HxGeVector3D HEXT_CATA_GemTrans::toLocalVector(const HxGeVector3D& v) const {
    return {v.dotProduct(frame_.x), v.dotProduct(frame_.y), v.dotProduct(frame_.z)};
}

std::string HEXT_CATA_GemTrans::axisText(const HxGeVector3D& v) const {
    if (!frame_.refText.empty() && v.isParallelTo(HxGeVector3D::kYAxis, gem::looseTol)) {
        return frame_.refText;
    }
    return planeText(v, planeOf(v, planeTolerance));
}

std::string HEXT_CATA_GemTrans::addPoint(const HxGePoint3D& position, const HxGePoint3D& worldPoint,
                                         const HxGeVector3D& direction) {
    isFinite_ = isFinite_ && std::isfinite(direction.length()) && std::isfinite(position.asVector().length());
    const int plane = planeOf(direction, planeTolerance);
    CataPoint point;
    point.type = "PTCAR";
    point.pos = position;
    point.worldPoint = worldPoint;
    point.id = nextNumber_++;
    point.dir = plane >= 1 ? planeText(direction, plane) : directionText(direction);
    newPoints_.push_back(std::move(point));
    return "P" + std::to_string(nextNumber_ - 1);
}

void HEXT_CATA_GemTrans::writeOne(CataStream& out, const HEXT_CATA_CateBase& object, const char* failure) {
    if (!object.valid) {
        throw ExportException(failure);
    }
    object.write(out, gem::writeMode);
}

void HEXT_CATA_GemTrans::writeTwo(CataStream& out, const HEXT_CATA_CateBase& first, const HEXT_CATA_CateBase& second,
                                  const char* failure) {
    if (!first.valid && !second.valid) {
        throw ExportException(failure);
    }
    for (const HEXT_CATA_CateBase* object : {&first, &second}) {
        if (object->valid) {
            object->write(out, gem::writeMode);
        }
    }
}

int planeOf(const HxGeVector3D& v, double tolerance) {
    return std::fabs(v.z) < tolerance ? 1 : std::fabs(v.x) < tolerance ? 2 : std::fabs(v.y) < tolerance ? 3 : -1;
}

std::string planeText(const HxGeVector3D& v, int plane) {
    const struct {
        double first;
        double second;
        const char* axes;
    } planes[] = {{v.x, v.y, "XY"}, {v.y, v.z, "YZ"}, {v.x, v.z, "XZ"}};
    if (plane < 1 || plane > 3) {
        throw ExportException("");
    }
    const auto& [first, second, axes] = planes[plane - 1];
    const HxGeVector3D unit = HxGeVector3D(first, second, 0).normal();
    // acos would lose half the digits near 0 and 180 degrees. A vector across the plane counts as 90; -0 as 0.
    const double angle = unit.isZeroLength() ? 90.0 : std::atan2(unit.y + 0.0, unit.x) * 180.0 / tlGePi;
    std::string text(1, axes[0]);
    appendFixed(text, angle);
    return text += axes[1];
}

HxGePoint3D toFrame(const HxGePoint3D& point, const HxGePoint3D& origin, const HxGeVector3D& x, const HxGeVector3D& y,
                    const HxGeVector3D& z) {
    return TlGeMatrix3d::alignCoordSys(origin, x, y, z, {}, HxGeVector3D::kXAxis, HxGeVector3D::kYAxis,
                                       HxGeVector3D::kZAxis) *
           point;
}

namespace {

using TranslatorPtr = std::unique_ptr<HEXT_CATA_GemTrans>;

template <typename Primitive, typename Translator>
TranslatorPtr make(const HextPrimary& primitive, const GemFrame& frame, int nextNumber) {
    return std::make_unique<Translator>(static_cast<const Primitive&>(primitive), frame, nextNumber);
}

TranslatorPtr makeTorus(const HextPrimary& primitive, const GemFrame& frame, int nextNumber) {
    const auto& torus = static_cast<const HextTorus3D&>(primitive);
    return torus.form == 1 ? TranslatorPtr(std::make_unique<HEXT_CATA_TORUSTrans1>(torus, frame, nextNumber))
                           : TranslatorPtr(std::make_unique<HEXT_CATA_TORUSTrans>(torus, frame, nextNumber));
}

struct DispatchRow {
    const TlRxClass* primitive;
    TranslatorPtr (*make)(const HextPrimary&, const GemFrame&, int);
    const char* failure;
};

// Tested in this order; a sloped cylinder is a cylinder, too.
const DispatchRow dispatch[] = {
    {HextScylinder3D::desc(), make<HextScylinder3D, HEXT_CATA_SSLCTrans>, "不能转换为HEXT斜截圆柱"},
    {HextCylinder3D::desc(), make<HextCylinder3D, HEXT_CATA_SCYLTrans>, "不能转换为HEXT圆柱！"},
    {HextTorus3D::desc(), makeTorus, "不能转换为HEXT圆形断面圆环"},
    {HextConcone3D::desc(), make<HextConcone3D, HEXT_CATA_LSNOTrans>, "不能转换为HEXT圆台！"},
    {HextEcone3D::desc(), make<HextEcone3D, HEXT_CATA_LSNOTrans>, "不能转换为HEXT圆台！"},
    {HextBox3D::desc(), make<HextBox3D, HEXT_CATA_BOXSTrans>, "不能转换为HEXT长方体"},
    {HextSqutorus3D::desc(), make<HextSqutorus3D, HEXT_CATA_SRTOTrans>, "不能转换为HEXT矩形断面圆环"},
    {HextSphere3D::desc(), make<HextSphere3D, HEXT_CATA_SSPHTrans>, "不能转换为HEXT球！"},
    {HextWedge3D::desc(), make<HextWedge3D, HEXT_CATA_SEXTTrans>, "不能转换为HEXT拉伸体！"},
    {HextPrism3D::desc(), make<HextPrism3D, HEXT_CATA_SEXTTrans>, "不能转换为HEXT拉伸体！"},
    {HextSaddle3D::desc(), make<HextSaddle3D, HEXT_CATA_SEXTTrans>, "不能转换为HEXT拉伸体！"},
    {HextOval3D::desc(), make<HextOval3D, HEXT_CATA_SDSHTrans>, "不能转换为HEXT的椭圆"},
    {HextSqucone3D::desc(), make<HextSqucone3D, HEXT_CATA_LPYRTrans>, "不能转换为HEXT的矩形断面台"},
    {HextSqucir3D::desc(), make<HextSqucir3D, HEXT_CATA_SQUCIRTrans>, "不能转换为HEXT天圆地方！"},
    {HextPrimaryLine::desc(), make<HextPrimaryLine, HEXT_CATA_LINETrans>, "不能转换为HEXT圆柱！"},
};

const char* failureText(const DispatchRow& row, const HextPrimary& primitive) {
    const HextTorus3D* torus = HextTorus3D::cast(&primitive);
    return torus != nullptr && torus->form == 1 ? "不能转换为HEXT圆形断面圆环1" : row.failure;
}

}  // namespace

std::string_view translatePrimitive(CataStream& out, const HextPrimary& primitive, const GemFrame& frame,
                                    CataPoints& points, int& nextNumber) {
    const std::size_t linesBefore = out.lineCount();
    for (const DispatchRow& row : dispatch) {
        if (!primitive.isKindOf(row.primitive)) {
            continue;
        }
        const TranslatorPtr translator = row.make(primitive, frame, nextNumber);
        if (!translator->isFinite()) {
            throw ExportException(failureText(row, primitive));
        }
        translator->write(out, failureText(row, primitive));
        if (translator->hasPoints()) {
            const CataPoints& added = translator->newPoints();
            points.insert(points.end(), added.begin(), added.end());
            nextNumber += static_cast<int>(added.size());
        }
        return out.lineCount() != linesBefore ? "" : "is too thin or too large for the catalogue";
    }
    return primitive.isKindOf(HextPrimaryText::desc()) ? "" : gem::noCounterpart;
}
