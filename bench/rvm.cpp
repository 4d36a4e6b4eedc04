// RVMOUT of a generated plant without a script, beside writing the same bytes and beside a bare walk of the model file.
//
//   bench_rvm [OBJECTS [SEED]]      default 900000 1, which makes about 10^6 primitives
//
// The goals: both files within 8 times (aim 5) the time of writing their bytes raw in blocks of 1 MiB; load and export
// within 1.6 times a bare walk of the model file; no memory that grows with the primitives written. Exit status 1 when
// one is missed.
#include "export_run.h"
#include "generator/generate.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"
#include "rvm/command.h"
#include "scripts/script_host.h"
#include "tolmar/run_report.h"
#include "yardsticks.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr int rounds = 5;
constexpr double rawGoal = 8;
constexpr double walkGoal = 1.6;
constexpr long memoryGoal = 16 << 10;  // KiB

std::size_t countTag(const std::string& bytes, std::string_view name) {
    std::string tag;
    for (const char c : name) {
        tag += std::string(3, '\0') + c;
    }
    std::size_t count = 0;
    for (std::size_t at = bytes.find(tag); at != std::string::npos; at = bytes.find(tag, at + 16)) {
        ++count;
    }
    return count;
}

struct Times {
    double load = std::numeric_limits<double>::max();
    double whole = std::numeric_limits<double>::max();  // the command, its dialog included
    double write = std::numeric_limits<double>::max();  // from the first node on
    double raw = std::numeric_limits<double>::max();
    double walk = std::numeric_limits<double>::max();
    long memory = 0;
    std::size_t bytes = 0;
    std::size_t primitives = 0;
};

// One load and export; false when it fails.
bool runOnce(const bench::ExportFolder& folder, Times& times) {
    const double loadStart = bench::processorSeconds();
    const plant::LoadResult result = bench::loadPlant(folder.model());
    if (!result) {
        return false;
    }
    times.load = std::min(times.load, bench::processorSeconds() - loadStart);
    plant::setCurrentModel(result.model.get());
    bench::ExportUi ui(folder.out());
    const double start = bench::processorSeconds();
    rvmout();
    times.write = std::min(times.write, bench::processorSeconds() - ui.processorAtStart);
    times.whole = std::min(times.whole, bench::processorSeconds() - start);
    times.memory = std::max(times.memory, bench::peakMemory() - ui.memoryAtStart);
    destroyScriptHost();
    clearBomCache();
    plant::setCurrentModel(nullptr);
    return ui.boxes == 1 && tolmar::runReport().failedFiles().empty();
}

std::vector<std::string> outputs(const bench::ExportFolder& folder, Times& times) {
    std::vector<std::string> files = folder.outputs();
    times.bytes = times.primitives = 0;
    for (const std::string& file : files) {
        times.bytes += file.size();
        times.primitives += countTag(file, "PRIM") + countTag(file, "OBST");
    }
    return files;
}

bool report(const Times& times) {
    const double raw = times.write / times.raw;
    const double walk = (times.load + times.whole) / times.walk;
    std::printf("%zu primitives, %.1f MiB in both files\n", times.primitives,
                static_cast<double>(times.bytes) / (1 << 20));
    std::printf("raw write of the bytes   %.3f s\n", times.raw);
    std::printf("export, nodes and files  %.3f s, %.1f times raw, at most %.0f wanted, aim 5\n", times.write, raw,
                rawGoal);
    std::printf("load                     %.3f s\n", times.load);
    std::printf("command as a whole       %.3f s\n", times.whole);
    std::printf("bare walk of the model   %.3f s\n", times.walk);
    std::printf("load and command         %.2f times the walk, at most %.1f wanted\n", walk, walkGoal);
    std::printf("memory of the export     %ld KiB, at most %ld wanted\n", times.memory, memoryGoal);
    const bool good = raw <= rawGoal && walk <= walkGoal && times.memory <= memoryGoal;
    std::printf("%s\n", good ? "good" : "TOO SLOW OR TOO LARGE");
    return good;
}

}  // namespace

int main(int argc, char** argv) {
    const plant::GenerateOptions options = bench::plantOptions(argc, argv, 900000);
    const bench::ExportFolder folder("rvm");
    if (!bench::makePlant(options, folder.model())) {
        return 2;
    }
    Times times;
    for (int round = 0; round < rounds; ++round) {
        if (!runOnce(folder, times)) {
            return 2;
        }
        times.raw = std::min(times.raw, bench::writeRaw(outputs(folder, times), folder.raw()));
        const double start = bench::processorSeconds();
        bench::walkIntoStrings(folder.model());
        times.walk = std::min(times.walk, bench::processorSeconds() - start);
    }
    return report(times) ? 0 : 1;
}
