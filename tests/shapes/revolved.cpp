// Revolved profiles, in the X Z plane of the frame.
#include "shapes/truth.h"

#include <algorithm>
#include <cmath>

namespace truth {

namespace {

struct Revolved {
    std::string name;
    double angle;
    HextVertexList profile;  // x and z
    std::vector<Stroke> strokes;
    double area;
    double centroid;  // of the area, from the axis
    std::function<double(double)> rule;
};

ShapeCase revolvedCase(const Revolved& r) {
    return {r.name,
            [=](const Place& at, double s) {
                auto revolve = make<HextRevolve>();
                // Backward from the far end is the same solid.
                const double start = r.angle < 0 ? -r.angle : 0;
                HextVertexList list;
                for (const HextVertex& v : r.profile) {
                    const double x = v.point.x * s;
                    list.push_back({v.kind, at.at(x * std::cos(start), x * std::sin(start), v.point.z * s)});
                }
                revolve->center = at.at(0, 0, 0.3 * s);
                revolve->axis = at.along(0, 0, 4);
                revolve->angle = r.angle;
                revolve->profile = list;
                return revolve;
            },
            revolvedOff(r.strokes, std::fabs(r.angle)),
            r.area * r.centroid * std::fabs(r.angle),
            0,
            r.rule};
}

}  // namespace

void addRevolved(Shapes& out) {
    const auto vertex = [](int kind, double x, double z) {
        return HextVertex{static_cast<std::int16_t>(kind), {x, 0, z}};
    };
    const HextVertexList ring{vertex(1, 0.3, 0), vertex(1, 0.5, 0), vertex(1, 0.5, 0.2), vertex(4, 0.3, 0.2)};
    const std::vector<Stroke> ringStrokes = polygon({{0.3, 0, 0}, {0.5, 0, 0}, {0.5, 0.2, 0}, {0.3, 0.2, 0}});
    const auto ringRule = [](double angle, double ends) {
        return [=](double s) {
            const auto along = [&](double r) { return std::ceil(chords(r * s) * angle / (2 * pi) - 1e-9); };
            return 4 * (along(0.5) + along(0.3)) + ends;
        };
    };
    out.push_back(revolvedCase({"revolved ring, whole", 2 * pi, ring, ringStrokes, 0.04, 0.4, ringRule(2 * pi, 0)}));
    out.push_back(revolvedCase({"revolved ring, part", 1.3, ring, ringStrokes, 0.04, 0.4, ringRule(1.3, 4)}));
    out.push_back(revolvedCase({"revolved ring, backward", -1.3, ring, ringStrokes, 0.04, 0.4, ringRule(1.3, 4)}));
    // On the axis along an edge, and at a point.
    const HextVertexList onAxis{vertex(1, 0, 0), vertex(1, 0.4, 0.1), vertex(1, 0.3, 0.5), vertex(4, 0, 0.6)};
    const std::vector<Stroke> open{
        {{0, 0, 0}, {0.4, 0.1, 0}, 0, {}}, {{0.4, 0.1, 0}, {0.3, 0.5, 0}, 0, {}}, {{0.3, 0.5, 0}, {0, 0.6, 0}, 0, {}}};
    std::vector<Stroke> closed = open;
    closed.push_back({{0, 0.6, 0}, {0, 0, 0}, 0, {}});
    const double area = 0.02 + 0.035 * 4 + 0.015;
    const double moment = (0.4 * 0.4 * 0.1 + 0.4 * (0.16 + 0.12 + 0.09) + 0.3 * 0.3 * 0.1) / 6;
    out.push_back(revolvedCase({"revolved on the axis, whole", 2 * pi, onAxis, open, area, moment / area, none}));
    out.push_back(revolvedCase({"revolved on the axis, part", 4, onAxis, open, area, moment / area, none}));
    const HextVertexList touching{vertex(1, 0, 0.2), vertex(1, 0.4, 0), vertex(4, 0.4, 0.5)};
    const std::vector<Stroke> triangle = polygon({{0, 0.2, 0}, {0.4, 0, 0}, {0.4, 0.5, 0}});
    out.push_back(revolvedCase({"revolved, touching the axis", 2 * pi, touching, triangle, 0.1, 0.8 / 3, none}));
    out.push_back(revolvedCase({"revolved, touching, part", 2, touching, triangle, 0.1, 0.8 / 3, none}));
    // A bead and a groove: a rectangle with a half circle out and one in.
    const HextVertexList bead{vertex(1, 0.3, 0),   vertex(2, 0.5, 0),   vertex(3, 0.6, 0.1),   vertex(1, 0.5, 0.2),
                              vertex(1, 0.5, 0.4), vertex(2, 0.3, 0.4), vertex(3, 0.36, 0.34), vertex(4, 0.3, 0.28)};
    const std::vector<Stroke> beadStrokes{{{0.3, 0, 0}, {0.5, 0, 0}, 0, {}},
                                          {{0.5, 0, 0}, {0.5, 0.2, 0}, 0.1, {0.5, 0.1, 0}},
                                          {{0.5, 0.2, 0}, {0.5, 0.4, 0}, 0, {}},
                                          {{0.5, 0.4, 0}, {0.3, 0.4, 0}, 0, {}},
                                          {{0.3, 0.28, 0}, {0.3, 0.4, 0}, 0.06, {0.3, 0.34, 0}},
                                          {{0.3, 0.28, 0}, {0.3, 0, 0}, 0, {}}};
    const double out1 = pi * 0.01 / 2;
    const double in1 = pi * 0.0036 / 2;
    const double beadArea = 0.08 + out1 - in1;
    const double beadMoment = 0.08 * 0.4 + out1 * (0.5 + 0.4 / (3 * pi)) - in1 * (0.3 + 0.24 / (3 * pi));
    out.push_back(
        revolvedCase({"revolved bead and groove", 2 * pi, bead, beadStrokes, beadArea, beadMoment / beadArea, none}));
    out.push_back(
        revolvedCase({"revolved bead and groove, part", 5, bead, beadStrokes, beadArea, beadMoment / beadArea, none}));
}

}  // namespace truth
