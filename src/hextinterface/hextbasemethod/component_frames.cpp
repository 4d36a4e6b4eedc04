// Local frames and axial words of the component families for the catalogue.
#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/component_classes.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/smrtln.h"

using component::at;
using component::checkFrame;
using component::hasRecords;
using component::normalise;
using component::setPaxi;

namespace component {

void setPaxi(CataPoints& points, std::size_t i, std::string_view word) {
    points[i].paxi = word;
    points[i].dist = points[i].pos.distanceTo(points[0].pos);
}

void normalise(HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) {
    x.normalize();
    y.normalize();
    z.normalize();
}

void checkFrame(const CataPoints& points, const HxGeVector3D& x, const HxGeVector3D& y, const HxGeVector3D& z) {
    if (x.length() != 0 && y.length() != 0 && z.length() != 0) {
        return;
    }
    hxcad::hextPrintf("\nPpoint:");
    for (const CataPoint& p : points) {
        hxcad::hextPrintf("\nid:%d\npos:%.2lf,%.2lf,%.2lf\ntype:%s\ncon:%s\nbore:%.2lf\npaxi:%s\ndir:%s\ndist:%.2lf",
                          p.id, p.pos.x, p.pos.y, p.pos.z, p.type.c_str(), p.con.c_str(), p.bore, p.paxi.c_str(),
                          p.dir.c_str(), p.dist);
    }
    throw ExportException("无效方向");
}

// A component without its records has no frame; the zero axes fail the check.
bool hasRecords(const CataPoints& points, std::size_t count) {
    if (points.size() >= count) {
        return true;
    }
    checkFrame(points, {}, {}, {});
    return false;
}

}  // namespace component

namespace {

constexpr TlGeTol nearlyParallel(1e-5, 1e-5);
constexpr double quarterTurn = tlGePi / 2;
constexpr int maxNudges = 1000;  // an axis too short to ever give a cross product is left to the frame check

HxGeVector3D arm(const CataPoints& points, std::size_t from, std::size_t to) {
    return points[to].pos - points[from].pos;
}

// "X<angle>Y" of a unit vector in the plane of the axes; negative below the X axis when `sign` is asked for.
std::string angleWord(const HxGeVector3D& w, const HxGeVector3D& x, const HxGeVector3D& y, bool sign) {
    double angle = w.angleTo(x) * 180.0 / tlGePi;
    if (sign && w.dotProduct(y) < 0) {
        angle = -angle;
    }
    std::string text = "X";
    appendFixed(text, angle);
    return text += 'Y';
}

// A frame about one axis: `first` is normalised in place, `second` a seed that is nudged until the cross product has a
// length.
HxGeVector3D crossWithSeed(const HxGeVector3D& first, HxGeVector3D seed, double HxGeVector3D::*nudged) {
    HxGeVector3D cross = first.crossProduct(seed);
    for (int nudges = 0; cross.length() < 1e-5 && nudges < maxNudges; ++nudges) {
        seed.*nudged += 1;
        cross = first.crossProduct(seed);
    }
    return cross;
}

// Pipes and straight components.
void straightFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) {
    if (!hasRecords(points, 3)) {
        return;
    }
    setPaxi(points, 2, "x");
    setPaxi(points, 1, "-x");
    x = arm(points, 0, 2);
    const HxGeVector3D seed =
        x.isParallelTo(HxGeVector3D::kZAxis, nearlyParallel) ? HxGeVector3D::kYAxis : HxGeVector3D::kZAxis;
    z = crossWithSeed(x, seed, &HxGeVector3D::x);
    y = z.crossProduct(x);
    normalise(x, y, z);
    checkFrame(points, x, y, z);
}

// Tees, and with a fourth arm crosses.
void teeFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) {
    setPaxi(points, 2, "X");
    setPaxi(points, 1, "-X");
    setPaxi(points, 3, "Y");
    x = arm(points, 0, 2);
    y = arm(points, 0, 3);
    z = x.crossProduct(y);
    normalise(x, y, z);
    checkFrame(points, x, y, z);
}

void crossFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) {
    if (hasRecords(points, 5)) {
        setPaxi(points, 4, "-Y");
        teeFrame(points, x, y, z);
    }
}

// Angles and arcs; gives the unit direction of the second arm.
HxGeVector3D angleFrame(const CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) {
    x = arm(points, 1, 0);
    HxGeVector3D w = arm(points, 0, 2);
    z = x.crossProduct(w);
    y = x.crossProduct(z);
    normalise(x, y, z);
    checkFrame(points, x, y, z);
    w.normalize();
    if (y.dotProduct(w) < 1e-6) {
        z = -z;
        y = x.crossProduct(z).normal();
    }
    return w;
}

}  // namespace

void _PCompPipe::buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const {
    straightFrame(points, x, y, z);
}

void _PCompNormal::buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const {
    straightFrame(points, x, y, z);
}

