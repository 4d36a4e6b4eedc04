// ORNAOUT of a generated plant without a script, beside writing the same bytes.
//
//   bench_eem [OBJECTS [SEED]]      default 900000 1, which makes about 10^6 primitives
//
// The goal: both files within 8 times (aim 5) the time of writing their bytes raw in blocks of 1 MiB. Times are
// processor times, the system's included; every write makes its files anew. Exit status 1 when the goal is missed.
#include "eem/command.h"
#include "export_run.h"
#include "generator/generate.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"
#include "scripts/script_host.h"
#include "tolmar/file.h"
#include "tolmar/run_report.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int rounds = 5;
constexpr double rawGoal = 8;
constexpr const char* fileName = "out.eem";

// Records of all blocks; the file is known to be whole.
std::size_t countRecords(const std::string& eem) {
    const auto intAt = [&eem](std::size_t at) {
        std::uint32_t value = 0;
        for (std::size_t i = 4; i > 0; --i) {
            value = value << 8U | static_cast<unsigned char>(eem[at + i - 1]);
        }
        return value;
    };
    constexpr std::size_t tagSize = 7;
    constexpr std::size_t behindName = 10 + 8 + 8;
    constexpr std::size_t trailerSize = 8;
    std::size_t count = 0;
    for (std::size_t at = 0; at + trailerSize < eem.size(); at = intAt(at)) {
        const std::size_t name = at + 4 + tagSize;
        count += intAt(name + 4 + intAt(name) + behindName);
    }
    return count;
}

struct Times {
    double write = std::numeric_limits<double>::max();
    double raw = std::numeric_limits<double>::max();
};

std::string bytesOf(const fs::path& file) {
    std::string bytes;
    tolmar::readFile(file.string(), bytes);
    return bytes;
}

// One load and export; false when it fails.
bool runOnce(const bench::ExportFolder& folder, Times& times) {
    const plant::LoadResult result = plant::loadModel(folder.model());
    if (!result) {
        std::fprintf(stderr, "%s\n", result.error.c_str());
        return false;
    }
    plant::setCurrentModel(result.model.get());
    bench::ExportUi ui(folder.out(), fileName);
    ornaout();
    times.write = std::min(times.write, bench::processorSeconds() - ui.processorAtStart);
    destroyScriptHost();
    clearBomCache();
    plant::setCurrentModel(nullptr);
    return ui.boxes == 1 && tolmar::runReport().failedFiles().empty();
}

// Takes the files of an export away and writes their bytes again.
std::vector<std::string> repeatRaw(const bench::ExportFolder& folder, Times& times) {
    const fs::path main = folder.out() / fileName;
    const fs::path side = fs::path(main).replace_extension(".json");
    std::vector<std::string> files{bytesOf(main), bytesOf(side)};
    fs::remove(main);
    fs::remove(side);
    const double start = bench::processorSeconds();
    bench::writeRaw(files, folder.raw());
    times.raw = std::min(times.raw, bench::processorSeconds() - start);
    for (std::size_t i = 0; i < files.size(); ++i) {
        fs::remove(folder.raw().string() + std::to_string(i));
    }
    return files;
}

bool report(const Times& times, const std::vector<std::string>& files) {
    const double raw = times.write / times.raw;
    std::printf("%zu primitives, %.1f MiB EEM, %.1f MiB JSON\n", countRecords(files[0]),
                static_cast<double>(files[0].size()) / (1 << 20), static_cast<double>(files[1].size()) / (1 << 20));
    std::printf("raw write of the bytes   %.3f s\n", times.raw);
    std::printf("export, walk and files   %.3f s, %.1f times raw, at most %.0f wanted, aim 5\n", times.write, raw,
                rawGoal);
    std::printf("%s\n", raw <= rawGoal ? "good" : "TOO SLOW");
    return raw <= rawGoal;
}

}  // namespace

int main(int argc, char** argv) {
    plant::GenerateOptions options{.objects = 900000, .seed = 1};
    if (argc > 1) {
        options.objects = std::strtoull(argv[1], nullptr, 10);
    }
    if (argc > 2) {
        options.seed = std::strtoull(argv[2], nullptr, 10);
    }
    const bench::ExportFolder folder("eem");
    std::string error;
    if (!plant::generateModel(options, folder.model(), error)) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 2;
    }
    Times times;
    std::vector<std::string> files;
    for (int round = 0; round < rounds; ++round) {
        if (!runOnce(folder, times)) {
            return 2;
        }
        files = repeatRaw(folder, times);
    }
    return report(times, files) ? 0 : 1;
}
