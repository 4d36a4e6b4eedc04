#include "eem/primitives.h"

#include "eem/color.h"
#include "eem/little_endian.h"
#include "tolmar/ge.h"

#include <tsl/robin_map.h>

#include <bit>
#include <cmath>
#include <type_traits>

// A record is, for a solid,  int code, fields, int handedness, int colour word  and for a line  int 20, fields, int
// material code. Fields by code (p is a point or direction, d a double, i an int):
//
//    0 cylinder        p start, p end, d radius
//    1 box             p corner, p x axis, p y axis, d x length, d y length, d z length
//    2 box, centred    as 1; the point is the centre moved back by half of the x and of the y length
//    3 cone            p start, p end, d start radius, d end radius
//    4 eccentric cone  as 3, p direction of the offset
//    5 oval head       p base, d axial radius, d radial radius, d base radius, p direction
//    6 prism           p end, p start, p vertex, i sides
//    7 prism, turned   as 6; the vertex is turned by pi/sides about the axis
//    8 revolution      i n, n times (i kind, p vertex), p centre, p axis, d angle
//    9 saddle          p point, p axis, p section axis, d length, d section length, d section height, d circle radius
//   10 sloped cylinder p start, p end, p normal of the cut, d radius
//   11 sphere          p centre, d radius
//   12 extrusion       i n, n times (i kind, p vertex), i holes, for each (i n, n times (i kind, p vertex)), p normal,
//                      d height; vertices in world space
//   13 square to round p base, p top centre, p x axis, p base normal, d x length, d y length, d top radius
//   14 square cone     p point, p x axis, p z axis, p offset direction, d bottom x, d bottom y, d top x, d top y,
//                      d height, d offset length
//   15 square bend     p centre, p start, p axis, d sweep, d start width, d start height, d end width, d end height
//   16 square bend, by angle; as 15
//   17 round bend      p centre, p start, p axis, d sweep, d start radius, d end radius
//   18 round bend, by angle; as 17
//   19 wedge           p point 1, p point 2, p point 3, d size
//   20 line            p start, p end
//
// Angles are radians.

namespace eem {

namespace {

enum Code : std::int32_t {
    codeCylinder = 0,
    codeBox = 1,
    codeCentredBox = 2,
    codeCone = 3,
    codeEccentricCone = 4,
    codeOval = 5,
    codePrism = 6,
    codeTurnedPrism = 7,
    codeRevolution = 8,
    codeSaddle = 9,
    codeSlopedCylinder = 10,
    codeSphere = 11,
    codeExtrusion = 12,
    codeSquareToRound = 13,
    codeSquareCone = 14,
    codeSquareBend = 15,
    codeSquareBendByAngle = 16,
    codeRoundBend = 17,
    codeRoundBendByAngle = 18,
    codeWedge = 19,
    codeLine = 20,
};

constexpr std::size_t intSize = 4;
constexpr std::size_t vertexSize = 4 + 3 * 8;
// More than any record without vertices takes, and what a record with vertices takes beside them and their counts.
constexpr std::size_t plainSize = 192;

constexpr const char* noRecord = "its class has no record in an EEM file";
constexpr const char* notFinite = "a coordinate or size is not finite";

// Fills in a record; the caller has made room.
class Record {
public:
    explicit Record(char* at) : at_(at) {}
    Record& integer(std::int32_t value) {
        at_ = putInt(at_, value);
        return *this;
    }
    Record& number(double value) {
        at_ = putDouble(at_, value);
        isFinite_ = isFinite_ && std::isfinite(value);
        return *this;
    }
    Record& point(const HxGePoint3D& value) { return number(value.x).number(value.y).number(value.z); }
    Record& direction(const HxGeVector3D& value) { return number(value.x).number(value.y).number(value.z); }
    Record& vertex(const HextVertex& value) { return integer(value.kind).point(value.point); }

