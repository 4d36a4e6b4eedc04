#include "hextinterface/ornatohextprocess/solids/prim_loop.h"

#include "hextinterface/hextbasemethod/macro_text.h"

#include <array>
#include <cmath>

namespace {

constexpr const char* loopVariable = "!loopName";
// Fillets are written this much smaller, so that they never quite touch their neighbours.
constexpr double filletClearance = 0.01;

enum VertexKind : int { plain = 1, arcStart = 2, last = 4, closingArc = 5, circle = 6, rawMiddle = 7 };

// A circle whose `x` and `y` are radii: from the centre to the first point, and a quarter turn on.
struct Circle {
    HxGePoint3D center;
    HxGeVector3D x, y;
    double radius;

    HxGePoint3D at(double u, double v) const { return center + x * u + y * v; }
};

// The corners of the square around a circle, in the order in which an arc from (1, 0) passes them.
struct SquareCorner {
    double u, v;
};
constexpr std::array<SquareCorner, 4> squareCorners = {{{1, 1}, {-1, 1}, {-1, -1}, {1, -1}}};

// The square corners that an arc passes, and where its last corner begins.
struct ArcForm {
    int corners;
    double u, v;
};

// `u`, `v`: the end of the arc in radii.
ArcForm arcForm(double u, double v) {
    if (u <= -0.6) {
        return {1, 0, 1};
    }
    if (v > 0) {
        return {0, 1, 0};
    }
    return v > -0.8 ? ArcForm{3, 0, -1} : ArcForm{2, -1, 0};
}

// Where the tangents at two points of the circle meet. From the middle of the chord outward, which stays exact for
// arcs so flat that their centre is far away.
PVertex tangentCorner(const Circle& on, const HxGePoint3D& a, const HxGePoint3D& b) {
    const HxGeVector3D half = (b - a) * 0.5;
    const HxGePoint3D middle = a + half;
    const HxGeVector3D outward = middle - on.center;
    return PVertex(middle + outward * (half.lengthSqrd() / outward.lengthSqrd()), on.radius);
}

void appendSquareCorners(std::vector<PVertex>& out, const Circle& on, int count) {
    for (int i = 0; i < count; ++i) {
        out.emplace_back(on.at(squareCorners[i].u, squareCorners[i].v), on.radius);
    }
}

}  // namespace

std::vector<PVertex> arcVertices(const HxGePoint3D& p1, const HxGePoint3D& p2, const HxGePoint3D& p3,
                                 ArcExtent extent) {
    const TlGeCircArc3d arc(p1, p2, p3);
    if (!arc.isValid()) {
        return p1.isEqualTo(p3) ? std::vector<PVertex>{PVertex(p1)} : std::vector<PVertex>{PVertex(p1), PVertex(p3)};
    }
    const HxGeVector3D x = p1 - arc.center();
    const Circle on{arc.center(), x, arc.normal().crossProduct(x), arc.radius()};
    std::vector<PVertex> out;
    out.reserve(6);
    out.emplace_back(p1);
    if (extent == ArcExtent::WholeCircle) {
        appendSquareCorners(out, on, 4);
        return out;
    }
    const HxGeVector3D end = p3 - on.center;
    const ArcForm form = arcForm(end.dotProduct(on.x) / x.lengthSqrd(), end.dotProduct(on.y) / x.lengthSqrd());
    appendSquareCorners(out, on, form.corners);
    out.push_back(tangentCorner(on, form.corners == 0 ? p1 : on.at(form.u, form.v), p3));
    out.emplace_back(p3);
    return out;
}

HextVertexList settleArcMiddles(const HextVertexList& list) {
    HextVertexList out;
    out.reserve(list.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        const bool raw = list[i].kind == rawMiddle;
        if (raw && (i == 0 || i + 1 == list.size())) {
            continue;
        }
        out.push_back({raw ? std::int16_t{3} : list[i].kind, list[i].point});
    }
    return out;
}

namespace {

// Walks an outline vertex by vertex.
class OutlineWalk {
public:
    explicit OutlineWalk(const HextVertexList& list) : list_(list) { result_.vertices.reserve(list.size() * 2); }

    OutlineLoop run() {
        while (at_ < list_.size() && step()) {
        }
        return std::move(result_);
    }

private:
    // False at the end of the outline.
    bool step() {
        switch (list_[at_].kind) {
        case plain:
            append(at_++);
            return true;
        case arcStart:
            return arc();
        case last:
            append(at_);
            return false;
        case closingArc:
            closeByArc();
            return false;
        case circle:
            wholeCircle();
            return false;
        default:
            ++at_;
            return true;
        }
    }

    std::size_t following() const { return list_.size() - at_ - 1; }
    const HxGePoint3D& point(std::size_t ahead) const { return list_[at_ + ahead].point; }
    void append(std::size_t index) { result_.vertices.emplace_back(list_[index].point); }

    void append(std::vector<PVertex> arc, std::size_t dropAtEnd = 0) {
        // The first vertex of a chained arc is the last one of the arc before it.
        const std::size_t first = chained_ ? 1 : 0;
        for (std::size_t i = first; i + dropAtEnd < arc.size(); ++i) {
            result_.vertices.push_back(std::move(arc[i]));
        }
    }

    bool arc() {
        if (following() < 2) {
            if (result_.vertices.empty() || !result_.vertices.back().position.isEqualTo(point(0))) {
                append(at_);
            }
            return false;
        }
        const bool isPoint = point(0).isEqualTo(point(2));
        append(isPoint ? std::vector<PVertex>{PVertex(point(0))} : arcVertices(point(0), point(1), point(2)));
        at_ += 2;
        chained_ = list_[at_].kind == arcStart || list_[at_].kind == closingArc;
        at_ += chained_ ? 0 : 1;
        return true;
    }

    void closeByArc() {
        if (following() < 3) {
            result_.closingArcLost = true;
            return;
        }
        append(arcVertices(point(0), point(1), list_.front().point), 1);
    }

    void wholeCircle() {
        if (following() >= 2) {
            append(arcVertices(point(0), point(1), point(2), ArcExtent::WholeCircle));
        }
    }

    const HextVertexList& list_;
    OutlineLoop result_;
    std::size_t at_ = 0;
    bool chained_ = false;
};

}  // namespace

OutlineLoop outlineToLoop(const HextVertexList& list) {
    return OutlineWalk(list).run();
}

void writeVertex(std::string& out, const PVertex& vertex) {
    out += "var !pos POSITION ";
    appendPosition(out, vertex.position);
    out += "\n!frad = ";
    appendFixed(out, vertex.frad > filletClearance ? vertex.frad - filletClearance : vertex.frad);
    out.append("\ncall !!ORNAEquipCreateVertex(").append(vertex.loopName).append(", !pos, !frad)\n");
}

void writeLoop(std::string& out, PLoop& loop) {
    out.append("!loopName = !!ORNAEquipCreateLoop(").append(loop.owner).append(")\n");
    for (PVertex& vertex : loop.vertices) {
        vertex.loopName = loopVariable;
        writeVertex(out, vertex);
        out += '\n';
    }
    if (loop.vertices.empty()) {
        out += '\n';
    }
}
