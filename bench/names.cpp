// What the names of a component cost, beside what a map of coded keys would cost.
//
//   bench_names [OBJECTS [SEED]]      default 1000000 1
//
// The goal: getComponentName, getScomName, getStype, getSpcoShortName and getSpcoName together take less than four
// insert-and-lookups of a 36-byte key in a std::map of 10^6 entries. Exit status 1 when they take more.
#include "export_run.h"
#include "generator/generate.h"
#include "hextinterface/manager/manager.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <random>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double microseconds(Clock::duration time, std::size_t count) {
    return std::chrono::duration<double, std::micro>(time).count() / static_cast<double>(count);
}

// Insert-and-lookup of 36-byte keys in a std::map, in random order.
double mapYardstick() {
    constexpr std::size_t count = 1000000;
    using Key = std::array<char, 36>;
    std::mt19937_64 random(1);
    std::vector<Key> keys(count);
    for (Key& key : keys) {
        for (std::size_t at = 0; at < key.size(); at += 4) {
            const std::uint64_t word = random();
            std::memcpy(key.data() + at, &word, 4);
        }
    }
    std::map<Key, std::size_t> map;
    std::size_t found = 0;
    const auto start = Clock::now();
    for (const Key& key : keys) {
        map.emplace(key, map.size());
    }
    for (const Key& key : keys) {
        found += map.find(key)->second;
    }
    const auto time = Clock::now() - start;
    if (found != count * (count - 1) / 2) {
        std::abort();
    }
    return microseconds(time, count);
}

// Everything in pipes that has a type; leaves the attribute cache empty.
std::vector<HxDbObject*> componentsOf(const HxDbTreeNode* root) {
    std::vector<HxDbObject*> objects, components;
    getAllSubObjects(root, objects);
    for (HxDbObject* object : objects) {
        if (HxDbTubeModel::cast(object) != nullptr && HxDbBalloon::cast(object) == nullptr &&
            (HxDbTubeWeld::cast(object) != nullptr || !getBomValue(object, "item").empty())) {
            components.push_back(object);
        }
    }
    clearBomCache();
    return components;
}

// Bytes of all names, so that nothing is optimised away.
std::size_t nameAll(NameManager& names, const std::vector<HxDbObject*>& components) {
    std::size_t bytes = 0;
    for (const HxDbObject* object : components) {
        bytes += names.components.getComponentName(object).size();
        bytes += names.components.getScomName(object).size();
        bytes += names.components.getStype(object).size();
        bytes += names.components.getSpcoShortName(object).size();
        bytes += names.components.getSpcoName(object).size();
    }
    return bytes;
}

double timeNames(const std::vector<HxDbObject*>& components) {
    NameManager names;
    names.types.loadSkeyTable();
    names.types.loadTypeTable();
    const auto start = Clock::now();
    const std::size_t bytes = nameAll(names, components);
    const auto time = Clock::now() - start;
    std::printf("  %zu components, %zu bytes of names\n", components.size(), bytes);
    return microseconds(time, components.size());
}

int run(const plant::GenerateOptions& options) {
    const bench::ExportFolder folder("names");
    folder.mapEveryComponent();
    if (!bench::makePlant(options, folder.model())) {
        return 2;
    }
    const plant::LoadResult result = bench::loadPlant(folder.model());
    if (!result) {
        return 2;
    }
    plant::setCurrentModel(result.model.get());
    const std::vector<HxDbObject*> components = componentsOf(hxcom::getDataManTreeRoot());
    if (components.empty()) {
        std::fprintf(stderr, "the plant has no components\n");
        return 2;
    }
    const double cold = timeNames(components);
    std::printf("five names of a component, attributes read for the first time: %.2f us\n", cold);
    const double warm = timeNames(components);
    std::printf("five names of a component, attributes cached:                  %.2f us\n", warm);
    const double map = mapYardstick();
    std::printf("insert-and-lookup of a 36-byte key in a std::map of 10^6:      %.2f us\n", map);
    const bool good = cold < 4 * map;
    std::printf("%s: %.2f map operations for a component, at most 4 wanted\n", good ? "good" : "TOO SLOW", cold / map);
    plant::setCurrentModel(nullptr);
    return good ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const plant::GenerateOptions options = bench::plantOptions(argc, argv, 1000000);
    return run(options);
}
