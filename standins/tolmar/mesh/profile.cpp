#include "tolmar/mesh/profile.h"

#include "tolmar/mesh/extrude.h"

#include <cmath>
#include <limits>

namespace tolmar {

namespace {

// The facets between two rings stand off by the chords of the profile and by those of the rings together. This much of
// the tolerance goes to the former.
constexpr double profileShare = 0.55;
// A tapered bend is a twisted surface. Where its section is round, the twist gets a part of the tolerance of its own,
// the more the faster the section changes.
constexpr double leastTwistShare = 0.08;
constexpr double mostTwistShare = 0.45;
constexpr double slopeFactor = 1.8;
// A surface that is an arc all over (a sphere, a torus) may swell: its points stand this much outside, so that the
// facets may cut in deeper. In parts of the tolerance, and at most of the arc's radius.
constexpr double swellShare = 0.4;
constexpr double mostSwell = 0.05;
constexpr int refinements = 4;
constexpr double refinement = 4;
constexpr double unlimited = std::numeric_limits<double>::infinity();
// An elliptical arc is divided within its quarters.
constexpr double widestEllipseChord = tlGePi / 2;

// How far the ellipse's point at `t` stands from its centre along the normal, which is the radius by which a small
// chord there stands off.
double normalDistance(const OutlinePiece& arc, double t) {
    const double c = arc.radiusY * std::cos(t);
    const double s = arc.radiusX * std::sin(t);
    return arc.radiusX * arc.radiusY / std::sqrt(c * c + s * s);
}

// A point of an arc: where the surface's normal points there, and the curvature of the arc.
struct ArcPoint {
    double nr;
    double nz;
    double curvature;
};

// The largest sag of a ring at an inner point of an arc for which the middles of the ring's chords stay within
// `tolerance` on the far side of the surface.
double arcPointLimit(const ArcPoint& p, double tolerance) {
    const double bend = p.nz * p.nz * p.curvature;
    if (bend * tolerance < 1e-12) {
        return p.nr < 0 ? tolerance : unlimited;
    }
    return (p.nr + std::sqrt(p.nr * p.nr + 2 * tolerance * bend)) / bend;
}

ArcPoint ellipsePoint(const OutlinePiece& arc, double t) {
    const double c = arc.radiusY * std::cos(t);
    const double s = arc.radiusX * std::sin(t);
    const double length = std::sqrt(c * c + s * s);
    return {c / length, s / length, arc.radiusX * arc.radiusY / (length * length * length)};
}

// The steps of an arc of an ellipse, each as wide as its sag allows, then all narrowed to fill the arc.
class EllipseSteps {
public:
    EllipseSteps(const OutlinePiece& arc, double sag) : arc_(arc), sag_(sag), direction_(arc.sweep < 0 ? -1 : 1) {
        const double whole = std::fabs(arc.sweep);
        double done = 0;
        while (done < whole - 1e-9) {
            const double step = stepAt(arc.startAngle + direction_ * done);
            steps_.push_back(step);
            done += step;
        }
        scale_ = direction_ * whole / done;
    }
    std::size_t count() const { return steps_.size(); }
    double step(std::size_t i) const { return steps_[i] * scale_; }

private:
    double stepAt(double t) const {
        const double here = width(normalDistance(arc_, t));
        const double middle = width(normalDistance(arc_, t + direction_ * here / 2));
        const double there = width(normalDistance(arc_, t + direction_ * here));
        return std::min({here, middle, there});
    }
    double width(double radius) const { return std::min(chordAngle(radius, sag_), widestEllipseChord); }

    const OutlinePiece& arc_;
    double sag_;
    double direction_;
    double scale_ = 1;
    std::vector<double> steps_;
};

// A circle clear of the axis, or an arc about the axis from the one of its ends on it to the other.
bool isArcAllOver(const Outline& profile) {
    const OutlinePiece& arc = profile.front();
    const bool closed = profile.size() == 1 && arc.center.x > arc.radiusX * (1 + mostSwell);
    const bool fromAxisToAxis =
        profile.size() == 2 && !profile[1].isArc && arc.start.x == 0 && profile[1].start.x == 0 && arc.center.x == 0;
    return arc.isArc && arc.sweep > 0 && arc.radiusX == arc.radiusY && (closed || fromAxisToAxis);
}

double twistShareOf(const RevolvedBody& body) {
    const OutlinePiece& arc = body.profile.front();
    if (!body.tapered || !arc.isArc) {
        return 0;
    }
    const double slope = arc.radiusX * std::fabs(body.endFactor.x - 1) / (body.angle * body.pivot.x);
    return std::clamp(slopeFactor * slope * std::sqrt(arc.radiusX / body.pivot.x), leastTwistShare, mostTwistShare);
}

class ProfileMaker {
public:
    ProfileMaker(const RevolvedBody& body, double tolerance, MeshScratch& scratch, Profile& profile)
        : body_(body), tolerance_(tolerance * (1 - twistShareOf(body))), twistTolerance_(tolerance - tolerance_),
          scratch_(scratch), profile_(profile) {
        if (twistTolerance_ == 0) {
            twistTolerance_ = tolerance;
        }
        growth_ = body.tapered ? std::max({1.0, body.endFactor.x, body.endFactor.y}) : 1.0;
        profile_.pieces.clear();
        std::copy(body.profile.begin(), body.profile.end(), profile_.pieces.extend(body.profile.size()));
        if (growth_ == 1 && isArcAllOver(body.profile)) {
            swell(std::min(swellShare * tolerance, mostSwell * body.profile.front().radiusX));
        }
    }

