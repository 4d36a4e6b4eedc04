#include "sources/rvm/measure.h"

#include "plant/shapes/builder.h"
#include "platform/entities.h"
#include "tolmar/mesh.h"

#include <algorithm>
#include <memory>
#include <simdjson.h>

namespace {

constexpr double fineness = 0.002;

struct Triangles {
    std::vector<HxGePoint3D> points;
    std::vector<std::uint32_t> corners;
};

Triangles ofEntity(const std::string& serial) {
    simdjson::dom::parser parser;
    const simdjson::dom::element root = parser.parse(serial);
    Triangles mesh;
    for (const auto point : root["points"]) {
        mesh.points.emplace_back(double(point.at(0)), double(point.at(1)), double(point.at(2)));
    }
    for (const auto face : root["faces"]) {
        for (const auto corner : face) {
            mesh.corners.push_back(static_cast<std::uint32_t>(std::uint64_t(corner)));
        }
    }
    return mesh;
}

Triangles ofSolid(const HextPrimary3D& solid) {
    Triangles mesh;
    tolmar::Body body;
    tolmar::TriangleMesh made;
    if (plant::buildBody(solid, body) != Tl::eOk || tolmar::meshBody(body, fineness, made) != tolmar::MeshStatus::Ok) {
        return mesh;
    }
    for (std::size_t i = 0; i < made.nodeCount(); ++i) {
        mesh.points.emplace_back(made.nodes[3 * i], made.nodes[3 * i + 1], made.nodes[3 * i + 2]);
    }
    mesh.corners.assign(made.triangles.begin(), made.triangles.end());
    return mesh;
}

}  // namespace

Measured measure(const HextPrimary& primitive) {
    Measured result;
    result.className = primitive.isA()->name();
    const HextPrimaryAcad* content = HextPrimaryAcad::cast(&primitive);
    const HextPrimary3D* solid = HextPrimary3D::cast(&primitive);
    const Triangles mesh = content != nullptr ? ofEntity(content->serial) : ofSolid(*solid);
    if (mesh.points.empty()) {
        return result;
    }
    result.isMade = !mesh.corners.empty();
    result.low = result.high = mesh.points.front();
    for (const HxGePoint3D& p : mesh.points) {
        result.low = {std::min(result.low.x, p.x), std::min(result.low.y, p.y), std::min(result.low.z, p.z)};
        result.high = {std::max(result.high.x, p.x), std::max(result.high.y, p.y), std::max(result.high.z, p.z)};
    }
    const HxGePoint3D base = mesh.points.front();
    for (std::size_t i = 0; i < mesh.corners.size(); i += 3) {
        const HxGeVector3D a = mesh.points[mesh.corners[i]] - base;
        const HxGeVector3D b = mesh.points[mesh.corners[i + 1]] - base;
        const HxGeVector3D c = mesh.points[mesh.corners[i + 2]] - base;
        result.volume += a.dotProduct(b.crossProduct(c)) / 6;
        result.area += (b - a).crossProduct(c - a).length() / 2;
    }
    return result;
}

std::vector<HxGePoint3D> lineEnds(const HextPrimary& primitive) {
    const HextPrimaryAcadEntity* content = HextPrimaryAcadEntity::cast(&primitive);
    if (content == nullptr) {
        return {};
    }
    const std::unique_ptr<TlDbEntity> entity(hxcad::setEntitySerialString(content->serial));
    const TlDbLine* line = TlDbLine::cast(entity.get());
    return line != nullptr ? std::vector<HxGePoint3D>{line->startPoint(), line->endPoint()}
                           : std::vector<HxGePoint3D>{};
}
