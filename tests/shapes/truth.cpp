#include "shapes/truth.h"

#include <algorithm>
#include <cmath>

namespace truth {

namespace {

double ahead(double from, double to) {
    const double angle = std::fmod(to - from, 2 * pi);
    return angle < 0 ? angle + 2 * pi : angle;
}

double distanceToStroke(double r, double z, const Stroke& s) {
    const TlGePoint3d p(r, z, 0);
    if (s.radius > 0) {
        const auto angle = [&s](const TlGePoint3d& q) { return std::atan2(q.y - s.center.y, q.x - s.center.x); };
        const double sweep = s.a.isEqualTo(s.b) ? 2 * pi : ahead(angle(s.a), angle(s.b));
        if (ahead(angle(s.a), angle(p)) <= sweep) {
            return std::fabs(p.distanceTo(s.center) - s.radius);
        }
        return std::min(p.distanceTo(s.a), p.distanceTo(s.b));
    }
    const TlGeVector3d ab = s.b - s.a;
    const double t = std::clamp((p - s.a).dotProduct(ab) / ab.lengthSqrd(), 0.0, 1.0);
    return p.distanceTo(s.a + ab * t);
}

double distanceToStrokes(double r, double z, const std::vector<Stroke>& strokes) {
    double least = 1e300;
    for (const Stroke& s : strokes) {
        least = std::min(least, distanceToStroke(r, z, s));
    }
    return least;
}

}  // namespace

Off revolvedOff(const std::vector<Stroke>& strokes, double angle) {
    return [=](const TlGePoint3d& p) {
        const double r = std::hypot(p.x, p.y);
        double least = distanceToStrokes(r, p.z, strokes);
        if (angle < 2 * pi) {
            least = std::min({least, std::fabs(p.y), std::fabs(p.y * std::cos(angle) - p.x * std::sin(angle))});
        }
        return least;
    };
}

Off extrudedOff(const std::vector<Stroke>& strokes, double height) {
    return [=](const TlGePoint3d& p) {
        return std::min({distanceToStrokes(p.x, p.y, strokes), std::fabs(p.z), std::fabs(height - p.z)});
    };
}

std::vector<Stroke> polygon(const Points& corners) {
    std::vector<Stroke> out;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        out.push_back({corners[i], corners[(i + 1) % corners.size()], 0, {}});
    }
    return out;
}

}  // namespace truth