    // `share` of what the facets may cut in is for the chords of the profile.
    bool flatten(double share) {
        const double sag = share * (tolerance_ + swell_);
        profile_.chords.clear();
        profile_.limits.clear();
        scratch_.region.clear();
        for (const OutlinePiece& piece : profile_.pieces) {
            scratch_.region.edgeOfPiece.push_back(static_cast<std::uint32_t>(scratch_.region.pointCount()));
            if (!piece.isArc) {
                addLine(piece);
            } else if (!addArc(piece, sag / growth_)) {
                return false;
            }
        }
        const auto count = static_cast<std::uint32_t>(scratch_.region.pointCount());
        scratch_.region.edgeOfPiece.push_back(count);
        scratch_.region.loopEnds.push_back(count);
        addNormals();
        return true;
    }

    // After the outlines were united there are only straight chords and sharp corners.
    void resetToLines() {
        const std::size_t count = scratch_.region.pointCount();
        profile_.chords.clear();
        profile_.limits.clear();
        std::fill_n(profile_.chords.extend(count), count, ProfileChord{0, 0, false});
        std::fill_n(profile_.limits.extend(count), count, tolerance_);
        addNormals();
    }

    bool divideRings() {
        const Region& region = scratch_.region;
        Ring* const rings = startRings(region.pointCount());
        std::size_t first = 0;
        for (const std::uint32_t loopEnd : region.loopEnds) {
            for (std::size_t i = first; i < loopEnd; ++i) {
                const std::size_t before = i == first ? loopEnd - 1 : i - 1;
                rings[i].chords = ringChords(i, std::min(chordLimit(before), chordLimit(i)));
            }
            if (body_.tapered) {
                divideTwisted(rings, first, loopEnd);
            }
            if (body_.tapered && (body_.endFactor.x == 0 || body_.endFactor.y == 0)) {
                makeEqual(rings, first, loopEnd);
            } else {
                equaliseRings(rings, first, loopEnd);
            }
            first = loopEnd;
        }
        return numberRings();
    }

private:
    void swell(double by) {
        swell_ = by;
        const Point2 center = profile_.pieces[0].center;
        const double factor = 1 + by / profile_.pieces[0].radiusX;
        for (std::size_t i = 0; i < profile_.pieces.size(); ++i) {
            OutlinePiece& piece = profile_.pieces[i];
            piece.start = {center.x + (piece.start.x - center.x) * factor,
                           center.y + (piece.start.y - center.y) * factor};
            piece.radiusX *= factor;
            piece.radiusY *= factor;
        }
    }

    void addLine(const OutlinePiece& piece) {
        scratch_.region.points.push_back(piece.start);
        profile_.chords.push_back({0, 0, false});
        profile_.limits.push_back(tolerance_);
    }

    bool addArc(const OutlinePiece& piece, double sag) {
        scratch_.region.hasArcs = true;
        const std::uint32_t chords = arcChords(std::max(piece.radiusX, piece.radiusY), piece.sweep, sag);
        if (scratch_.region.pointCount() + chords > maxTriangles) {
            return false;
        }
        if (piece.radiusX != piece.radiusY) {
            addEllipse(piece, sag);
            return true;
        }
        flattenPiece(piece, chords, scratch_.arcs, scratch_.region.points);
        const double step = piece.sweep / chords;
        const double chordSag = piece.radiusX * (1 - std::cos(step / 2));
        const bool hollow = piece.sweep < 0;
        std::fill_n(profile_.chords.extend(chords), chords, ProfileChord{chordSag, 0, hollow});
        profile_.limits.push_back(tolerance_);
        const Point2* const points = scratch_.region.points.end() - chords;
        const double inverse = 1 / piece.radiusX;
        for (std::uint32_t k = 1; k < chords; ++k) {
            const ArcPoint at{(points[k].x - piece.center.x) * inverse, (points[k].y - piece.center.y) * inverse,
                              inverse};
            profile_.limits.push_back(pointLimit(at, hollow));
        }
        return true;
    }

