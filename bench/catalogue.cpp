// What the catalogue costs for each component: when entries are new, and when all are known.
//
//   bench_catalogue [OBJECTS [SEED]]      default 1000000 1
//
// The goals: at least 200,000 components a second when all entries are known, attributes read for the first time; and a
// cost per component, new or known, at most 1.25 times that at 10^3 objects for each power of ten up to OBJECTS. Exit
// status 1 when one is missed. Processor time, so that other work on the machine does not count.
#include "export_run.h"
#include "generator/generate.h"
#include "hextinterface/hextcata/hextcata.h"
#include "hextinterface/manager/manager.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/smrtln.h"
#include "tolmar/run_report.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

namespace {

constexpr double wantedPerSecond = 200000;
constexpr double allowedGrowth = 1.25;
constexpr std::size_t leastComponents = 200000;  // measured at each size, in as many rounds as that takes

// The branches of all pipelines; leaves the attribute cache empty.
std::vector<ComponentList> allBranches() {
    std::vector<HxDbObject*> objects;
    getAllSubObjects(hxcom::getDataManTreeRoot(), objects);
    std::vector<ComponentList> branches;
    for (const HxDbObject* object : objects) {
        std::vector<std::vector<HxDbObjectId>> ids;
        if (HextPipeline::cast(object) != nullptr) {
            smrtln::getBranchOfPipeline_piping(object->objectId(), ids);
        }
        for (const auto& branch : ids) {
            ComponentList& components = branches.emplace_back();
            for (const HxDbObjectId id : branch) {
                if (HxDbSmrtlnEntity* component = openAs<HxDbSmrtlnEntity>(id)) {
                    components.push_back(component);
                }
            }
        }
    }
    clearBomCache();
    return branches;
}

// Fills the processor's caches with something else, so that a small plant is met as cold as a large one.
void evictCaches() {
    static std::vector<unsigned char> other(256 << 20);
    for (std::size_t i = 0; i < other.size(); i += 64) {
        ++other[i];
    }
}

// Objects that stand in no pipeline and have no attributes. The name manager remembers the objects that it was asked
// for lately; asking for as many strangers makes it forget them, since what is measured is a component met for the
// first time.
constexpr std::int64_t firstStranger = 900000000;
constexpr int strangerCount = 8192;

bool addStrangers(const std::filesystem::path& plant) {
    constexpr std::string_view end = "]}\n";
    std::error_code error;
    std::filesystem::resize_file(plant, std::filesystem::file_size(plant) - end.size(), error);
    std::ofstream file(plant, std::ios::app | std::ios::binary);
    for (int i = 0; i < strangerCount; ++i) {
        file << ",{\"id\":" << firstStranger + i << R"(,"class":"HxDbTubeModelSpec"})";
    }
    file << end;
    file.close();
    return !error && file.good();
}

void forgetObjects(NameManager& names) {
    for (int i = 0; i < strangerCount; ++i) {
        names.components.getComponentName(openAs<HxDbObject>(HxDbObjectId(firstStranger + i)));
    }
}

// Seconds for all branches, attributes read for the first time.
double secondsFor(CataBuilder& builder, NameManager& names, const std::vector<ComponentList>& branches) {
    forgetObjects(names);
    clearBomCache();
    evictCaches();
    const double start = bench::processorSeconds();
    for (const ComponentList& branch : branches) {
        builder.writeBranch(branch, {});
    }
    return bench::processorSeconds() - start;
}

struct Cost {
    std::size_t components = 0;
    double first = 0;  // microseconds a component
    double known = 0;
};

Cost measure(const bench::ExportFolder& folder, const std::vector<ComponentList>& branches) {
    Cost cost;
    for (const ComponentList& branch : branches) {
        cost.components += branch.size();
    }
    const std::size_t rounds = 1 + leastComponents / std::max<std::size_t>(cost.components, 1);
    for (std::size_t round = 0; round < rounds; ++round) {
        NameManager names;
        names.types.loadSkeyTable();
        names.types.loadTypeTable();
        CataBuilder builder(folder.hext().string(), names);
        cost.first += secondsFor(builder, names, branches);
        cost.known += secondsFor(builder, names, branches);
        tolmar::runReport().clear();
    }
    const double micro = 1e6 / static_cast<double>(cost.components * rounds);
    cost.first *= micro;
    cost.known *= micro;
    return cost;
}

// No components when the plant could not be made.
Cost costOf(const plant::GenerateOptions& options) {
    const bench::ExportFolder folder("cata");
    folder.mapEveryComponent();
    if (!bench::makePlant(options, folder.model()) || !addStrangers(folder.model())) {
        return {};
    }
    const plant::LoadResult result = bench::loadPlant(folder.model());
    if (!result) {
        return {};
    }
    plant::setCurrentModel(result.model.get());
    const Cost cost = measure(folder, allBranches());
    clearBomCache();
    plant::setCurrentModel(nullptr);
    return cost;
}

int judge(const std::vector<Cost>& costs) {
    const auto growth = [&](double Cost::*part) {
        double largest = 0;
        for (const Cost& cost : costs) {
            largest = std::max(largest, cost.*part / (costs.front().*part));
        }
        return largest;
    };
    const double perSecond = 1e6 / costs.back().known;
    const bool fast = perSecond >= wantedPerSecond;
    const bool flat = growth(&Cost::first) <= allowedGrowth && growth(&Cost::known) <= allowedGrowth;
    std::printf("%s: %.0f known components a second, %.0f wanted\n", fast ? "good" : "TOO SLOW", perSecond,
                wantedPerSecond);
    std::printf("%s: at most %.2f (new) and %.2f (known) times the cost at 10^3 objects, %.2f allowed\n",
                flat ? "good" : "NOT FLAT", growth(&Cost::first), growth(&Cost::known), allowedGrowth);
    return fast && flat ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const std::uint64_t objects = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000;
    const std::uint64_t seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    std::vector<Cost> costs;
    for (std::uint64_t size = std::min<std::uint64_t>(objects, 1000); size != 0;
         size = size == objects ? 0 : std::min(10 * size, objects)) {
        costs.push_back(costOf({.objects = size, .seed = seed}));
        if (costs.back().components == 0) {
            return 2;
        }
        std::printf("%8llu objects, %7zu components: new %.2f us, known %.2f us each\n",
                    static_cast<unsigned long long>(size), costs.back().components, costs.back().first,
                    costs.back().known);
    }
    return costs.empty() ? 2 : judge(costs);
}