void _PCompNormal::buildFrameOnBranch(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const {
    if (!hasRecords(points, 4)) {
        return;
    }
    setPaxi(points, 1, "-X");
    setPaxi(points, 2, "X");
    setPaxi(points, 3, "X DDANGLE Y");
    y = arm(points, 0, 3);
    x = y.isParallelTo(HxGeVector3D::kZAxis, nearlyParallel) ? HxGeVector3D::kXAxis : HxGeVector3D::kZAxis;
    z = x.crossProduct(y);
    for (int nudges = 0; z.length() < 1e-5 && nudges < maxNudges; ++nudges) {
        x.y += 1;
        z = x.crossProduct(y);
    }
    normalise(x, y, z);
}

void _PCompNormal::getPoints(std::vector<HxGePoint3D>& out) const {
    const HxGePoint3D p[3] = {at(entity, 0), at(entity, 1), at(entity, 2)};
    if (p[0].isEqualTo(p[1]) || p[1].isEqualTo(p[2]) || p[0].isEqualTo(p[2])) {
        hxcad::hextPrintf("\nerror Id:%lld<NormalKeyPt错误>", static_cast<long long>(entity->objectId().toInt()));
        throw ExportException("NormalKeyPt错误");
    }
    out.insert(out.end(), std::begin(p), std::end(p));
}

void _PCompTee::buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const {
    if (hasRecords(points, 4)) {
        teeFrame(points, x, y, z);
    }
}

void _PCompCross::buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const {
    crossFrame(points, x, y, z);
}

void _PCompCross3::buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const {
    crossFrame(points, x, y, z);
}

void _PCompLatera::buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const {
    if (!hasRecords(points, 4)) {
        return;
    }
    setPaxi(points, 2, "X");
    setPaxi(points, 1, "-X");
    x = arm(points, 0, 2);
    const HxGeVector3D w = arm(points, 0, 3);
    const HxGeVector3D n = x.crossProduct(w);
    y = x.rotatedBy(quarterTurn, n);
    if (y.angleTo(w) > quarterTurn) {
        y = x.rotatedBy(-quarterTurn, n);
    }
    // Without a normal the turn leaves x as it is, and x cross x fails the check.
    z = x.crossProduct(y);
    normalise(x, y, z);
    checkFrame(points, x, y, z);
    setPaxi(points, 3, angleWord(w.normal(), x, y, true));
}

void _PCompY::buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const {
    if (!hasRecords(points, 4)) {
        return;
    }
    setPaxi(points, 1, "-X");
    x = arm(points, 1, 0);
    const HxGeVector3D w = arm(points, 0, 3);
    y = x.rotatedBy(quarterTurn, x.crossProduct(w));
    z = x.crossProduct(y);
    normalise(x, y, z);
    checkFrame(points, x, y, z);
    setPaxi(points, 2, angleWord(arm(points, 0, 2).normal(), x, y, true));
    setPaxi(points, 3, angleWord(w.normal(), x, y, true));
}

void _PCompAngle::buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const {
    if (!hasRecords(points, 3)) {
        return;
    }
    setPaxi(points, 1, "-X");
    const HxGeVector3D w = angleFrame(points, x, y, z);
    setPaxi(points, 2, angleWord(w, x, y, false));
}

void _PCompArc::buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const {
    if (!hasRecords(points, 3)) {
        return;
    }
    const HxGeVector3D w = angleFrame(points, x, y, z);
    if (!smrtln::isBend(entity)) {
        setPaxi(points, 1, "-X");
        setPaxi(points, 2, angleWord(w, x, y, false));
        return;
    }
    const double reach = points[2].pos.distanceTo(points[0].pos);
    points[0].paxi = "-X";
    points[0].dist = reach;
    points[1].paxi = "Y";
    points[1].dist = reach;
    points.erase(points.begin() + 2);
}

void _PCompEcc::buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const {
    if (!hasRecords(points, 4)) {
        return;
    }
    x = arm(points, 0, 2);
    y = arm(points, 2, 3);
    points[2].pos = points[1].pos;
    points[3].pos = points[1].pos;
    points[1].pos = points[0].pos;
    setPaxi(points, 1, "-X");
    z = x.crossProduct(y);
    normalise(x, y, z);
    checkFrame(points, x, y, z);
    const HxGeVector3D d = arm(points, 0, 2);
    const HxGePoint3D local(d.dotProduct(x), d.dotProduct(y), d.dotProduct(z));
    for (const auto& [record, word] : {std::pair{std::size_t{2}, "X"}, std::pair{std::size_t{3}, "Y"}}) {
        points[record].pos = local;
        points[record].type = "PTCAR";
        points[record].dir = word;
    }
}

void _PCompBalloon::buildFrame(CataPoints& points, HxGeVector3D& x, HxGeVector3D& y, HxGeVector3D& z) const {
    const HxDbTubeGeneral* balloon = HxDbTubeGeneral::cast(entity);
    x = balloon != nullptr ? -balloon->getRefvec() : HxGeVector3D();
    y = balloon != nullptr ? (-balloon->getInsvec()).normal() : HxGeVector3D();
    z = x.crossProduct(y).normal();
    checkFrame(points, x, y, z);
    std::vector<HxDbObject*> connected;
    entity->getAllConnObject(connected);
    for (const HxDbObject* object : connected) {
        if (const HxDbTubeModel* model = HxDbTubeModel::cast(object); model != nullptr && hasRecords(points, 1)) {
            const char* size = smrtln::getSize(model, model->getConnNoOfSmrtln(entity, 0));
            points[0].bore = size != nullptr ? numberOf(size) : 0;
            break;
        }
    }
}
