#include "tolmar/mesh/extrude.h"
#include "tolmar/mesh/revolve.h"
#include "tolmar/mesh/simple.h"

namespace tolmar {

namespace {

struct Workplace {
    MeshScratch scratch;
    Profile profile;
};

Workplace& workplace() {
    thread_local Workplace place;
    return place;
}

struct Mesher {
    double tolerance;
    TriangleMesh& mesh;

    MeshStatus operator()(const BlockBody& body) const { return meshBlock(body, mesh); }
    MeshStatus operator()(const ConeBody& body) const {
        return meshCone(body, tolerance, workplace().scratch.arcs, mesh);
    }
    MeshStatus operator()(const ExtrudedBody& body) const {
        return meshExtruded(body, tolerance, workplace().scratch, mesh);
    }
    MeshStatus operator()(const RevolvedBody& body) const {
        Workplace& place = workplace();
        return meshRevolved(body, tolerance, place.scratch, place.profile, mesh);
    }
    MeshStatus operator()(const SquareRoundBody& body) const {
        return meshSquareRound(body, tolerance, workplace().scratch.arcs, mesh);
    }
};

constexpr int coneFaces = 3;
constexpr int blockFaces = 6;
constexpr int squareRoundFaces = 10;

struct FaceCounter {
    int operator()(const BlockBody&) const { return blockFaces; }
    int operator()(const ConeBody&) const { return coneFaces; }
    int operator()(const ExtrudedBody& body) const {
        std::size_t count = 2;
        for (const Outline& outline : body.outlines) {
            count += outline.size();
        }
        return static_cast<int>(count);
    }
    int operator()(const RevolvedBody& body) const {
        return static_cast<int>(body.profile.size()) + (body.angle < twoPi ? 2 : 0);
    }
    int operator()(const SquareRoundBody&) const { return squareRoundFaces; }
};

}  // namespace

int faceCount(const Body& body) {
    return std::visit(FaceCounter{}, body);
}

MeshStatus meshBody(const Body& body, double tolerance, TriangleMesh& mesh) {
    return std::visit(Mesher{tolerance, mesh}, body);
}

}  // namespace tolmar