    void addEllipse(const OutlinePiece& piece, double sag) {
        const EllipseSteps steps(piece, sag);
        double t = piece.startAngle;
        for (std::size_t k = 0; k < steps.count(); ++k) {
            const double step = steps.step(k);
            const Point2 at{piece.center.x + piece.radiusX * std::cos(t), piece.center.y + piece.radiusY * std::sin(t)};
            scratch_.region.points.push_back(k == 0 ? piece.start : at);
            profile_.limits.push_back(k == 0 ? tolerance_ : pointLimit(ellipsePoint(piece, t), piece.sweep < 0));
            profile_.chords.push_back(
                {normalDistance(piece, t + step / 2) * (1 - std::cos(step / 2)), 0, piece.sweep < 0});
            t += step;
        }
    }

    // On a hollow arc the far side is the other one.
    double pointLimit(ArcPoint at, bool hollow) const {
        at.nr = hollow ? -at.nr : at.nr;
        return arcPointLimit(at, tolerance_ - swell_);
    }

    void addNormals() {
        Region& region = scratch_.region;
        for (std::size_t i = 0; i < region.pointCount(); ++i) {
            // A rounding off the axis is on it.
            Point2& p = region.points[i];
            p.x = p.x <= leastSize ? 0 : p.x;
        }
        std::size_t first = 0;
        for (const std::uint32_t loopEnd : region.loopEnds) {
            for (std::size_t i = first; i < loopEnd; ++i) {
                const Point2& a = region.points[i];
                const Point2& b = region.points[i + 1 == loopEnd ? first : i + 1];
                const double dr = b.x - a.x;
                const double dz = b.y - a.y;
                profile_.chords[i].radial = dz / std::sqrt(dr * dr + dz * dz);
            }
            first = loopEnd;
        }
    }

    // The most that the rings at the ends of a chord may stand off their circles: towards the side to which the
    // profile's own chord stands off, both add up.
    double chordLimit(std::size_t chord) const {
        const ProfileChord& c = profile_.chords[chord];
        const bool addsUp = (c.radial > 0) != c.hollow;
        const double left = addsUp ? tolerance_ + swell_ - c.sag * growth_ : tolerance_ - swell_;
        const double radial = std::fabs(c.radial);
        return radial < 1e-12 ? unlimited : left / radial;
    }

    // How fast a point of a tapered section changes its place, as a part of how fast it moves on. The curve that it
    // runs along bends the more.
    double bend(std::size_t i) const {
        if (!body_.tapered) {
            return 1;
        }
        const Point2& p = scratch_.region.points[i];
        const double slope = std::hypot((body_.endFactor.x - 1) * (p.x - body_.pivot.x),
                                        (body_.endFactor.y - 1) * (p.y - body_.pivot.y)) /
                             (body_.angle * std::max(p.x, leastSize));
        return 1 + 2 * slope * slope;
    }

    // The largest radius that a point reaches.
    double reach(std::size_t i) const {
        const double r = scratch_.region.points[i].x;
        return body_.tapered ? std::max(r, body_.pivot.x + (r - body_.pivot.x) * body_.endFactor.x) : r;
    }

    std::uint32_t ringChords(std::size_t i, double limit) const {
        const double radius = reach(i);
        if (radius == 0) {
            return 0;
        }
        return arcChords(radius, body_.angle, std::min(limit, profile_.limits[i]) / bend(i));
    }

    // Quadrangles of a tapered body are twisted: their diagonal stands off by how much the section changes and by how
    // unequal the two rings are.
    std::uint32_t twistChords(std::size_t i, std::size_t j) const {
        const Point2& a = scratch_.region.points[i];
        const Point2& b = scratch_.region.points[j];
        const double change = std::fabs(body_.endFactor.x - 1) * std::fabs(a.x - body_.pivot.x) +
                              std::fabs(body_.endFactor.y - 1) * std::fabs(a.y - body_.pivot.y);
        const double twist = change * growth_ * std::fabs(a.x - b.x) * growth_ / (2 * (a.x + b.x));
        return static_cast<std::uint32_t>(std::min(std::ceil(twist / twistTolerance_), 1e9));
    }

    void divideTwisted(Ring* rings, std::size_t first, std::size_t loopEnd) const {
        for (std::size_t i = first; i < loopEnd; ++i) {
            const std::size_t j = i + 1 == loopEnd ? first : i + 1;
            const std::uint32_t least = twistChords(i, j);
            rings[i].chords = std::max(rings[i].chords, least);
            rings[j].chords = std::max(rings[j].chords, least);
        }
    }

