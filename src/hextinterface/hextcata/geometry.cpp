#include "hextinterface/hextcata/geometry.h"

#include "frame/exceptions.h"
#include "hextinterface/hextbasemethod/component_geometry.h"
#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/hextcata/gem_classes.h"
#include "hextinterface/hextcata/lines.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/model_tests.h"
#include "platform/smrtln.h"
#include "tolmar/text.h"

#include <algorithm>

namespace {

constexpr double samePlace = 0.01;
constexpr double hoseWall = 10;

CataPoint record(int id, const HxGePoint3D& pos = {}) {
    CataPoint point;
    point.id = id;
    point.pos = pos;
    return point;
}

// "OLET" or "BOSS" with no sub-type beside it.
bool isBranchFitting(const HxDbObject* object) {
    return isBranchItem(std::string(getBomValue(object, "item")).append(getBomValue(object, "itype")));
}

// Which end of the object a record stands for, by family.
int endIndex(std::string_view family, int i) {
    if (family == "Ru") {
        return i == 1 ? 1 : 0;
    }
    if (family == "Ecc") {
        return i == 2 || i == 3 ? 1 : 0;
    }
    if (family == "Weld" || family == "Arc" || family == "Angle") {
        return i;
    }
    if (family == "Pipe") {
        return i + 1;
    }
    return i == 0 ? 0 : i - 1;
}

void pointsOfTee(CataPoints& points) {
    constexpr const char* words[] = {"X", "-X", "X", "X DDANGLE Y"};
    for (int i = 0; i < 4; ++i) {
        points.push_back(record(i));
        points.back().paxi = words[i];
    }
}

void pointsOfClass(CataItem& item, const HxDbSmrtlnEntity* object) {
    const auto comp = makeComp(item.smrtlnType);
    comp->entity = object;
    std::vector<HxGePoint3D> coordinates = comp->getPoints();
    if (item.smrtlnType == "Normal" && isBranchFitting(object)) {
        coordinates.push_back(object->getCoordOfNo(object->getPointOfNo(3) != nullptr ? 3 : 2));
    }
    for (const HxGePoint3D& coordinate : coordinates) {
        item.points.push_back(record(static_cast<int>(item.points.size()), coordinate));
        if (object->isKindOf(HxDbBalloon::desc())) {
            item.points.back().paxi = "Y";
        }
    }
}

void fillBores(CataItem& item, const HxDbSmrtlnEntity* object) {
    Bores sizes{};
    readSizes(object, sizes);
    const std::string_view family = getBomValue(object, "smrtln");
    for (int i = 0; i < static_cast<int>(item.points.size()); ++i) {
        if (i == 5 || i == 6) {
            continue;
        }
        const auto end = static_cast<std::size_t>(endIndex(family, i));
        item.points[static_cast<std::size_t>(i)].bore = sizeOfEnd(sizes, i);
        item.points[static_cast<std::size_t>(i)].con = item.ends[std::min(end, item.ends.size() - 1)];
    }
}

// A valve's stem is its Y axis.
void turnToStem(CataCompGeometry& geometry) {
    const HxDbTubeModelSpec* model = HxDbTubeModelSpec::cast(geometry.object);
    if (!smrtln::isValve(geometry.object) || geometry.points.size() < 3) {
        return;
    }
    geometry.frame.x = (geometry.points[2].pos - geometry.points[0].pos).normal();
    const HxGeVector3D stemAxis = model != nullptr ? model->getRefVec().normal() : HxGeVector3D();
    if (stemAxis.isZeroLength() || stemAxis.isParallelTo(geometry.frame.x, nearlyParallel)) {
        return;
    }
    geometry.frame.y = stemAxis;
    geometry.frame.z = geometry.frame.x.crossProduct(geometry.frame.y).normal();
    CataPoint stem = record(3, {0, 50, 0});
    stem.paxi = "Y";
    geometry.points.push_back(std::move(stem));
}

void swapNozzleEnds(CataCompGeometry& geometry) {
    const bool applies = geometry.object->isKindOf(HxDbNozzleModel::desc()) && geometry.points.size() == 3 &&
                         getBomValue(geometry.object, "end2") != "NONE" &&
                         getBomValue(geometry.object, "end3") != "NONE";
    if (applies) {
        std::swap(geometry.points[1], geometry.points[2]);
    }
}

void leaveOut(const CataCompGeometry& geometry, const HextPrimary& primitive, std::string_view why) {
    reportLeftOut({geometry.object, primitive.isA()->name(), "primitive"}, why);
}

void reportPrimitive(const CataCompGeometry& geometry, const HextPrimary& primitive, const char* text) {
    hxcad::hextPrintf("\nID:%lld <非法基本体 %s>", idNumber(geometry.object), text);
    if (const HextOval3D* oval = HextOval3D::cast(&primitive)) {
        hxcad::hextPrintf("\nOval:%s=%lf,%s=%lf,%s=%lf,%s=", "LA", oval->axialRadius, "LB", oval->radialRadius, "LR",
                          oval->baseRadius, "VEC");
        hxcad::hextPrintf("{%lf,%lf,%lf}", oval->vect.x, oval->vect.y, oval->vect.z);
    }
    leaveOut(geometry, primitive, *text != '\0' ? text : "cannot be translated for the catalogue");
}

bool hasFrame(const CataCompGeometry& geometry) {
    return !geometry.frame.x.isZeroLength() && !geometry.frame.y.isZeroLength() && !geometry.frame.z.isZeroLength();
}

// A family without a frame of its own (a hose that is none by kind) has no place for its primitives.
void writePrimitives(CataCompGeometry& geometry, CataStream& out) {
    if (!hasFrame(geometry)) {
        for (const HextPrimary* primitive : geometry.primitives) {
            leaveOut(geometry, *primitive, "its component has no local frame");
        }
        return;
    }
    const GemFrame frame{geometry.points.front().pos, geometry.frame.x, geometry.frame.y, geometry.frame.z,
                         geometry.refText};
    int nextNumber = firstAddedNumber;
    for (const HextPrimary* primitive : geometry.primitives) {
        try {
            const std::string_view lost = translatePrimitive(out, *primitive, frame, geometry.points, nextNumber);
            if (!lost.empty()) {
                leaveOut(geometry, *primitive, lost);
            }
        } catch (const ExportException& failure) {
            reportPrimitive(geometry, *primitive, failure.what());
        }
    }
}

// A computed point that lies at a key point takes the end and size of that connection.
void takeKeyPoints(CataCompGeometry& geometry) {
    const HxDbTubeModel* model = HxDbTubeModel::cast(geometry.object);
    if (model == nullptr) {
        return;
    }
    std::vector<std::pair<short, HxGePoint3D>> keyPoints;
    model->getKeyPoints(keyPoints);
    for (const auto& [number, place] : keyPoints) {
        for (CataPoint& point : geometry.points) {
            if (point.worldPoint.distanceTo(place) > samePlace) {
                continue;
            }
            const char* size = smrtln::getSize(model, number);
            point.con = tolmar::textOrEmpty(smrtln::getEndType(model, number));
            point.bore = size != nullptr ? integerOf(size) : 0;
        }
    }
}

void writeHose(const CataCompGeometry& geometry, CataStream& out) {
    if (geometry.points.size() < 2) {
        return;
    }
    HEXT_CATA_SCYL body;
    body.distance = geometry.points[0].dist;
    body.height = geometry.points[1].pos.distanceTo(geometry.points[0].pos);
    body.axis = "P3";
    body.diameter = geometry.points[0].bore + hoseWall;
    body.write(out, gem::writeMode);
}

// The flange's diameter and length, and the pipe's diameter (-1 when all cylinders are alike).
struct FlangedShape {
    double flange = 0;
    double length = 0;
    double pipe = -1;
};

double lengthOf(const HextCylinder3D& cylinder) {
    return cylinder.startPoint.distanceTo(cylinder.endPoint);
}

FlangedShape flangedShape(const std::vector<const HextPrimary*>& primitives) {
    FlangedShape shape;
    const HextCylinder3D* first = nullptr;
    for (const HextPrimary* primitive : primitives) {
        const HextCylinder3D* cylinder = HextCylinder3D::cast(primitive);
        if (cylinder == nullptr) {
            continue;
        }
        if (first == nullptr) {
            first = cylinder;
            shape.flange = cylinder->getDiameter();
            shape.length = lengthOf(*cylinder);
        } else if (cylinder->getDiameter() != shape.flange) {
            shape.pipe = cylinder->getDiameter();
            if (shape.pipe > shape.flange) {
                std::swap(shape.pipe, shape.flange);
                shape.length = lengthOf(*cylinder);
            }
            break;
        }
    }
    return shape;
}

// A pipe with flanges at both ends, whose length is an expression on the target's side.
void writeFlangedPipe(const CataCompGeometry& geometry, CataStream& out, std::string_view ptse) {
    const FlangedShape s = flangedShape(geometry.primitives);
    out.line("call !!ORNACataSCYL('", 0.0, "','", s.length, "','X','", s.flange, "')");
    out.line("call !!ORNACataSCYL('", s.length, "','HEIGHT - ", 2 * s.length, "','X','", s.pipe, "')");
    out.line("call !!ORNACataSCYL('HEIGHT - ", s.length, "','", s.length, "','X','", s.flange, "')");
    if (geometry.points.size() > 2) {
        writePoint(out, ptse, geometry.points[1]);
        writePointWithDistance(out, ptse, geometry.points[2], "+HEIGHT");
    }
}

}  // namespace

