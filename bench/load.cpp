// Loading of model files beside the yardsticks: bench_load FILE...
//
// Each job runs in a process of its own, which tells its peak of memory, and repeats for a while; the median counts.
// A row gives MB of file a second of processor time, the ratio to the walk into strings, the peak of memory in file
// sizes, and nanoseconds an object. The last row walks the tree of a loaded model and sorts its objects by class.
// Exit status 1 when a goal is missed: loading no slower than the walk into strings, at most 4 file sizes of memory, a
// tree walk in a tenth of loading, and an object of the last file at most 1.25 times as dear as one of the first.

#include "child_process.h"
#include "export_run.h"
#include "plant/model.h"
#include "platform/hxcom.h"
#include "platform/tree_walker.h"
#include "yardsticks.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Measure {
    double seconds = 0;
    double peakBytes = 0;
    double objects = 0;
};

struct Job {
    const char* name;
    std::size_t (*run)(const std::filesystem::path& file);
    void (*prepare)(const std::filesystem::path& file) = nullptr;  // not timed
};

std::size_t load(const std::filesystem::path& file) {
    const plant::LoadResult result = plant::loadModel(file);
    if (!result) {
        throw std::runtime_error(result.error);
    }
    return plant::objectCount(*result.model);
}

plant::LoadResult& loadedModel() {
    static plant::LoadResult result;
    return result;
}

void keepLoaded(const std::filesystem::path& file) {
    loadedModel() = plant::loadModel(file);
    if (!loadedModel()) {
        throw std::runtime_error(loadedModel().error);
    }
    plant::setCurrentModel(loadedModel().model.get());
}

struct Sorted {
    std::size_t pipelines = 0;
    std::size_t structures = 0;
    std::size_t equipment = 0;
    std::size_t supports = 0;
    std::size_t grids = 0;
    std::size_t smart = 0;
    std::size_t others = 0;

    std::size_t sum() const { return pipelines + structures + equipment + supports + grids + smart + others; }
};

std::size_t& countOf(Sorted& sorted, const HxDbObject& object) {
    if (object.isKindOf(HxDbSmrtlnEntity::desc())) {
        return sorted.smart;
    }
    if (object.isKindOf(HextPipeline::desc())) {
        return sorted.pipelines;
    }
    if (object.isKindOf(HextStruct::desc())) {
        return sorted.structures;
    }
    if (object.isKindOf(HextEquipe::desc())) {
        return sorted.equipment;
    }
    if (object.isKindOf(HextSupport::desc())) {
        return sorted.supports;
    }
    return object.isKindOf(HextAxiss::desc()) ? sorted.grids : sorted.others;
}

void sortTree(HxDbTreeNode* root, Sorted& sorted) {
    for (TreeWalker walker(root); !walker.done(); walker.next()) {
        HxDbObject* object = nullptr;
        if (hxdbOpenObject(walker.current()->getTreeNodeValue(), object, 2) == Hext::eOk) {
            ++countOf(sorted, *object);
        }
    }
}

std::size_t walkTrees(const std::filesystem::path&) {
    Sorted sorted;
    sortTree(hxcom::getDataManTreeRoot(), sorted);
    std::vector<HxDbObject*> others;
    hxcom::getTreeRootOfOther(others);
    for (HxDbObject* other : others) {
        sortTree(HxDbTreeNode::cast(other), sorted);
    }
    return sorted.sum();
}

constexpr Job jobs[] = {
    {"plain read", bench::readBytes},
    {"walk into strings", bench::walkIntoStrings},
    {"walk into an arena", bench::walkIntoArena},
    {"cJSON tree", bench::parseTree},
    {"loadModel", load},
    {"walk and classify", walkTrees, keepLoaded},
};
constexpr std::size_t stringsJob = 1;
constexpr std::size_t loadJob = 4;
constexpr std::size_t walkJob = 5;

Measure measureHere(const Job& job, const std::filesystem::path& file) {
    constexpr double enough = 1.0;
    constexpr std::size_t fewestRuns = 3;
    Measure result;
    std::vector<double> runs;
    if (job.prepare != nullptr) {
        job.prepare(file);
    }
    for (double total = 0; runs.size() < fewestRuns || total < enough; total += runs.back()) {
        const double start = bench::processorSeconds();
        result.objects = static_cast<double>(job.run(file));
        runs.push_back(bench::processorSeconds() - start);
    }
    std::nth_element(runs.begin(), runs.begin() + static_cast<std::ptrdiff_t>(runs.size() / 2), runs.end());
    result.seconds = runs[runs.size() / 2];
    result.peakBytes = bench::peakBytes();
    return result;
}

Measure measure(const Job& job, const std::filesystem::path& file) {
    return bench::inChildProcess(job.name, [&] { return measureHere(job, file); });
}

// Counts goals that are missed, with a line for each.
class Goals {
public:
    void expectAtMost(const char* what, double value, double limit) {
        if (value > limit) {
            std::printf("missed: %s is %.2f, at most %.2f wanted\n", what, value, limit);
            ++missed_;
        }
    }
    bool allMet() const { return missed_ == 0; }

private:
    int missed_ = 0;
};

// Gives the seconds that loading costs an object.
double printTable(const std::filesystem::path& file, Goals& goals) {
    const auto bytes = static_cast<double>(std::filesystem::file_size(file));
    std::vector<Measure> results;
    for (const Job& job : jobs) {
        results.push_back(measure(job, file));
    }
    const double objects = results[loadJob].objects;
    std::printf("%s: %.1f MB, %.0f objects\n", file.filename().c_str(), bytes / 1e6, objects);
    std::printf("%-20s %9s %9s %9s %9s\n", "", "MB/s", "ratio", "peak", "ns/object");
    for (std::size_t i = 0; i < results.size(); ++i) {
        const Measure& one = results[i];
        std::printf("%-20s %9.0f %9.2f %9.2f %9.0f\n", jobs[i].name, bytes / 1e6 / one.seconds,
                    results[stringsJob].seconds / one.seconds, one.peakBytes / bytes, one.seconds * 1e9 / objects);
    }
    const Measure& loading = results[loadJob];
    goals.expectAtMost("loading in walks into strings", loading.seconds / results[stringsJob].seconds, 1.0);
    constexpr double bigFile = 1e7;
    if (bytes > bigFile) {
        goals.expectAtMost("memory in file sizes", loading.peakBytes / bytes, 4.0);
    }
    goals.expectAtMost("a tree walk in loads", results[walkJob].seconds / loading.seconds, 0.1);
    return loading.seconds / objects;
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::fprintf(stderr, "usage: bench_load FILE...\n");
        return 1;
    }
    try {
        Goals goals;
        std::vector<double> perObject;
        for (int i = 1; i < count; ++i) {
            perObject.push_back(printTable(arguments[i], goals));
        }
        if (perObject.size() > 1) {
            const double growth = perObject.back() / perObject.front();
            std::printf("an object of the last file costs %.2f of one of the first\n", growth);
            goals.expectAtMost("growth", growth, 1.25);
        }
        return goals.allMet() ? 0 : 1;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return 2;
    }
}
