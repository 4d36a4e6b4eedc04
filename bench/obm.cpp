// OBMOUT of a generated plant without a script, beside writing the same bytes.
//
//   bench_obm [OBJECTS [SEED]]      default 100000 1
//
// The goals: the package within 30 times (aim 20) the time of writing its bytes raw in blocks of 1 MiB, from the first
// node on (every mesh is made, written, copied into its scene and copied into the archive with its checksum); memory
// above the model of at most 1.5 KiB for each record of the tree, however many meshes there are. Times are processor
// time. Exit status 1 when one is missed.
#include "export_run.h"
#include "generator/generate.h"
#include "obm/command.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"
#include "scripts/script_host.h"
#include "tolmar/run_report.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <string>
#include <zip.h>

namespace {

namespace fs = std::filesystem;
constexpr int rounds = 3;
constexpr double rawGoal = 30;
constexpr double memoryGoal = 1.5;  // KiB a record
constexpr const char* fileName = "plant.pmodel";
constexpr long memoryBase = 8 << 10;  // KiB, buffers and the largest object

// Size of an entry, and how often a text stands in it.
struct Entry {
    std::uint64_t size = 0;
    std::size_t count = 0;
};
Entry entryOf(const fs::path& package, const char* name, std::string_view text) {
    int error = 0;
    zip_t* archive = zip_open(package.c_str(), ZIP_RDONLY, &error);
    zip_file_t* file = archive != nullptr ? zip_fopen(archive, name, 0) : nullptr;
    Entry entry;
    std::string bytes(1 << 20, '\0');
    std::string kept;
    for (zip_int64_t got; file != nullptr && (got = zip_fread(file, bytes.data(), bytes.size())) > 0;) {
        entry.size += static_cast<std::uint64_t>(got);
        kept.append(bytes, 0, static_cast<std::size_t>(got));
        std::size_t at = 0;
        for (std::size_t found; (found = kept.find(text, at)) != std::string::npos; at = found + text.size()) {
            ++entry.count;
        }
        kept.erase(0, std::max(at, kept.size() - std::min(kept.size(), text.size() - 1)));
    }
    if (file != nullptr) {
        zip_fclose(file);
    }
    zip_discard(archive);
    return entry;
}

struct Times {
    double write = std::numeric_limits<double>::max();  // from the first node to the end
    double raw = std::numeric_limits<double>::max();
    long memory = 0;
};

bool runOnce(const bench::ExportFolder& folder, Times& times) {
    const plant::LoadResult result = bench::loadPlant(folder.model());
    if (!result) {
        return false;
    }
    plant::setCurrentModel(result.model.get());
    bench::ExportUi ui(folder.out(), fileName);
    obmout();
    times.write = std::min(times.write, bench::processorSeconds() - ui.processorAtStart);
    times.memory = std::max(times.memory, bench::peakMemory() - ui.memoryAtStart);
    destroyScriptHost();
    clearBomCache();
    plant::setCurrentModel(nullptr);
    return ui.boxes == 1 && tolmar::runReport().failedFiles().empty() &&
           tolmar::runReport().outcome() == tolmar::RunOutcome::Done;
}

bool report(const bench::ExportFolder& folder, const Times& times) {
    constexpr double mebi = 1 << 20;
    const Entry tree = entryOf(folder.out() / fileName, "output/ORNA/modeltree.json", "\n[");
    const Entry scene = entryOf(folder.out() / fileName, "output/ORNA/scene.glb", "\"mesh\":");
    const double raw = times.write / times.raw;
    const double limit = memoryGoal * static_cast<double>(tree.count) + memoryBase;
    std::printf("%zu records, %zu meshes in the first scene, %.1f MiB\n", tree.count, scene.count,
                static_cast<double>(fs::file_size(folder.out() / fileName)) / mebi);
    std::printf("raw write of the bytes   %.3f s\n", times.raw);
    std::printf("export                   %.3f s, %.1f times raw, at most %.0f wanted, aim 20\n", times.write, raw,
                rawGoal);
    std::printf("memory of the export     %ld KiB, at most %.0f wanted\n", times.memory, limit);
    std::printf("the first scene          %.0f KiB\n", static_cast<double>(scene.size) / 1024);
    const bool good = raw <= rawGoal && static_cast<double>(times.memory) <= limit;
    std::printf("%s\n", good ? "good" : "TOO SLOW OR TOO LARGE");
    return good;
}

}  // namespace

int main(int argc, char** argv) {
    const plant::GenerateOptions options = bench::plantOptions(argc, argv, 100000);
    const bench::ExportFolder folder("obm");
    if (!bench::makePlant(options, folder.model())) {
        return 2;
    }
    Times times;
    for (int round = 0; round < rounds; ++round) {
        if (!runOnce(folder, times)) {
            return 2;
        }
        times.raw = std::min(times.raw, bench::writeRaw(fs::file_size(folder.out() / fileName), folder.raw()));
    }
    return report(folder, times) ? 0 : 1;
}