void fillPoints(CataItem& item, const HxDbSmrtlnEntity* object) {
    if (item.item == "TESO") {
        pointsOfTee(item.points);
    } else if (!item.virtualGasket && smrtln::isPipe(object) && !item.hasGeometry) {
        item.points = {record(0), record(1)};
    } else {
        pointsOfClass(item, object);
    }
    if (object->isKindOf(HxDbTubeModel::desc())) {
        fillBores(item, object);
    }
}

void computeFrame(CataCompGeometry& g) {
    const auto comp = makeComp(g.className);
    comp->entity = g.object;
    const bool normal = g.className == "Normal";
    if (normal && isBranchFitting(g.object)) {
        g.frame = comp->buildFrameOnBranch(g.points);
        return;
    }
    g.frame = comp->buildFrame(g.points);
    if (normal) {
        turnToStem(g);
    }
    swapNozzleEnds(g);
}

void writeGeometry(CataCompGeometry& geometry, CataStream& out, std::string_view gmseName, std::string_view ptseName) {
    enterElement(out, gmseName);
    if (smrtln::isHose(geometry.object)) {
        writeHose(geometry, out);
    } else if (isFlangedPipe(geometry.object)) {
        return writeFlangedPipe(geometry, out, ptseName);
    } else {
        writePrimitives(geometry, out);
        takeKeyPoints(geometry);
    }
    for (const CataPoint& point : geometry.points) {
        writePoint(out, ptseName, point);
    }
}

CataPoints attachmentPoints(AttachmentKind kind, double outerDiameter, const std::string& endType) {
    struct Row {
        std::string con;
        const char* paxi;
        double bore;
    };
    const bool onPipe = kind == AttachmentKind::Pipe;
    std::vector<Row> rows = {
        {"0", "X", 0}, {onPipe ? "ATT" : endType, "-X", outerDiameter}, {onPipe ? "ATT" : endType, "X", outerDiameter}};
    if (!onPipe) {
        rows.push_back({"CATT", "X", outerDiameter});
        rows.push_back({"0", "Y", 0});
    }
    CataPoints points;
    for (const Row& row : rows) {
        points.push_back(record(static_cast<int>(points.size())));
        points.back().con = row.con;
        points.back().paxi = row.paxi;
        points.back().bore = row.bore;
    }
    return points;
}