    char* end() const { return at_; }
    bool isFinite() const { return isFinite_; }

private:
    char* at_;
    bool isFinite_ = true;
};

void writeCylinder(const HextCylinder3D& solid, Record& record) {
    record.integer(codeCylinder).point(solid.startPoint).point(solid.endPoint).number(solid.diameter / 2);
}

void writeBox(const HextBox3D& solid, Record& record) {
    const HxGePoint3D corner = solid.point - solid.xAxis * (solid.xLength / 2) - solid.yAxis * (solid.yLength / 2);
    const bool isCentred = solid.pointKind != 0;
    record.integer(isCentred ? codeCentredBox : codeBox).point(isCentred ? corner : solid.point);
    record.direction(solid.xAxis).direction(solid.yAxis);
    record.number(solid.xLength).number(solid.yLength).number(solid.zLength);
}

void writeCone(const HextConcone3D& solid, Record& record) {
    record.integer(codeCone).point(solid.startPoint).point(solid.endPoint);
    record.number(solid.startDiameter / 2).number(solid.endDiameter / 2);
}

void writeEccentricCone(const HextEcone3D& solid, Record& record) {
    record.integer(codeEccentricCone).point(solid.startPoint).point(solid.endPoint);
    record.number(solid.startDiameter / 2).number(solid.endDiameter / 2).direction(solid.vect);
}

void writeOval(const HextOval3D& solid, Record& record) {
    record.integer(codeOval).point(solid.point);
    record.number(solid.axialRadius).number(solid.radialRadius).number(solid.baseRadius).direction(solid.vect);
}

HxGePoint3D turnedVertex(const HextPrism3D& solid) {
    const HxGeVector3D axis = (solid.startPoint - solid.endPoint).normal();
    return solid.vertexPoint.rotatedBy(tlGePi / solid.sides, axis, solid.endPoint);
}

void writePrism(const HextPrism3D& solid, Record& record) {
    const bool isTurned = solid.sideMode != 0;
    record.integer(isTurned ? codeTurnedPrism : codePrism).point(solid.endPoint).point(solid.startPoint);
    record.point(isTurned ? turnedVertex(solid) : solid.vertexPoint).integer(solid.sides);
}

std::size_t listSize(const HextVertexList* list) {
    return intSize + (list != nullptr ? list->size() * vertexSize : 0);
}

void writeVertices(const HextVertexList* list, Record& record) {
    record.integer(list != nullptr ? static_cast<std::int32_t>(list->size()) : 0);
    for (std::size_t i = 0; list != nullptr && i < list->size(); ++i) {
        record.vertex((*list)[i]);
    }
}

std::size_t revolutionSize(const HextRevolve& solid) {
    return plainSize + listSize(solid.profile.get());
}

void writeRevolution(const HextRevolve& solid, Record& record) {
    record.integer(codeRevolution);
    writeVertices(solid.profile.get(), record);
    record.point(solid.center).direction(solid.axis).number(solid.angle);
}

void writeSaddle(const HextSaddle3D& solid, Record& record) {
    record.integer(codeSaddle).point(solid.point).direction(solid.axis).direction(solid.sectionAxis);
    record.number(solid.length).number(solid.sectionLength).number(solid.sectionHeight).number(solid.circleRadius);
}

void writeSlopedCylinder(const HextScylinder3D& solid, Record& record) {
    record.integer(codeSlopedCylinder).point(solid.startPoint).point(solid.endPoint);
    record.direction(solid.vect).number(solid.diameter / 2);
}

void writeSphere(const HextSphere3D& solid, Record& record) {
    record.integer(codeSphere).point(solid.center).number(solid.radius);
}

// Where the vertices of an extrusion stand in the world.
struct PlaneFrame {
    HxGePoint3D origin;
    HxGeVector3D x;
    HxGeVector3D y;
    HxGeVector3D normal;

