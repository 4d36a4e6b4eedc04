#include "exportbase/solid_key.h"

#include "tolmar/entity.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace {

constexpr std::size_t mostWords = 512;

// Adding and taking away this rounds to whole numbers, below 2^51.
constexpr double roundingShift = 6755399441055744.0;  // 1.5 * 2^52
constexpr double stepsPerMillimetre = 16777216.0;     // 2^24
constexpr double farthestApart = 134217728.0;         // 2^27, on the grid 2^51

class KeyWriter {
public:
    explicit KeyWriter(SolidKey& key) : key_(key) {}

    bool isGood() const { return isGood_ && key_.words.size() <= mostWords; }

    // The point that stands for the place of the solid; the first call.
    void place(const HxGePoint3D& point) {
        key_.place = point;
        check(point);
    }
    void point(const HxGePoint3D& point) {
        check(point);
        const HxGeVector3D apart = point - key_.place;
        step(apart.x);
        step(apart.y);
        step(apart.z);
    }
    void vector(const HxGeVector3D& v) {
        number(v.x);
        number(v.y);
        number(v.z);
    }
    void number(double value) { key_.words.push_back(std::bit_cast<std::uint64_t>(value)); }
    void count(std::uint64_t value) { key_.words.push_back(value); }

private:
    // What a solid would be refused for has no key.
    void check(const HxGePoint3D& p) {
        isGood_ &=
            std::fabs(p.x) <= tlMaxCoordinate && std::fabs(p.y) <= tlMaxCoordinate && std::fabs(p.z) <= tlMaxCoordinate;
    }
    void step(double apart) {
        isGood_ &= std::fabs(apart) < farthestApart;
        number((apart * stepsPerMillimetre + roundingShift) - roundingShift + 0.0);
    }

    SolidKey& key_;
    bool isGood_ = true;
};

void write(const HextCylinder3D& c, KeyWriter& key) {
    key.place(c.startPoint);
    key.point(c.endPoint);
    key.number(c.diameter);
}

void write(const HextScylinder3D& c, KeyWriter& key) {
    write(static_cast<const HextCylinder3D&>(c), key);
    key.vector(c.vect);
}

void write(const HextConcone3D& c, KeyWriter& key) {
    key.place(c.startPoint);
    key.point(c.endPoint);
    key.number(c.startDiameter);
    key.number(c.endDiameter);
}

void write(const HextEcone3D& c, KeyWriter& key) {
    key.place(c.startPoint);
    key.point(c.endPoint);
    key.number(c.startDiameter);
    key.number(c.endDiameter);
    key.vector(c.vect);
}

void write(const HextBox3D& b, KeyWriter& key) {
    key.place(b.point);
    key.vector({b.xLength, b.yLength, b.zLength});
    key.vector(b.xAxis);
    key.vector(b.yAxis);
    key.count(static_cast<std::uint32_t>(b.pointKind));
}

void write(const HextSqucone3D& f, KeyWriter& key) {
    key.place(f.point);
    for (const double size : {f.bottomX, f.bottomY, f.topX, f.topY, f.height, f.offsetLength}) {
        key.number(size);
    }
    key.vector(f.zAxis);
    key.vector(f.xAxis);
    key.vector(f.offsetDirection);
}

void write(const HextWedge3D& w, KeyWriter& key) {
    key.place(w.point1);
    key.point(w.point2);
    key.point(w.point3);
    key.number(w.wedgeSize);
}

void write(const HextPrism3D& p, KeyWriter& key) {
    key.place(p.startPoint);
    key.point(p.endPoint);
    key.point(p.vertexPoint);
    key.count(static_cast<std::uint32_t>(p.sides));
    key.count(static_cast<std::uint32_t>(p.sideMode));
}

void write(const HextOval3D& h, KeyWriter& key) {
    key.place(h.point);
    key.vector({h.axialRadius, h.radialRadius, h.baseRadius});
    key.vector(h.vect);
}

void write(const HextSphere3D& s, KeyWriter& key) {
    key.place(s.center);
    key.number(s.radius);
}

