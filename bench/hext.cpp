// HEXTOUT of generated plants, model in memory, beside loading the model and beside writing the same bytes.
//
//   bench_hext [OBJECTS...]      default 10000 100000
//
// The goals: the whole command, its dialog included, within 4 times (aim 2) the load of the same model; peak memory at
// most that of the loaded model plus half; the cost of an object at the largest number at most 1.25 times that at the
// smallest; composing the lines of the files (line_replay.h; the first 8 MiB of each) within 8 times the time of
// writing the same bytes raw in blocks of 1 MiB. The first two are judged at the largest plant, since a small one takes
// less memory than the buffers of its files. Exit status 1 when one is missed. Times are processor time, the least of
// some rounds. A generated plant holds pipelines, equipment, structures and supports in the usual mix.
#include "export_run.h"
#include "hextinterface/hext_commands.h"
#include "line_replay.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"
#include "scripts/script_host.h"
#include "tolmar/run_report.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <malloc.h>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr double loadGoal = 4;
constexpr double rawGoal = 8;
constexpr double growthGoal = 1.25;
constexpr double memoryGoal = 1.5;
constexpr double never = std::numeric_limits<double>::max();

struct Times {
    std::size_t objects = 0;
    std::size_t bytes = 0;
    double load = never;
    double whole = never;    // the command, its dialog included
    double compose = never;  // the lines of the replayed part of the files
    double raw = never;      // the same bytes
    std::size_t replayed = 0;
    std::size_t numbers = 0;
    long loaded = 0;  // KiB
    long peak = 0;
    double perObject() const { return whole / static_cast<double>(objects); }
    double toLoad() const { return whole / load; }
    double toModel() const { return static_cast<double>(peak) / static_cast<double>(std::max(loaded, 1L)); }
    double toRaw() const { return compose / raw; }
};

// One load and export; false when it fails.
bool runOnce(const bench::ExportFolder& folder, Times& times) {
    malloc_trim(0);
    const long before = bench::residentMemory();
    const double loadStart = bench::processorSeconds();
    const plant::LoadResult result = bench::loadPlant(folder.model());
    if (!result) {
        return false;
    }
    times.load = std::min(times.load, bench::processorSeconds() - loadStart);
    times.objects = plant::objectCount(*result.model);
    plant::setCurrentModel(result.model.get());
    bench::ExportUi ui(folder.out());
    tolmar::runReport().clear();
    malloc_trim(0);
    bench::resetPeakMemory();
    times.loaded = bench::residentMemory() - before;
    const double start = bench::processorSeconds();
    hextout();
    times.whole = std::min(times.whole, bench::processorSeconds() - start);
    times.peak = std::max(times.peak, std::max(ui.peakBeforeStart, bench::peakMemory()) - before);
    destroyScriptHost();
    clearBomCache();
    plant::setCurrentModel(nullptr);
    if (ui.boxes != 0 || tolmar::runReport().outcome() != tolmar::RunOutcome::Done) {
        std::fprintf(stderr, "the export failed: %s\n", tolmar::runReport().reason().c_str());
        return false;
    }
    return true;
}

std::vector<std::string> outputs(const bench::ExportFolder& folder) {
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(folder.hext())) {
        if (entry.path().filename() != "config.json") {
            files.push_back(bench::bytesOf(entry.path()));
        }
    }
    return files;
}

// Composes the beginnings of all files anew, beside writing their bytes raw. False when other bytes come out.
bool replay(const bench::ExportFolder& folder, std::vector<std::string> files, Times& times) {
    constexpr std::size_t most = std::size_t{8} << 20;
    constexpr int rounds = 5;
    std::vector<LineReplay> lines;
    for (std::string& file : files) {
        if (file.size() > most) {
            file.resize(file.rfind("\r\n", most) + 2);
        }
        lines.emplace_back(file);
        times.replayed += file.size();
        times.numbers += lines.back().numbers();
    }
    for (int round = 0; round < rounds; ++round) {
        const double start = bench::processorSeconds();
        for (std::size_t i = 0; i < lines.size(); ++i) {
            if (lines[i].write(folder.raw().string() + std::to_string(i)) != files[i].size()) {
                return false;
            }
        }
        times.compose = std::min(times.compose, bench::processorSeconds() - start);
        for (std::size_t i = 0; round == 0 && i < files.size(); ++i) {
            if (bench::bytesOf(folder.raw().string() + std::to_string(i)) != files[i]) {
                return false;
            }
        }
        times.raw = std::min(times.raw, bench::writeRaw(files, folder.raw()));
    }
    return true;
}

bool measure(std::uint64_t objects, Times& times) {
    const bench::ExportFolder folder("hext");
    folder.takeInstallation({"plugins", "sys", "temp"});  // no packaging program
    if (!bench::makePlant({.objects = objects, .seed = 1}, folder.model())) {
        return false;
    }
    const int rounds = objects <= 20000 ? 25 : objects <= 200000 ? 7 : 3;
    for (int round = 0; round < rounds; ++round) {
        if (!runOnce(folder, times)) {
            return false;
        }
    }
    std::vector<std::string> files = outputs(folder);
    for (const std::string& file : files) {
        times.bytes += file.size();
    }
    if (!replay(folder, std::move(files), times)) {
        std::fprintf(stderr, "the lines composed anew differ\n");
        return false;
    }
    return true;
}

void report(const Times& times) {
    const double mib = 1 << 20;
    std::printf("%zu objects, %.1f MiB in all files\n", times.objects, static_cast<double>(times.bytes) / mib);
    std::printf("  load            %.3f s\n", times.load);
    std::printf("  command         %.3f s, %.2f times the load, at most %.0f wanted, aim 2\n", times.whole,
                times.toLoad(), loadGoal);
    std::printf("  an object       %.2f us\n", times.perObject() * 1e6);
    std::printf("  peak memory     %.2f times the model's %.1f MiB, at most %.1f wanted\n", times.toModel(),
                static_cast<double>(times.loaded) / 1024, memoryGoal);
    std::printf("  composing lines %.2f times a raw write, at most %.0f wanted (%.1f MiB, %zu numbers, %.1f ms)\n",
                times.toRaw(), rawGoal, static_cast<double>(times.replayed) / mib, times.numbers, times.compose * 1e3);
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::uint64_t> sizes;
    for (int i = 1; i < argc; ++i) {
        sizes.push_back(std::strtoull(argv[i], nullptr, 10));
    }
    if (sizes.empty()) {
        sizes = {10000, 100000};
    }
    bool good = true;
    std::vector<Times> all;
    for (const std::uint64_t size : sizes) {
        if (!measure(size, all.emplace_back())) {
            return 2;
        }
        report(all.back());
        good = good && all.back().toRaw() <= rawGoal;
    }
    good = good && all.back().toLoad() <= loadGoal && all.back().toModel() <= memoryGoal;
    if (all.size() > 1) {
        const double growth = all.back().perObject() / all.front().perObject();
        std::printf("cost of an object, largest to smallest plant: %.2f, at most %.2f wanted\n", growth, growthGoal);
        good = good && growth <= growthGoal;
    }
    std::printf("%s\n", good ? "good" : "TOO SLOW OR TOO LARGE");
    return good ? 0 : 1;
}
