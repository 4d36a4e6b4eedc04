// Every class of solid, written as macro text, read back and rebuilt, against the mesh of its source.
#include "equip_fixture.h"
#include "platform/entities.h"
#include "tolmar/mesh.h"

#include <functional>
#include <random>

namespace {

// Places a primitive that is told in coordinates of its own.
class Place {
public:
    explicit Place(const TlGeMatrix3d& matrix) : matrix_(matrix) {}
    HxGePoint3D p(double x, double y, double z) const { return matrix_ * HxGePoint3D(x, y, z); }
    HxGeVector3D v(double x, double y, double z) const { return matrix_ * HxGeVector3D(x, y, z); }
    // A direction where a point stands.
    HxGePoint3D d(double x, double y, double z) const { return HxGePoint3D() + v(x, y, z); }
    HextVertexList list(const HextVertexList& own) const {
        HextVertexList placed = own;
        for (HextVertex& vertex : placed) {
            vertex.point = matrix_ * vertex.point;
        }
        return placed;
    }

private:
    TlGeMatrix3d matrix_;
};

using Primitive = std::unique_ptr<HextPrimary3D>;

template <typename Class>
Primitive make(const std::function<void(Class&)>& fill) {
    auto primitive = std::make_unique<Class>();
    fill(*primitive);
    return primitive;
}

struct Source {
    const char* name;
    Primitive (*at)(const Place&);
};

// A closed outline with an arc at a corner and one between two edges.
const HextVertexList roundedOutline = {
    {1, {0, 0, 0}},     {1, {600, 0, 0}},   {2, {600, 300, 0}}, {3, {512.1320343559643, 512.1320343559643, 0}},
    {1, {300, 600, 0}}, {2, {200, 600, 0}}, {7, {100, 500, 0}}, {4, {0, 600, 0}}};
const HextVertexList roundHole = {{6, {400, 300, 0}}, {3, {300, 400, 0}}, {3, {200, 300, 0}}};

const Source exactSources[] = {
    {"box from a corner",
     [](const Place& at) {
         return make<HextBox3D>([&](HextBox3D& b) {
             b.point = at.p(10, 20, 30);
             b.xAxis = at.v(1, 0, 0), b.yAxis = at.v(0, 1, 0);
             b.xLength = 300, b.yLength = 500, b.zLength = 700;
         });
     }},
    {"left-handed box with long axes",
     [](const Place& at) {
         return make<HextBox3D>([&](HextBox3D& b) {
             b.handedness = 0;
             b.point = at.p(10, 20, 30);
             b.xAxis = at.v(1, 0, 0), b.yAxis = at.v(0, 1, 0);
             b.xLength = 300, b.yLength = 500, b.zLength = 700;
         });
     }},
    {"box about its centre",
     [](const Place& at) {
         return make<HextBox3D>([&](HextBox3D& b) {
             b.pointKind = 1;
             b.point = at.p(10, 20, 30);
             b.xAxis = at.v(0, 0, 2), b.yAxis = at.v(3, 0, 0);
             b.xLength = 300, b.yLength = 500, b.zLength = 700;
         });
     }},
    {"cylinder",
     [](const Place& at) {
         return make<HextCylinder3D>([&](HextCylinder3D& c) {
             c.startPoint = at.p(0, 0, 0), c.endPoint = at.p(300, 400, 0), c.diameter = 200;
         });
     }},
    {"sloped cylinder",
     [](const Place& at) {
         return make<HextScylinder3D>([&](HextScylinder3D& c) {
             c.startPoint = at.p(0, 0, 800), c.endPoint = at.p(0, 0, 0), c.diameter = 200, c.vect = at.v(1, 2, 6);
         });
     }},
    {"concentric cone",
     [](const Place& at) {
         return make<HextConcone3D>([&](HextConcone3D& c) {
             c.startPoint = at.p(0, 0, 0), c.endPoint = at.p(0, 500, 100), c.startDiameter = 400, c.endDiameter = 100;
         });
     }},
    {"eccentric cone",
     [](const Place& at) {
         return make<HextEcone3D>([&](HextEcone3D& c) {
             c.startPoint = at.p(5, 5, 5), c.endPoint = at.p(85, 5, 505);
             c.startDiameter = 400, c.endDiameter = 240, c.vect = at.v(2, 0, 0);
         });
     }},
    {"rectangular frustum",
     [](const Place& at) {
         return make<HextSqucone3D>([&](HextSqucone3D& c) {
             c.bottomX = 600, c.bottomY = 400, c.topX = 200, c.topY = 300, c.height = 500;
             c.point = at.p(0, 10, 20), c.zAxis = at.v(0, 0, 1), c.xAxis = at.v(1, 0, 0);
             c.offsetDirection = at.v(0.6, 0.8, 0), c.offsetLength = 150;
         });
     }},
    {"wedge",
     [](const Place& at) {
         return make<HextWedge3D>([&](HextWedge3D& w) {
             w.point1 = at.p(400, 30, 0), w.point2 = at.p(0, 0, 0), w.point3 = at.p(50, 300, 0), w.wedgeSize = 250;
         });
     }},
    {"wedge the other way",
     [](const Place& at) {
         return make<HextWedge3D>([&](HextWedge3D& w) {
             w.point1 = at.p(400, 30, 0), w.point2 = at.p(0, 0, 0), w.point3 = at.p(50, 300, 0), w.wedgeSize = -250;
         });
     }},
    {"prism",
     [](const Place& at) {
         return make<HextPrism3D>([&](HextPrism3D& p) {
             p.endPoint = at.p(0, 0, 0), p.startPoint = at.p(0, 0, 700), p.vertexPoint = at.p(120, 160, 0), p.sides = 6;
         });
     }},
    {"spherical head",
     [](const Place& at) {
         return make<HextOval3D>([&](HextOval3D& o) {
             o.point = at.p(1, 2, 3), o.vect = at.v(0, 0, 4);
             o.axialRadius = o.radialRadius = 500, o.baseRadius = 300;
         });
     }},
    {"elbow",
     [](const Place& at) {
         return make<HextTorus3D>([&](HextTorus3D& t) {
             t.center = at.p(0, 0, 0), t.startPoint = at.p(600, 0, 0), t.thirdField = at.p(-360, 480, 0);
             t.startDiameter = t.endDiameter = 200;
         });
     }},
    {"half ring",
     [](const Place& at) {
         return make<HextTorus3D>([&](HextTorus3D& t) {
             t.center = at.p(0, 0, 0), t.startPoint = at.p(600, 0, 0), t.thirdField = at.d(0, 0, 2), t.arcKind = 3;
             t.startDiameter = t.endDiameter = 200;
         });
     }},
    {"ring",
     [](const Place& at) {
         return make<HextTorus3D>([&](HextTorus3D& t) {
             t.center = at.p(0, 0, 0), t.startPoint = at.p(600, 0, 0), t.thirdField = at.d(0, 0, 2), t.arcKind = 2;
             t.startDiameter = t.endDiameter = 200;
         });
     }},
    {"elbow about an axis, in degrees",
     [](const Place& at) {
         return make<HextTorus3D>([&](HextTorus3D& t) {
             t.center = at.p(0, 0, 0), t.startPoint = at.p(600, 0, 0), t.thirdField = at.d(0, 0, 1), t.form = 1;
             t.angle = 215, t.startDiameter = t.endDiameter = 200;
         });
     }},
    {"square elbow",
     [](const Place& at) {
         return make<HextSqutorus3D>([&](HextSqutorus3D& t) {
             t.center = at.p(0, 0, 0), t.startPoint = at.p(600, 0, 0), t.thirdField = at.p(0, 600, 0);
             t.startWidth = t.endWidth = 200, t.startHeight = t.endHeight = 300;
         });
     }},
    {"square elbow about an axis, in radians",
     [](const Place& at) {
         return make<HextSqutorus3D>([&](HextSqutorus3D& t) {
             t.center = at.p(0, 0, 0), t.startPoint = at.p(600, 0, 0), t.normal = at.v(0, 0, 3), t.form = 1;
             t.angle = 4, t.startWidth = t.endWidth = 200, t.startHeight = t.endHeight = 300;
         });
     }},
    {"revolved profile",
     [](const Place& at) {
         return make<HextRevolve>([&](HextRevolve& r) {
             r.center = at.p(-500, 0, 0), r.axis = at.v(0, 2, 0), r.angle = 5, r.profile = at.list(roundedOutline);
         });
     }},
    {"extruded outline with a hole",
     [](const Place& at) {
         return make<HextSpolygon>([&](HextSpolygon& s) {
             s.origin = at.p(70, 80, 90), s.xAxis = at.v(0, 1, 0), s.yAxis = at.v(0, 0, 1), s.direction = at.v(1, 0, 0);
             s.height = 150, s.outline = roundedOutline;
             s.holes = std::vector<HextVertexList>{roundHole};
         });
     }},
};

// The world itself, the world turned about, and frames of any direction.
std::vector<TlGeMatrix3d> placements() {
    const HxGeVector3D x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
    std::vector<TlGeMatrix3d> all = {TlGeMatrix3d(), TlGeMatrix3d::coordSystem({100, 0, 0}, y, z, x),
                                     TlGeMatrix3d::coordSystem({0, -100, 5}, -x, z, y),
                                     TlGeMatrix3d::coordSystem({0, 0, 0}, y, -x, z),
                                     TlGeMatrix3d::coordSystem({0, 0, 0}, x, -y, -z)};
    std::mt19937 random(7);
    std::uniform_real_distribution<double> number(-1, 1);
    const auto any = [&] { return HxGeVector3D(number(random), number(random), number(random)); };
    for (int i = 0; i < 25; ++i) {
        const HxGeVector3D first = any().normal();
        const HxGeVector3D third = first.crossProduct(any()).normal();
        const HxGePoint3D origin(20000 * number(random), 20000 * number(random), 20000 * number(random));
        all.push_back(TlGeMatrix3d::coordSystem(origin, first, third.crossProduct(first), third));
    }
    return all;
}

Shape meshOf(const HextPrimary3D& primitive) {
    const std::unique_ptr<TlDbEntity> entity(transHextPrimary3D(&primitive));
    TlDb3dSolid* made = nullptr;
    EXPECT_EQ(static_cast<const ORNACadPrimary3D&>(*entity).getSolid(made), 0);
    const std::unique_ptr<TlDb3dSolid> solid(made);
    tolmar::TriangleMesh mesh;
    EXPECT_EQ(tolmar::meshBody(*solid->body(), 0.005, mesh), tolmar::MeshStatus::Ok);
    Shape shape;
    for (std::size_t i = 0; i < mesh.nodeCount(); ++i) {
        shape.points.emplace_back(mesh.nodes[3 * i], mesh.nodes[3 * i + 1], mesh.nodes[3 * i + 2]);
    }
    const auto node = [&](std::size_t i) { return shape.points[mesh.triangles[i]] - shape.points[0]; };
    for (std::size_t t = 0; t < mesh.triangles.size(); t += 3) {
        shape.volume += node(t).dotProduct(node(t + 1).crossProduct(node(t + 2))) / 6;
    }
    return shape;
}

class EquipSolids : public EquipTest {
protected:
    Shape macroOf(const HextPrimary3D& primitive) {
        EquipRecord record;
        record.groups.push_back(convertPrimary(primitive));
        finishRecord(record);
        return rebuild(macro::readElements(headOf(record, ElementKind::Equipment)).at(0));
    }

    // How far the shapes' extents differ at most, over the box and the directions between its sides.
    static double reachError(const Shape& a, const Shape& b) {
        double error = 0;
        for (int i = 0; i < 27; ++i) {
            const HxGeVector3D direction = HxGeVector3D(i % 3 - 1, i / 3 % 3 - 1, i / 9 - 1).normal();
            error = std::max(error, std::fabs(a.reach(direction) - b.reach(direction)));
        }
        return error;
    }
};

TEST_F(EquipSolids, MeanWhatTheirSourcesMean) {
    for (const Source& source : exactSources) {
        double worstVolume = 0;
        double worstReach = 0;
        for (const TlGeMatrix3d& placement : placements()) {
            const Primitive primitive = source.at(Place(placement));
            const Shape expected = meshOf(*primitive);
            const Shape shape = macroOf(*primitive);
            worstVolume = std::max(worstVolume, std::fabs(shape.volume / expected.volume - 1));
            worstReach = std::max(worstReach, reachError(shape, expected));
        }
        EXPECT_LT(worstVolume, 1e-4) << source.name;
        EXPECT_LT(worstReach, 0.02) << source.name;
    }
}

}  // namespace
