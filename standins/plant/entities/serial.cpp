#include "plant/entities/serial.h"

#include "plant/entities/json.h"
#include "plant/entities/primitive.h"
#include "plant/shapes/builder.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <utility>

namespace plant {

namespace {

using simdjson::dom::element;

// Blocks stand in blocks down to this depth.
constexpr int deepest = 16;
constexpr std::int64_t usualColor = 7;
constexpr std::int64_t mostColor = 256;

// Makes the entity that was read, as often as asked.
using Factory = std::function<TlDbEntity*()>;

Factory readAny(element value, int depth);

Factory readLine(Members& members, int) {
    const HxGePoint3D start = pointOf(members.required("startPoint"));
    const HxGePoint3D end = pointOf(members.required("endPoint"));
    return [=] { return new TlDbLine(start, end); };
}

struct CircleData {
    HxGePoint3D center;
    HxGeVector3D normal;
    double radius;
};

CircleData readCircleData(Members& members) {
    return {pointOf(members.required("center")), members.vector("normal", {0, 0, 1}),
            numberOf(members.required("radius"))};
}

Factory readCircle(Members& members, int) {
    const CircleData c = readCircleData(members);
    return [=] { return new TlDbCircle(c.center, c.normal, c.radius); };
}

Factory readArc(Members& members, int) {
    const CircleData c = readCircleData(members);
    const double start = numberOf(members.required("startAngle"));
    const double end = numberOf(members.required("endAngle"));
    return [=] { return new TlDbArc(TlDbCircle(c.center, c.normal, c.radius), start, end); };
}

Factory readText(Members& members, int) {
    constexpr double usualHeight = 100;
    TlDbText::Data data;
    data.text = textOf(members.required("text"));
    data.position = pointOf(members.required("position"));
    data.normal = members.vector("normal", {0, 0, 1});
    data.rotation = members.number("rotation", 0);
    data.height = members.number("height", usualHeight);
    data.style = members.text("style", "");
    return [data] { return new TlDbText(data); };
}

std::vector<HxGePoint3D> readPoints(element value) {
    std::vector<HxGePoint3D> points;
    for (const element point : arrayOf(value)) {
        points.push_back(pointOf(point));
    }
    return points;
}

Factory readPolyline(Members& members, int) {
    const std::vector<HxGePoint3D> points = readPoints(members.required("points"));
    return [points] { return new TlDbPolyline(points); };
}

Factory readPoint(Members& members, int) {
    const HxGePoint3D position = pointOf(members.required("position"));
    return [=] { return new TlDbPoint(position); };
}

Factory readHatch(Members&, int) {
    return [] { return new TlDbHatch(); };
}

std::shared_ptr<const tolmar::Body> readBody(Members& members) {
    auto body = std::make_shared<tolmar::Body>();
    if (buildBody(*readSolidPrimitive(members.required("primitive")), *body) != Tl::eOk) {
        throw Unreadable();
    }
    return body;
}

Factory readSolid(Members& members, int) {
    const std::shared_ptr<const tolmar::Body> body = readBody(members);
    return [body] { return new TlDb3dSolid(*body); };
}

Factory readSurface(Members& members, int) {
    const std::shared_ptr<const tolmar::Body> body = readBody(members);
    std::vector<int> colors;
    if (const element* list = members.find("colors")) {
        for (const element color : arrayOf(*list)) {
            colors.push_back(static_cast<int>(wholeOf(color, 0, mostColor)));
        }
    }
    return [body, colors] { return new TlDbSurface(*body, colors); };
}

Factory readParametric(Members& members, int) {
    const std::shared_ptr<const HextPrimary3D> primitive = readSolidPrimitive(members.required("primitive"));
    const auto flags = static_cast<unsigned>(members.whole("gsFlags", 0, std::numeric_limits<std::uint32_t>::max(), 0));
    return [=] {
        ORNACadPrimary3D* entity = newParametricSolid(primitive);
        entity->setGsFlags(flags);
        return entity;
    };
}

std::int32_t vertexNumber(element value, std::size_t count) {
    return static_cast<std::int32_t>(wholeOf(value, 0, static_cast<std::int64_t>(count) - 1));
}

Factory readMesh(Members& members, int) {
    const std::vector<HxGePoint3D> points = readPoints(members.required("points"));
    std::vector<HextPolygonMeshView::Face> faces;
    for (const element value : arrayOf(members.required("faces"))) {
        const simdjson::dom::array corners = arrayOf(value);
        HextPolygonMeshView::Face face;
        if (corners.size() != face.size()) {
            throw Unreadable();
        }
        std::size_t i = 0;
        for (const element corner : corners) {
            face[i++] = vertexNumber(corner, points.size());
        }
        faces.push_back(face);
    }
    return [points, faces] { return new HextPolygonMeshView(points, faces); };
}

Factory readSubDMesh(Members& members, int) {
    const std::vector<HxGePoint3D> vertices = readPoints(members.required("vertices"));
    std::vector<std::int32_t> faces;
    for (const element value : arrayOf(members.required("faces"))) {
        const simdjson::dom::array corners = arrayOf(value);
        faces.push_back(static_cast<std::int32_t>(corners.size()));
        for (const element corner : corners) {
            faces.push_back(vertexNumber(corner, vertices.size()));
        }
    }
    std::vector<HxGeVector3D> normals;
    if (const element* list = members.find("normals")) {
        for (const HxGePoint3D& p : readPoints(*list)) {
            normals.push_back(p.asVector());
        }
        if (normals.size() != vertices.size()) {
            throw Unreadable();
        }
    }
    if (TlDbSubDMesh::check(vertices.size(), faces) != Tl::eOk) {
        throw Unreadable();
    }
    return [vertices, faces, normals] { return new TlDbSubDMesh(vertices, faces, normals); };
}

class ReadPart final : public TlDbBlockReference::Part {
public:
    explicit ReadPart(Factory factory) : factory_(std::move(factory)) {}
    TlDbEntity* create() const override { return factory_(); }

private:
    Factory factory_;
};

Factory readBlock(Members& members, int depth) {
    auto factories = std::make_shared<std::vector<Factory>>();
    for (const element part : arrayOf(members.required("parts"))) {
        factories->push_back(readAny(part, depth + 1));
    }
    return [factories] {
        std::vector<std::unique_ptr<TlDbBlockReference::Part>> parts;
        for (const Factory& factory : *factories) {
            parts.push_back(std::make_unique<ReadPart>(factory));
        }
        return new TlDbBlockReference(std::move(parts));
    };
}

struct EntityKind {
    std::string_view name;
    Factory (*read)(Members& members, int depth);
};
constexpr EntityKind kinds[] = {
    {"line", readLine},         {"circle", readCircle}, {"arc", readArc},         {"polyline", readPolyline},
    {"text", readText},         {"hatch", readHatch},   {"point", readPoint},     {"solid", readSolid},
    {"mesh", readMesh},         {"block", readBlock},   {"surface", readSurface}, {"parametric", readParametric},
    {"subDMesh", readSubDMesh},
};

Factory withColor(Factory factory, int color) {
    return [factory = std::move(factory), color] {
        TlDbEntity* entity = factory();
        entity->setColorIndex(color);
        return entity;
    };
}

Factory readAny(element value, int depth) {
    if (depth > deepest) {
        throw Unreadable();
    }
    Members members(value);
    const std::string type = textOf(members.required("type"));
    const element* color = members.find("color");
    const EntityKind* kind =
        std::find_if(std::begin(kinds), std::end(kinds), [&type](const EntityKind& k) { return k.name == type; });
    if (kind == std::end(kinds)) {
        throw Unreadable();
    }
    Factory factory = kind->read(members, depth);
    members.finish();
    // A parametric entity without a colour of its own has the one of its primitive.
    if (color == nullptr && type == "parametric") {
        return factory;
    }
    const std::int64_t index = color != nullptr ? wholeOf(*color, 0, mostColor) : usualColor;
    return withColor(std::move(factory), static_cast<int>(index));
}

}  // namespace

TlDbEntity* readEntity(std::string_view serial) {
    thread_local simdjson::dom::parser parser;
    element root;
    if (parser.parse(serial.data(), serial.size()).get(root) != simdjson::SUCCESS) {
        return nullptr;
    }
    try {
        return readAny(root, 0)();
    } catch (const Unreadable&) {
        return nullptr;
    }
}

}  // namespace plant