    explicit PlaneFrame(const HextSpolygon& solid)
        : origin(solid.origin), x(solid.xAxis.normal()), y(solid.yAxis.normal()),
          normal(solid.xAxis.crossProduct(solid.yAxis).normal()) {}
    HextVertex toWorld(const HextVertex& vertex) const {
        const HxGePoint3D& local = vertex.point;
        return {vertex.kind, origin + x * local.x + y * local.y + normal * local.z};
    }
};

std::size_t extrusionSize(const HextSpolygon& solid) {
    std::size_t size = plainSize + listSize(solid.outline.get());
    for (std::size_t i = 0; solid.holes && i < solid.holes->size(); ++i) {
        size += listSize(&(*solid.holes)[i]);
    }
    return size;
}

void writeMapped(const HextVertexList* list, const PlaneFrame& frame, Record& record) {
    record.integer(list != nullptr ? static_cast<std::int32_t>(list->size()) : 0);
    for (std::size_t i = 0; list != nullptr && i < list->size(); ++i) {
        record.vertex(frame.toWorld((*list)[i]));
    }
}

void writeExtrusion(const HextSpolygon& solid, Record& record) {
    const PlaneFrame frame(solid);
    const std::size_t holes = solid.holes ? solid.holes->size() : 0;
    record.integer(codeExtrusion);
    writeMapped(solid.outline.get(), frame, record);
    record.integer(static_cast<std::int32_t>(holes));
    for (std::size_t i = 0; i < holes; ++i) {
        writeMapped(&(*solid.holes)[i], frame, record);
    }
    record.direction(frame.normal).number(solid.height);
}

void writeSquareToRound(const HextSqucir3D& solid, Record& record) {
    record.integer(codeSquareToRound).point(solid.basePoint).point(solid.topCenter);
    record.direction(solid.xAxis).direction(solid.baseNormal);
    record.number(solid.xLength).number(solid.yLength).number(solid.topRadius);
}

void writeSquareCone(const HextSqucone3D& solid, Record& record) {
    record.integer(codeSquareCone).point(solid.point);
    record.direction(solid.xAxis).direction(solid.zAxis).direction(solid.offsetDirection);
    record.number(solid.bottomX).number(solid.bottomY).number(solid.topX).number(solid.topY);
    record.number(solid.height).number(solid.offsetLength);
}

struct Arc {
    HxGeVector3D axis;
    double sweep;
};

// Kinds of arc of a bend that has no angle.
enum ArcKind : std::int32_t { shortWay = 0, longWay = 1, fullCircle = 2, halfCircle = 3 };

template <typename Bend>
Arc arcOf(const Bend& bend) {
    if (bend.arcKind == fullCircle || bend.arcKind == halfCircle) {
        return {bend.thirdField.asVector(), bend.arcKind == fullCircle ? 2 * tlGePi : tlGePi};
    }
    const HxGeVector3D start = bend.startPoint - bend.center;
    const HxGeVector3D end = bend.thirdField - bend.center;
    const double angle = start.angleTo(end);
    return {start.crossProduct(end).normal(), bend.arcKind == longWay ? 2 * tlGePi - angle : angle};
}

// Degrees, whatever their size.
Arc arcByAngle(const HxGeVector3D& axis, double angle) {
    return {axis, angle / 180 * tlGePi};
}

void writeSquareBend(const HextSqutorus3D& solid, Record& record) {
    const bool isByAngle = solid.form != 0;
    const Arc arc = isByAngle ? arcByAngle(solid.normal, solid.angle) : arcOf(solid);
    record.integer(isByAngle ? codeSquareBendByAngle : codeSquareBend).point(solid.center).point(solid.startPoint);
    record.direction(arc.axis).number(arc.sweep);
    record.number(solid.startWidth).number(solid.startHeight).number(solid.endWidth).number(solid.endHeight);
}

void writeRoundBend(const HextTorus3D& solid, Record& record) {
    const bool isByAngle = solid.form != 0;
    const Arc arc = isByAngle ? arcByAngle(solid.thirdField.asVector(), solid.angle) : arcOf(solid);
    record.integer(isByAngle ? codeRoundBendByAngle : codeRoundBend).point(solid.center).point(solid.startPoint);
    record.direction(arc.axis).number(arc.sweep);
    record.number(solid.startDiameter / 2).number(solid.endDiameter / 2);
}

void writeWedge(const HextWedge3D& solid, Record& record) {
    record.integer(codeWedge).point(solid.point1).point(solid.point2).point(solid.point3).number(solid.wedgeSize);
}

void writeLine(const HextPrimaryLine& line, Record& record) {
    record.integer(codeLine).point(line.startPoint).point(line.endPoint);
}

// The end of what was written; null for a record with a number that is not finite.
using Write = char* (*)(const HextPrimary& primitive, char* at);

// A class with a record: most bytes that it takes, and what writes its code and fields.
struct RecordRow {
    const TlRxClass* type;
    bool isSolid;
    std::size_t (*size)(const HextPrimary& primitive);  // null: plainSize
    Write write;
};

template <typename Class, auto Fill>
char* writeRecord(const HextPrimary& primitive, char* at) {
    Record record(at);
    Fill(static_cast<const Class&>(primitive), record);
    return record.isFinite() ? record.end() : nullptr;
}

template <typename Class, auto Fill>
RecordRow row() {
    return {Class::desc(), std::is_base_of_v<HextPrimary3D, Class>, nullptr, writeRecord<Class, Fill>};
}

template <typename Class, auto Fill, auto Size>
RecordRow row() {
    return {Class::desc(), true,
            [](const HextPrimary& primitive) { return Size(static_cast<const Class&>(primitive)); },
            writeRecord<Class, Fill>};
}

const RecordRow recordRows[] = {
    row<HextCylinder3D, writeCylinder>(),
    row<HextBox3D, writeBox>(),
    row<HextTorus3D, writeRoundBend>(),
    row<HextConcone3D, writeCone>(),
    row<HextSpolygon, writeExtrusion, extrusionSize>(),
    row<HextPrimaryLine, writeLine>(),
    row<HextSphere3D, writeSphere>(),
    row<HextOval3D, writeOval>(),
    row<HextPrism3D, writePrism>(),
    row<HextEcone3D, writeEccentricCone>(),
    row<HextScylinder3D, writeSlopedCylinder>(),
    row<HextRevolve, writeRevolution, revolutionSize>(),
    row<HextSqutorus3D, writeSquareBend>(),
    row<HextSqucir3D, writeSquareToRound>(),
    row<HextSqucone3D, writeSquareCone>(),
    row<HextSaddle3D, writeSaddle>(),
    row<HextWedge3D, writeWedge>(),
};

// The rows by class.
const auto rowsByClass = [] {
    tsl::robin_map<const TlRxClass*, const RecordRow*> rows;
    for (const RecordRow& row : recordRows) {
        rows.emplace(row.type, &row);
    }
    return rows;
}();

}  // namespace

std::int32_t PrimitiveEncoder::encodeList(HextPrimaryView list, const ObjectColor& color) {
    leftOut_.clear();
    for (const HextPrimary* primitive : list) {
        if (const char* why = encode(*primitive, color)) {
            leftOut_.push_back({primitive, why});
        }
    }
    return static_cast<std::int32_t>(list.size() - leftOut_.size());
}

// Null, or why there is no record.
const char* PrimitiveEncoder::encode(const HextPrimary& primitive, const ObjectColor& color) {
    const auto known = rowsByClass.find(primitive.isA());
    if (known == rowsByClass.end()) {
        return noRecord;
    }
    const RecordRow* row = known->second;
    file_.settle();
    char* place = file_.room(row->size != nullptr ? row->size(primitive) : plainSize);
    char* end = row->write(primitive, place);
    if (end == nullptr) {
        file_.endRoom(place);
        return notFinite;
    }
    if (row->isSolid) {
        const auto& solid = static_cast<const HextPrimary3D&>(primitive);
        end = putInt(putInt(end, solid.handedness), std::bit_cast<std::int32_t>(colorWord(materialCode(solid, color))));
    } else {
        end = putInt(end, static_cast<std::int32_t>(color.baseCode));
    }
    file_.endRoom(end);
    return nullptr;
}

}  // namespace eem
