// MAXOUT of a generated plant with the example's script, beside writing the same bytes and beside bare Lua states.
//
//   bench_max [OBJECTS [SEED]]      default 20000 1
//
// The goal: the documents take less than 400 bytes of memory for each triangle. Exit status 1 when it is missed. Two
// fresh script states for each object take most of the time; how much is told beside it.
#include "export_run.h"
#include "generator/generate.h"
#include "max/command.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"
#include "platform/script.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr int rounds = 3;
constexpr double memoryGoal = 400;  // bytes a triangle

std::size_t count(const std::string& bytes, std::string_view what) {
    std::size_t found = 0;
    for (std::size_t at = bytes.find(what); at != std::string::npos; at = bytes.find(what, at + what.size())) {
        ++found;
    }
    return found;
}

// One fresh state in which the script has run.
double stateSeconds() {
    constexpr int states = 500;
    const CompiledScript script((tolmar::installationRoot() + "/plugins/maxoutplugins.lua").c_str());
    const double start = bench::processorSeconds();
    for (int i = 0; i < states; ++i) {
        HextGlibScriptor scriptor;
        script.run(scriptor.getLua(0));
    }
    return (bench::processorSeconds() - start) / states;
}

struct Figures {
    double command = std::numeric_limits<double>::max();
    double raw = std::numeric_limits<double>::max();
    double memory = 0;
    std::size_t bytes = 0;
    std::size_t objects = 0;
    std::size_t triangles = 0;
};

bool runOnce(const bench::ExportFolder& folder, Figures& figures) {
    plant::LoadResult result = bench::loadPlant(folder.model());
    if (!result) {
        return false;
    }
    plant::setCurrentModel(result.model.get());
    const bench::ExportUi ui(folder.out());
    bench::resetPeakMemory();
    const long before = bench::residentMemory();
    const double start = bench::processorSeconds();
    maxout();
    figures.command = std::min(figures.command, bench::processorSeconds() - start);
    const long most = std::max(ui.peakBeforeStart, bench::peakMemory());
    figures.memory = std::max(figures.memory, 1024.0 * static_cast<double>(most - before));
    clearBomCache();
    plant::setCurrentModel(nullptr);
    return tolmar::runReport().outcome() == tolmar::RunOutcome::Done && tolmar::runReport().files().size() == 2;
}

void readBack(const bench::ExportFolder& folder, Figures& figures) {
    const std::vector<std::string> files = folder.outputs();
    figures.bytes = figures.triangles = figures.objects = 0;
    for (const std::string& bytes : files) {
        figures.bytes += bytes.size();
        figures.triangles += count(bytes, "<face ");
        figures.objects += count(bytes, "<propertyGroup ");
    }
    figures.raw = std::min(figures.raw, bench::writeRaw(files, folder.raw()));
}

bool report(const Figures& figures) {
    const auto objects = static_cast<double>(figures.objects);
    const double bytesEach = figures.memory / static_cast<double>(figures.triangles);
    const double state = stateSeconds();
    std::printf("%zu objects, %zu triangles, %.1f MiB in both files\n", figures.objects, figures.triangles,
                static_cast<double>(figures.bytes) / (1 << 20));
    std::printf("command                  %.3f s, %.1f us an object\n", figures.command,
                figures.command / objects * 1e6);
    std::printf("two script states        %.1f us an object, the rest %.1f us\n", 2 * state * 1e6,
                (figures.command / objects - 2 * state) * 1e6);
    std::printf("raw write of the bytes   %.3f s; the command takes %.1f times, without script states %.1f times\n",
                figures.raw, figures.command / figures.raw, (figures.command - 2 * state * objects) / figures.raw);
    std::printf("memory                   %.0f bytes a triangle, below %.0f wanted\n", bytesEach, memoryGoal);
    const bool good = bytesEach < memoryGoal;
    std::printf("%s\n", good ? "good" : "TOO LARGE");
    return good;
}

}  // namespace

int main(int argc, char** argv) {
    const plant::GenerateOptions options = bench::plantOptions(argc, argv, 20000);
    const bench::ExportFolder folder("max");
    folder.takeInstallation();
    if (!bench::makePlant(options, folder.model())) {
        return 2;
    }
    Figures figures;
    for (int round = 0; round < rounds; ++round) {
        tolmar::runReport().clear();
        if (!runOnce(folder, figures)) {
            return 2;
        }
        readBack(folder, figures);
    }
    return report(figures) ? 0 : 1;
}