    // The chords of the larger ring must not cut the smaller one.
    void equalise(Ring* rings, std::size_t i, std::size_t j) const {
        if (rings[i].chords == rings[j].chords || rings[i].chords == 0 || rings[j].chords == 0) {
            return;
        }
        const bool larger = scratch_.region.points[i].x > scratch_.region.points[j].x;
        const std::size_t large = larger ? i : j;
        const std::size_t small = larger ? j : i;
        // A little less than the cosine leaves of the radius.
        const double half = body_.angle / (2.0 * rings[large].chords);
        if (scratch_.region.points[small].x > scratch_.region.points[large].x * (1 - half * half / 2)) {
            rings[i].chords = rings[j].chords = std::max(rings[i].chords, rings[j].chords);
        }
    }

    // Rings that meet in a tip.
    static void makeEqual(Ring* rings, std::size_t first, std::size_t loopEnd) {
        std::uint32_t most = 0;
        for (std::size_t i = first; i < loopEnd; ++i) {
            most = std::max(most, rings[i].chords);
        }
        for (std::size_t i = first; i < loopEnd; ++i) {
            rings[i].chords = most;
        }
    }

    void equaliseRings(Ring* rings, std::size_t first, std::size_t loopEnd) const {
        for (int round = 0; round < 2; ++round) {
            for (std::size_t i = first; i < loopEnd; ++i) {
                equalise(rings, i, i + 1 == loopEnd ? first : i + 1);
            }
            for (std::size_t i = loopEnd; i-- > first;) {
                equalise(rings, i, i + 1 == loopEnd ? first : i + 1);
            }
        }
    }

    Ring* startRings(std::size_t count) {
        profile_.rings.clear();
        return profile_.rings.extend(count);
    }

    bool numberRings() {
        const std::uint32_t more = body_.angle < twoPi ? 1 : 0;
        std::size_t nodes = 0;
        for (std::size_t i = 0; i < profile_.rings.size(); ++i) {
            Ring& ring = profile_.rings[i];
            ring.first = static_cast<std::uint32_t>(nodes);
            nodes += ring.chords == 0 ? 1 : std::size_t{ring.chords} + more;
            if (2 * nodes > maxTriangles) {
                return false;
            }
        }
        return true;
    }

    const RevolvedBody& body_;
    double tolerance_;
    double twistTolerance_;
    double growth_ = 1;
    double swell_ = 0;
    MeshScratch& scratch_;
    Profile& profile_;
};

// Triangles of the profile, where it needs any. True also for a convex profile, which needs none when the turn is
// whole.
RegionCheck checkProfile(MeshScratch& scratch) {
    const Region& region = scratch.region;
    if (hasFlatLoop(region)) {
        return RegionCheck::Failed;
    }
    scratch.regionTriangles.clear();
    if (isConvexLoop(region, leastCross(region))) {
        const auto n = static_cast<std::uint32_t>(region.pointCount());
        fan(scratch.regionTriangles.extend(3 * (std::size_t{n} - 2)), {0, n});
        return RegionCheck::Ok;
    }
    return scratch.sweep.run(region, scratch.regionTriangles);
}

MeshStatus uniteProfile(MeshScratch& scratch) {
    if (!uniteOutlines(scratch.region)) {
        return MeshStatus::BadRegion;
    }
    const bool done =
        checkProfile(scratch) != RegionCheck::Failed || tessellateRegion(scratch.region, scratch.regionTriangles);
    // Parts that almost lie on each other may lose a triangle.
    return done && fillsLoops(scratch.region, scratch.regionTriangles) ? MeshStatus::Ok : MeshStatus::BadRegion;
}

}  // namespace

MeshStatus makeProfile(const RevolvedBody& body, double tolerance, MeshScratch& scratch, Profile& profile) {
    ProfileMaker maker(body, tolerance, scratch, profile);
    RegionCheck check = RegionCheck::Failed;
    double share = profileShare;
    for (int round = 0; round <= refinements && check == RegionCheck::Failed; ++round, share /= refinement) {
        if (!maker.flatten(share)) {
            return MeshStatus::TooManyTriangles;
        }
        check = checkProfile(scratch);
        if (!scratch.region.hasArcs) {
            break;
        }
    }
    profile.touching = check != RegionCheck::Ok;
    if (check == RegionCheck::Failed) {
        maker.flatten(profileShare);
        const MeshStatus united = uniteProfile(scratch);
        if (united != MeshStatus::Ok) {
            return united;
        }
        maker.resetToLines();
    }
    return maker.divideRings() ? MeshStatus::Ok : MeshStatus::TooManyTriangles;
}

}  // namespace tolmar
