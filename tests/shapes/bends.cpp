// Bends, about local Z from X on.
#include "shapes/truth.h"

#include <algorithm>
#include <cmath>

namespace truth {

namespace {

enum class Way { Short, Long, Full, Half, Degrees, Radians, Backward, DegreesBackward };

struct BendCase {
    std::string name;
    Way way;
    double angle;  // of the sweep that comes out
};

const std::vector<BendCase>& bendCases() {
    static const std::vector<BendCase> cases = {
        {"short way", Way::Short, pi / 2},
        {"short way, wide", Way::Short, 2.8},
        {"long way", Way::Long, 2 * pi - 2},
        {"full", Way::Full, 2 * pi},
        {"half", Way::Half, pi},
        {"by degrees", Way::Degrees, pi / 6},
        {"by radians", Way::Radians, 0.8},
        {"by radians backward", Way::Backward, 0.8},
        {"by degrees backward", Way::DegreesBackward, 0.8},
    };
    return cases;
}

bool isBackward(const BendCase& bend) {
    return bend.way == Way::Backward || bend.way == Way::DegreesBackward;
}

// Local frame of the body: a way that ends where the frame begins has its start at the far end.
template <typename Torus>
void setBend(Torus& torus, const BendCase& bend, const Place& at, double radius, double s) {
    const double a = bend.angle;
    const auto onCircle = [&](double angle) {
        return at.at(radius * s * std::cos(angle), radius * s * std::sin(angle), 0);
    };
    const bool inDegrees = bend.way == Way::Degrees || bend.way == Way::DegreesBackward;
    const bool byAngle = inDegrees || bend.way == Way::Radians || bend.way == Way::Backward;
    torus.center = at.at(0, 0, 0);
    torus.startPoint = onCircle(isBackward(bend) ? a : 0);
    torus.form = byAngle ? 1 : 0;
    torus.arcKind = bend.way == Way::Long ? 1 : bend.way == Way::Full ? 2 : bend.way == Way::Half ? 3 : 0;
    const TlGeVector3d axis = at.along(0, 0, 2);
    const bool axisInThird = byAngle || torus.arcKind >= 2;
    torus.thirdField = axisInThird ? TlGePoint3d::kOrigin + axis : onCircle(a);
    torus.angle = (isBackward(bend) ? -a : a) * (inDegrees ? 180 / pi : 1);
    if constexpr (std::is_same_v<Torus, HextSqutorus3D>) {
        torus.normal = axis;
    }
}

// The section turns and changes from `from` to `to` on its way; `sectionOff` is the distance from a section's outline
// in its own plane, x away from the axis.
struct Sections {
    double radius;
    double angle;
    std::function<double(double x, double y, double t)> off;
    bool hasEnds;
};

Off bendOff(const Sections& b) {
    return [b](const TlGePoint3d& p) {
        const double turn = std::atan2(p.y, p.x);
        const double at = turn < -1e-9 ? turn + 2 * pi : turn;
        double least = b.off(std::hypot(p.x, p.y) - b.radius, p.z, std::clamp(at / b.angle, 0.0, 1.0));
        if (b.hasEnds) {
            least = std::min({least, std::fabs(p.y), std::fabs(p.y * std::cos(b.angle) - p.x * std::sin(b.angle))});
        }
        return least;
    };
}

ShapeCase torusCase(const BendCase& bend, double r0, double r1) {
    const double radius = 0.6;
    const auto at = [=](double t) { return r0 + (r1 - r0) * t; };
    const Sections sections{radius, bend.angle,
                            [=](double x, double y, double t) { return std::fabs(std::hypot(x, y) - at(t)); },
                            bend.angle < 2 * pi || r0 != r1};
    const double mean = (r0 * r0 + r0 * r1 + r1 * r1) / 3;
    const bool whole = bend.angle == 2 * pi;
    return {std::string(r0 == r1 ? "torus, " : "reducing torus, ") + bend.name,
            [=](const Place& place, double s) {
                auto torus = make<HextTorus3D>();
                setBend(*torus, bend, place, radius, s);
                const bool backward = isBackward(bend);
                torus->startDiameter = 2 * (backward ? r1 : r0) * s;
                torus->endDiameter = 2 * (backward ? r0 : r1) * s;
                return torus;
            },
            bendOff(sections), pi * mean * radius * bend.angle,
            r0 == r1 ? 2 * pi * r0 * radius * bend.angle + (whole ? 0 : 2 * pi * r0 * r0) : 0,
            [=](double s) {
                const double around = chords(std::max(r0, r1) * s);
                const double along = std::ceil(chords((radius + std::max(r0, r1)) * s) * bend.angle / (2 * pi) - 1e-9);
                return 2 * around * along + (whole && r0 == r1 ? 0 : 2 * (around - 2));
            },
            // The rule knows nothing of the twist of a reducing bend.
            r0 == r1               ? 1.1
            : std::min(r0, r1) > 0 ? 1.8
                                   : 2.0};
}

ShapeCase squareTorusCase(const BendCase& bend, double w0, double h0, double w1, double h1) {
    const double radius = 0.6;
    const auto size = [=](double t) { return TlGePoint3d((w0 + (w1 - w0) * t) / 2, (h0 + (h1 - h0) * t) / 2, 0); };
    const Sections sections{radius, bend.angle,
                            [=](double x, double y, double t) {
                                return std::min(std::fabs(size(t).x - std::fabs(x)),
                                                std::fabs(size(t).y - std::fabs(y)));
                            },
                            bend.angle < 2 * pi || w0 != w1 || h0 != h1};
    const bool even = w0 == w1 && h0 == h1;
    const bool whole = bend.angle == 2 * pi;
    const double mean = w0 * h0 / 3 + (w0 * h1 + w1 * h0) / 6 + w1 * h1 / 3;
    return {std::string(even ? "square torus, " : "reducing square torus, ") + bend.name,
            [=](const Place& place, double s) {
                auto torus = make<HextSqutorus3D>();
                setBend(*torus, bend, place, radius, s);
                const bool backward = isBackward(bend);
                torus->startWidth = (backward ? w1 : w0) * s;
                torus->startHeight = (backward ? h1 : h0) * s;
                torus->endWidth = (backward ? w0 : w1) * s;
                torus->endHeight = (backward ? h0 : h1) * s;
                return torus;
            },
            bendOff(sections),
            mean * radius * bend.angle,
            even ? 2 * (w0 + h0) * radius * bend.angle + (whole ? 0 : 2 * w0 * h0) : 0,
            !even ? std::function<double(double)>(none)
                  : [=](double s) {
                        const auto along = [&](double r) {
                            return std::ceil(chords(r * s) * bend.angle / (2 * pi) - 1e-9);
                        };
                        return 4 * (along(radius + w0 / 2) + along(radius - w0 / 2)) + (whole ? 0 : 4);
                    }};
}

}  // namespace

void addBends(Shapes& out) {
    for (const BendCase& bend : bendCases()) {
        out.push_back(torusCase(bend, 0.15, 0.15));
        out.push_back(squareTorusCase(bend, 0.3, 0.2, 0.3, 0.2));
    }
    const BendCase quarter = bendCases().front();
    const BendCase backward = bendCases().back();
    const BendCase full = bendCases()[3];
    out.push_back(torusCase(quarter, 0.25, 0.1));
    out.push_back(torusCase(quarter, 0.1, 0.25));
    out.push_back(torusCase(backward, 0.25, 0.1));
    out.push_back(torusCase(quarter, 0.2, 0));
    out.push_back(torusCase(quarter, 0, 0.2));
    out.push_back(torusCase(full, 0.25, 0.1));
    out.push_back(squareTorusCase(quarter, 0.4, 0.5, 0.2, 0.1));
    out.push_back(squareTorusCase(quarter, 0.1, 0.2, 0.4, 0.5));
    out.push_back(squareTorusCase(quarter, 0.3, 0.4, 0, 0.2));
    out.push_back(squareTorusCase(quarter, 0, 0, 0.3, 0.4));
}

}  // namespace truth
