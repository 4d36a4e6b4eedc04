// NVOUT of a generated plant without a script, beside writing the same bytes.
//
//   bench_nvout [OBJECTS [SEED]]      default 100000 1
//
// Equal meshes stand in the file once, so its own bytes say little about what it shows. The yardstick is a raw write,
// in blocks of 1 MiB, of as many bytes as the scene and side file would have with every mesh written out; the ratio to
// the files' own bytes is told beside it.
//
// Times are processor time, user and system, which a loaded machine leaves alone.
//
// The goals: within 5 times (aim 3) that raw write, and memory above the loaded model that does not grow with the
// meshes. Exit status 1 when one is missed.
#include "export_run.h"
#include "generator/generate.h"
#include "navisworks/command.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"
#include "readers/scene/reader.h"
#include "scripts/script_host.h"
#include "tolmar/run_report.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int rounds = 5;
constexpr double rawGoal = 5;
constexpr double memoryGoal = 0.75;  // KiB an object: names, links and keys of the side file

struct Times {
    double whole = std::numeric_limits<double>::max();  // the command, its dialog included
    double write = std::numeric_limits<double>::max();  // from the first node on
    double raw = std::numeric_limits<double>::max();    // of the bytes with every mesh written out
    double files = std::numeric_limits<double>::max();  // of the files' own bytes
    long memory = 0;
    std::size_t bytes = 0;
    std::size_t plainBytes = 0;
};

bool runOnce(const bench::ExportFolder& folder, Times& times) {
    bench::ExportUi ui(folder.out(), "plant.nwc");
    const double start = bench::processorSeconds();
    nvout();
    const double end = bench::processorSeconds();
    times.write = std::min(times.write, end - ui.processorAtStart);
    times.whole = std::min(times.whole, end - start);
    times.memory = std::max(times.memory, bench::peakMemory() - ui.memoryAtStart);
    destroyScriptHost();
    clearBomCache();
    return ui.boxes == 1 && tolmar::runReport().failedFiles().empty();
}

std::size_t bytesOf(const readers::scene::Scene& scene, std::uint64_t accessor) {
    constexpr std::size_t widePosition = 12;
    constexpr std::uint64_t shortType = 5123;
    if (accessor == readers::scene::none) {
        return 0;
    }
    const readers::scene::Accessor& found = scene.accessors.at(accessor);
    return found.count * (found.components == 3 ? widePosition : found.componentType == shortType ? 2 : 4);
}

// Vertices and indices of every node that shows a mesh.
std::size_t meshBytes(const readers::scene::Scene& scene) {
    std::size_t bytes = 0;
    for (const readers::scene::Node& node : scene.nodes) {
        if (node.mesh == readers::scene::none) {
            continue;
        }
        for (const readers::scene::Primitive& primitive : scene.meshes.at(node.mesh).primitives) {
            bytes += bytesOf(scene, primitive.positions) + bytesOf(scene, primitive.indices);
        }
    }
    return bytes;
}

// Counts the bytes of the last export and makes a text as long as they are with every mesh written out.
std::string plainText(const bench::ExportFolder& folder, Times& times) {
    readers::Findings findings;
    const readers::scene::Scene scene = readers::scene::readScene(folder.out() / "plant.nwc", findings);
    std::size_t stored = 0;
    for (const std::string_view buffer : scene.buffers) {
        stored += buffer.size();
    }
    times.bytes = 0;
    for (const std::string& file : folder.outputs()) {
        times.bytes += file.size();
    }
    times.plainBytes = times.bytes - stored + meshBytes(scene);
    return std::string(times.plainBytes, 'x');
}

double rawTime(const std::vector<std::string>& texts, const bench::ExportFolder& folder) {
    const double start = bench::processorSeconds();
    bench::writeRaw(texts, folder.raw());
    return bench::processorSeconds() - start;
}

bool report(const Times& times, std::size_t objects) {
    constexpr double mebi = 1 << 20;
    const double raw = times.write / times.raw;
    const double memory = static_cast<double>(times.memory) / static_cast<double>(objects);
    std::printf("%zu objects, %.1f MiB in both files, %.1f MiB with every mesh written out\n", objects,
                static_cast<double>(times.bytes) / mebi, static_cast<double>(times.plainBytes) / mebi);
    std::printf("raw write, meshes out    %.3f s\n", times.raw);
    std::printf("raw write of the files   %.3f s\n", times.files);
    std::printf("export, nodes and files  %.3f s, %.1f times raw, at most %.0f wanted, aim 3; %.1f times the files\n",
                times.write, raw, rawGoal, times.write / times.files);
    std::printf("command as a whole       %.3f s\n", times.whole);
    std::printf("memory of the export     %ld KiB, %.2f KiB an object, at most %.2f wanted\n", times.memory, memory,
                memoryGoal);
    const bool good = raw <= rawGoal && memory <= memoryGoal;
    std::printf("%s\n", good ? "good" : "TOO SLOW OR TOO LARGE");
    return good;
}

}  // namespace

int main(int argc, char** argv) {
    plant::GenerateOptions options{.objects = 100000, .seed = 1};
    if (argc > 1) {
        options.objects = std::strtoull(argv[1], nullptr, 10);
    }
    if (argc > 2) {
        options.seed = std::strtoull(argv[2], nullptr, 10);
    }
    const bench::ExportFolder folder("nvout");
    std::string error;
    if (!plant::generateModel(options, folder.model(), error)) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 2;
    }
    const plant::LoadResult result = plant::loadModel(folder.model());
    if (!result) {
        std::fprintf(stderr, "%s\n", result.error.c_str());
        return 2;
    }
    plant::setCurrentModel(result.model.get());
    Times times;
    std::vector<std::string> plain;
    for (int round = 0; round < rounds; ++round) {
        if (!runOnce(folder, times)) {
            return 2;
        }
        if (plain.empty()) {
            plain.push_back(plainText(folder, times));
        }
        times.raw = std::min(times.raw, rawTime(plain, folder));
        times.files = std::min(times.files, rawTime(folder.outputs(), folder));
    }
    plant::setCurrentModel(nullptr);
    return report(times, plant::objectCount(*result.model)) ? 0 : 1;
}
