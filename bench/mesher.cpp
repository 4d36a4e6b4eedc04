// The mesher beside a bare tessellation of the same shapes, those of a generated plant.
//
//   bench_mesher [OBJECTS [SEED]]      default 20000 1
//
// For each class: the triangles of the mesher beside those of the chord rule; how many millions of triangles a second
// of processor time the mesher makes from solids that stand ready, with normals too, and from primitives; the bare
// loops; and how many times as long as theirs a triangle takes, in all three ways. The goals: over the mix at most 5
// times in each of them, aim 2.5; in every class at most 1.1 times the triangles of the rule. Exit status 1 when one is
// missed.
#include "exportbase/mesher.h"
#include "bare_shapes.h"
#include "generator/generate.h"
#include "plant/model.h"
#include "platform/entities.h"
#include "platform/hxcom.h"
#include "platform/smrtln.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace {

constexpr int rounds = 7;
constexpr double timeGoal = 5;
constexpr double triangleGoal = 1.1;

struct Shapes {
    std::vector<std::unique_ptr<HextPrimary3D>> primitives;
    std::vector<std::unique_ptr<TlDb3dSolid>> solids;
};

std::unique_ptr<TlDb3dSolid> solidOf(const HextPrimary3D& primitive) {
    const std::unique_ptr<TlDbEntity> entity(transHextPrimary3D(&primitive));
    const ORNACadPrimary3D* parametric = ORNACadPrimary3D::cast(entity.get());
    TlDb3dSolid* solid = nullptr;
    if (parametric == nullptr || parametric->getSolid(solid) != Tl::eOk) {
        return nullptr;
    }
    return std::unique_ptr<TlDb3dSolid>(solid);
}

// The parametric solids that both sides can make, by class.
std::map<std::string, Shapes> collect() {
    std::map<std::string, Shapes> classes;
    bench::BareMesh scratch;
    scratch.reserve(1'000'000);
    std::vector<HxDbObject*> objects;
    getAllSubObjects(hxcom::getDataManTreeRoot(), objects);
    for (const HxDbObject* object : objects) {
        HextPrimaryArray list;
        if (CadGiDraw::getPrimarys(object, list, nullptr, 1) != Hext::eOk) {
            continue;
        }
        for (HextPrimary* primitive : list) {
            std::unique_ptr<HextPrimary> owned(primitive);
            HextPrimary3D* solid = HextPrimary3D::cast(primitive);
            scratch.clear();
            if (solid == nullptr || !bench::bareTessellate(*solid, scratch)) {
                continue;
            }
            if (std::unique_ptr<TlDb3dSolid> body = solidOf(*solid)) {
                Shapes& shapes = classes[primitive->isA()->name()];
                owned.release();
                shapes.primitives.emplace_back(solid);
                shapes.solids.push_back(std::move(body));
            }
        }
    }
    return classes;
}

double processorTime() {
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// The least time of several rounds, in seconds.
double timeOf(const std::function<void()>& work) {
    double least = 1e9;
    for (int round = 0; round < rounds; ++round) {
        const double start = processorTime();
        work();
        least = std::min(least, processorTime() - start);
    }
    return least;
}

struct Row {
    std::size_t shapes = 0;
    std::size_t triangles = 0;
    std::size_t bareTriangles = 0;
    double mesh = 0;
    double normals = 0;
    double whole = 0;
    double bare = 0;

    void add(const Row& o) {
        shapes += o.shapes;
        triangles += o.triangles;
        bareTriangles += o.bareTriangles;
        mesh += o.mesh;
        normals += o.normals;
        whole += o.whole;
        bare += o.bare;
    }
    // How many times as long a triangle takes.
    double ratio(double time) const {
        return (time / static_cast<double>(triangles)) / (bare / static_cast<double>(bareTriangles));
    }
    double overRule() const { return static_cast<double>(triangles) / static_cast<double>(bareTriangles); }
    bool isFast() const { return ratio(std::max({mesh, normals, whole})) <= timeGoal; }
};

Row measure(const Shapes& shapes) {
    Row row;
    row.shapes = shapes.solids.size();
    Mesh mesh;
    const auto fresh = [&](const auto& work) {
        row.triangles = 0;
        for (std::size_t i = 0; i < shapes.solids.size(); ++i) {
            mesh.clear();
            work(i);
            row.triangles += mesh.triangleCount();
        }
    };
    row.whole = timeOf([&] { fresh([&](std::size_t i) { meshVertices(*solidOf(*shapes.primitives[i]), mesh); }); });
    row.normals = timeOf([&] { fresh([&](std::size_t i) { meshSolidNormals(*shapes.solids[i], mesh); }); });
    row.mesh = timeOf([&] { fresh([&](std::size_t i) { meshVertices(*shapes.solids[i], mesh); }); });
    bench::BareMesh bare;
    bare.reserve(1'000'000);
    row.bare = timeOf([&] {
        row.bareTriangles = 0;
        for (const auto& primitive : shapes.primitives) {
            bare.clear();
            bench::bareTessellate(*primitive, bare);
            row.bareTriangles += bare.triangleCount();
        }
    });
    return row;
}

void print(const char* name, const Row& row) {
    const auto speed = [&row](double time) { return static_cast<double>(row.triangles) / time / 1e6; };
    std::printf("%-18s %7zu %10zu %6.2f %8.1f %8.1f %8.1f %8.1f %7.2f %7.2f %7.2f\n", name, row.shapes, row.triangles,
                row.overRule(), speed(row.mesh), speed(row.normals), speed(row.whole),
                static_cast<double>(row.bareTriangles) / row.bare / 1e6, row.ratio(row.mesh), row.ratio(row.normals),
                row.ratio(row.whole));
}

}  // namespace

int main(int argc, char** argv) {
    plant::GenerateOptions options;
    options.objects = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 20000;
    options.seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    const plant::LoadResult loaded = plant::loadModelText(plant::generateModelText(options));
    if (!loaded) {
        std::fprintf(stderr, "%s\n", loaded.error.c_str());
        return 2;
    }
    plant::setCurrentModel(loaded.model.get());
    const std::map<std::string, Shapes> classes = collect();
    std::printf("%-18s %7s %10s %6s %8s %8s %8s %8s %7s %7s %7s\n", "class", "shapes", "triangles", "/rule", "mesh",
                "normals", "whole", "bare", "mesh x", "norm. x", "whole x");
    Row all;
    bool good = true;
    for (const auto& [name, shapes] : classes) {
        const Row row = measure(shapes);
        print(name.c_str(), row);
        all.add(row);
        good = good && row.overRule() <= triangleGoal;
    }
    print("mix", all);
    good = good && all.isFast();
    std::printf("%s\n", good ? "good" : "TOO SLOW OR TOO MANY TRIANGLES");
    return good ? 0 : 1;
}