// The course of a bend; its third field is a point, or a direction that stays as it is.
template <typename Bend>
void writeBend(const Bend& bend, KeyWriter& key) {
    constexpr std::int16_t byAngle = 1;
    constexpr std::int32_t longWay = 1;
    key.place(bend.center);
    key.point(bend.startPoint);
    key.count(std::uint64_t{static_cast<std::uint32_t>(bend.arcKind)} << 16U | static_cast<std::uint16_t>(bend.form));
    key.number(bend.angle);
    if (bend.form == byAngle || bend.arcKind > longWay) {
        key.vector(bend.thirdField.asVector());
    } else {
        key.point(bend.thirdField);
    }
}

void write(const HextTorus3D& t, KeyWriter& key) {
    writeBend(t, key);
    key.number(t.startDiameter);
    key.number(t.endDiameter);
}

void write(const HextSqutorus3D& t, KeyWriter& key) {
    writeBend(t, key);
    key.vector({t.startWidth, t.startHeight, t.endWidth});
    key.number(t.endHeight);
    key.vector(t.normal);
}

void write(const HextSaddle3D& s, KeyWriter& key) {
    key.place(s.point);
    key.vector({s.length, s.sectionLength, s.sectionHeight});
    key.number(s.circleRadius);
    key.vector(s.axis);
    key.vector(s.sectionAxis);
}

void write(const HextSqucir3D& t, KeyWriter& key) {
    key.place(t.basePoint);
    key.point(t.topCenter);
    key.vector(t.xAxis);
    key.vector(t.baseNormal);
    key.vector({t.xLength, t.yLength, t.topRadius});
}

// Vertices in their own frame, which stay as they are.
void writeOutline(const HextVertexList& outline, KeyWriter& key) {
    key.count(outline.size());
    for (std::size_t i = 0; i < outline.size() && key.isGood(); ++i) {
        key.count(static_cast<std::uint16_t>(outline[i].kind));
        key.vector(outline[i].point.asVector());
    }
}

void write(const HextSpolygon& e, KeyWriter& key) {
    key.place(e.origin);
    key.vector(e.xAxis);
    key.vector(e.yAxis);
    key.vector(e.direction);
    key.number(e.height);
    key.count(e.outline ? 1 : 0);
    if (e.outline) {
        writeOutline(*e.outline, key);
    }
    if (e.holes) {
        for (const HextVertexList& hole : *e.holes) {
            writeOutline(hole, key);
        }
    }
}

void write(const HextRevolve& r, KeyWriter& key) {
    key.place(r.center);
    key.vector(r.axis);
    key.number(r.angle);
    if (r.profile) {
        for (std::size_t i = 0; i < r.profile->size() && key.isGood(); ++i) {
            key.count(static_cast<std::uint16_t>((*r.profile)[i].kind));
            key.point((*r.profile)[i].point);
        }
    }
}

struct KeyRow {
    const TlRxClass* type;
    void (*write)(const HextPrimary& primitive, KeyWriter& key);
};

template <typename Class>
constexpr KeyRow row() {
    return {&Class::classRecord,
            [](const HextPrimary& primitive, KeyWriter& key) { write(static_cast<const Class&>(primitive), key); }};
}

// The most frequent first.
constexpr KeyRow rows[] = {
    row<HextCylinder3D>(), row<HextConcone3D>(),   row<HextBox3D>(),    row<HextTorus3D>(),
    row<HextSpolygon>(),   row<HextOval3D>(),      row<HextSphere3D>(), row<HextPrism3D>(),
    row<HextEcone3D>(),    row<HextScylinder3D>(), row<HextRevolve>(),  row<HextWedge3D>(),
    row<HextSqucone3D>(),  row<HextSqutorus3D>(),  row<HextSaddle3D>(), row<HextSqucir3D>(),
};

}  // namespace

bool makeSolidKey(const HextPrimary& primitive, SolidKey& key) {
    const KeyRow* found = std::find_if(std::begin(rows), std::end(rows),
                                       [&primitive](const KeyRow& r) { return primitive.isA() == r.type; });
    if (found == std::end(rows)) {
        return false;
    }
    const auto number = static_cast<std::uint64_t>(found - std::begin(rows));
    const auto handedness = static_cast<std::uint32_t>(static_cast<const HextPrimary3D&>(primitive).handedness);
    key.words.clear();
    key.words.push_back(number << 32U | handedness);
    KeyWriter writer(key);
    found->write(primitive, writer);
    return writer.isGood();
}
