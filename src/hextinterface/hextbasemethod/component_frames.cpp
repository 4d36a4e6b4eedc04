// Local frames and axial words of the component families for the catalogue.
#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/component_classes.h"
#include "hextinterface/hextbasemethod/macro_text.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/smrtln.h"

namespace {

constexpr double quarterTurn = tlGePi / 2;
constexpr int maxNudges = 1000;  // an axis too short to ever give a cross product is left to the frame check

// Sets `paxi` of record i, and `dist` as its distance from record 0.
void setPaxi(CataPoints& points, std::size_t i, std::string_view word) {
    points[i].paxi = word;
    points[i].dist = points[i].pos.distanceTo(points[0].pos);
}

LocalFrame normalised(LocalFrame frame) {
    frame.x.normalize();
    frame.y.normalize();
    frame.z.normalize();
    return frame;
}

// ExportException "无效方向" with all points on the command line when an axis has no length.
void checkFrame(const CataPoints& points, const LocalFrame& frame) {
    if (frame.x.length() != 0 && frame.y.length() != 0 && frame.z.length() != 0) {
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

LocalFrame checked(const CataPoints& points, const LocalFrame& frame) {
    const LocalFrame unit = normalised(frame);
    checkFrame(points, unit);
    return unit;
}

// A component without its records has no frame.
void requireRecords(const CataPoints& points, std::size_t count) {
    if (points.size() < count) {
        checkFrame(points, {});
    }
}

HxGeVector3D arm(const CataPoints& points, std::size_t from, std::size_t to) {
    return points[to].pos - points[from].pos;
}

// "X<angle>Y" of a unit vector in the plane of the axes; negative below the X axis when `sign` is asked for.
std::string angleWord(const HxGeVector3D& w, const LocalFrame& frame, bool sign) {
    double angle = w.angleTo(frame.x) * 180.0 / tlGePi;
    if (sign && w.dotProduct(frame.y) < 0) {
        angle = -angle;
    }
    std::string text = "X";
    appendFixed(text, angle);
    return text += 'Y';
}

// `seed` with one coordinate counted up until its cross product with `first` has a length.
HxGeVector3D nudged(const HxGeVector3D& first, HxGeVector3D seed, double HxGeVector3D::*coordinate) {
    for (int nudges = 0; first.crossProduct(seed).length() < 1e-5 && nudges < maxNudges; ++nudges) {
        seed.*coordinate += 1;
    }
    return seed;
}

// Pipes and straight components.
LocalFrame straightFrame(CataPoints& points) {
    requireRecords(points, 3);
    setPaxi(points, 2, "x");
    setPaxi(points, 1, "-x");
    const HxGeVector3D x = arm(points, 0, 2);
    const HxGeVector3D seed =
        x.isParallelTo(HxGeVector3D::kZAxis, nearlyParallel) ? HxGeVector3D::kYAxis : HxGeVector3D::kZAxis;
    const HxGeVector3D z = x.crossProduct(nudged(x, seed, &HxGeVector3D::x));
    return checked(points, {x, z.crossProduct(x), z});
}

// Tees, and with a fourth arm crosses.
LocalFrame teeFrame(CataPoints& points) {
    setPaxi(points, 2, "X");
    setPaxi(points, 1, "-X");
    setPaxi(points, 3, "Y");
    const HxGeVector3D x = arm(points, 0, 2);
    const HxGeVector3D y = arm(points, 0, 3);
    return checked(points, {x, y, x.crossProduct(y)});
}

// Angles and arcs. `second`: the unit direction of the second arm.
struct AngleFrame {
    LocalFrame frame;
    HxGeVector3D second;
};

AngleFrame angleFrame(const CataPoints& points) {
    requireRecords(points, 3);
    const HxGeVector3D x = arm(points, 1, 0);
    const HxGeVector3D second = arm(points, 0, 2);
    const HxGeVector3D z = x.crossProduct(second);
    LocalFrame frame = checked(points, {x, x.crossProduct(z), z});
    const HxGeVector3D w = second.normal();
    if (frame.y.dotProduct(w) < 1e-6) {
        frame.z = -frame.z;
        frame.y = frame.x.crossProduct(frame.z).normal();
    }
    return {frame, w};
}

}  // namespace

LocalFrame _PCompPipe::buildFrame(CataPoints& points) const {
    return straightFrame(points);
}

LocalFrame _PCompNormal::buildFrame(CataPoints& points) const {
    return straightFrame(points);
}

LocalFrame _PCompNormal::buildFrameOnBranch(CataPoints& points) const {
    requireRecords(points, 4);
    setPaxi(points, 1, "-X");
    setPaxi(points, 2, "X");
    setPaxi(points, 3, "X DDANGLE Y");
    const HxGeVector3D y = arm(points, 0, 3);
    const HxGeVector3D seed =
        y.isParallelTo(HxGeVector3D::kZAxis, nearlyParallel) ? HxGeVector3D::kXAxis : HxGeVector3D::kZAxis;
    const HxGeVector3D x = nudged(y, seed, &HxGeVector3D::y);
    return normalised({x, y, x.crossProduct(y)});
}

std::vector<HxGePoint3D> _PCompNormal::getPoints() const {
    std::vector<HxGePoint3D> p = NumberedComp::getPoints();
    if (p[0].isEqualTo(p[1]) || p[1].isEqualTo(p[2]) || p[0].isEqualTo(p[2])) {
        hxcad::hextPrintf("\nerror Id:%lld<NormalKeyPt错误>", idNumber(entity));
        throw ExportException("NormalKeyPt错误");
    }
    return p;
}

LocalFrame _PCompTee::buildFrame(CataPoints& points) const {
    requireRecords(points, 4);
    return teeFrame(points);
}

LocalFrame _PCompCross::buildFrame(CataPoints& points) const {
    requireRecords(points, 5);
    setPaxi(points, 4, "-Y");
    return teeFrame(points);
}

LocalFrame _PCompLatera::buildFrame(CataPoints& points) const {
    requireRecords(points, 4);
    setPaxi(points, 2, "X");
    setPaxi(points, 1, "-X");
    const HxGeVector3D x = arm(points, 0, 2);
    const HxGeVector3D w = arm(points, 0, 3);
    const HxGeVector3D n = x.crossProduct(w);
    HxGeVector3D y = x.rotatedBy(quarterTurn, n);
    if (y.angleTo(w) > quarterTurn) {
        y = x.rotatedBy(-quarterTurn, n);
    }
    // Without a normal the turn leaves x as it is, and x cross x fails the check.
    const LocalFrame frame = checked(points, {x, y, x.crossProduct(y)});
    setPaxi(points, 3, angleWord(w.normal(), frame, true));
    return frame;
}

LocalFrame _PCompY::buildFrame(CataPoints& points) const {
    requireRecords(points, 4);
    setPaxi(points, 1, "-X");
    const HxGeVector3D x = arm(points, 1, 0);
    const HxGeVector3D w = arm(points, 0, 3);
    const HxGeVector3D y = x.rotatedBy(quarterTurn, x.crossProduct(w));
    const LocalFrame frame = checked(points, {x, y, x.crossProduct(y)});
    setPaxi(points, 2, angleWord(arm(points, 0, 2).normal(), frame, true));
    setPaxi(points, 3, angleWord(w.normal(), frame, true));
    return frame;
}

LocalFrame _PCompAngle::buildFrame(CataPoints& points) const {
    requireRecords(points, 3);
    setPaxi(points, 1, "-X");
    const AngleFrame angle = angleFrame(points);
    setPaxi(points, 2, angleWord(angle.second, angle.frame, false));
    return angle.frame;
}

LocalFrame _PCompArc::buildFrame(CataPoints& points) const {
    const AngleFrame angle = angleFrame(points);
    if (!smrtln::isBend(entity)) {
        setPaxi(points, 1, "-X");
        setPaxi(points, 2, angleWord(angle.second, angle.frame, false));
        return angle.frame;
    }
    const double reach = points[2].pos.distanceTo(points[0].pos);
    points[0].paxi = "-X";
    points[0].dist = reach;
    points[1].paxi = "Y";
    points[1].dist = reach;
    points.erase(points.begin() + 2);
    return angle.frame;
}

LocalFrame _PCompEcc::buildFrame(CataPoints& points) const {
    requireRecords(points, 4);
    const HxGeVector3D x = arm(points, 0, 2);
    const HxGeVector3D y = arm(points, 2, 3);
    points[2].pos = points[1].pos;
    points[3].pos = points[1].pos;
    points[1].pos = points[0].pos;
    setPaxi(points, 1, "-X");
    const LocalFrame frame = checked(points, {x, y, x.crossProduct(y)});
    const HxGeVector3D d = arm(points, 0, 2);
    const HxGePoint3D local(d.dotProduct(frame.x), d.dotProduct(frame.y), d.dotProduct(frame.z));
    for (const auto& [record, word] : {std::pair{std::size_t{2}, "X"}, std::pair{std::size_t{3}, "Y"}}) {
        points[record].pos = local;
        points[record].type = "PTCAR";
        points[record].dir = word;
    }
    return frame;
}

LocalFrame _PCompBalloon::buildFrame(CataPoints& points) const {
    const HxDbTubeGeneral* balloon = HxDbTubeGeneral::cast(entity);
    const HxGeVector3D x = balloon != nullptr ? -balloon->getRefvec() : HxGeVector3D();
    const HxGeVector3D y = balloon != nullptr ? (-balloon->getInsvec()).normal() : HxGeVector3D();
    const LocalFrame frame{x, y, x.crossProduct(y).normal()};
    checkFrame(points, frame);
    std::vector<HxDbObject*> connected;
    entity->getAllConnObject(connected);
    for (const HxDbObject* object : connected) {
        if (const HxDbTubeModel* model = HxDbTubeModel::cast(object)) {
            requireRecords(points, 1);
            const char* size = smrtln::getSize(model, model->getConnNoOfSmrtln(entity, 0));
            points[0].bore = size != nullptr ? numberOf(size) : 0;
            break;
        }
    }
    return frame;
}
