// MAXOUT of a generated plant with the example's script, beside writing the same bytes and beside bare Lua states.
//
//   bench_max [OBJECTS [SEED]]      default 20000 1
//
// The goal: the documents take less than 400 bytes of memory for each triangle. Exit status 1 when it is missed. Two
// fresh script states for each object take most of the time; how much is told beside it.
#include "exports/max_command.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"
#include "platform/script.h"
#include "tolmar/host_ui.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int rounds = 3;
constexpr double memoryGoal = 400;  // bytes a triangle

// User time of the process, which other work on the machine does not stretch.
double userSeconds() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec) + static_cast<double>(usage.ru_utime.tv_usec) * 1e-6;
}
double totalSeconds() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return userSeconds() + static_cast<double>(usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_stime.tv_usec) * 1e-6;
}

// A line of the process's memory figures, in bytes.
double memory(const char* name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name)) {
            return 1024.0 * std::atof(line.c_str() + std::string(name).size());
        }
    }
    return 0;
}

class BenchUi final : public tolmar::HostUi {
public:
    explicit BenchUi(fs::path folder) : folder_(std::move(folder)) { tolmar::setHostUi(this); }
    ~BenchUi() override { tolmar::setHostUi(nullptr); }
    void print(const std::string&) override {}
    void messageBox(const std::string&, const std::string&) override {}
    std::optional<std::string> fileDialog(const tolmar::FileDialog&) override { return std::nullopt; }
    std::optional<std::string> folderDialog(const std::string&) override { return folder_.string(); }
    std::optional<std::string> inputBox(const std::string&) override { return "X"; }
    void runForm(OrnLogicForm&) override {}
    void progressChanged(const tolmar::ProgressState&) override {}
    bool cancelRequested() override { return false; }

private:
    fs::path folder_;
};

// An installation root with the example's script, and a place for the files.
class Folder {
public:
    Folder() : path_(fs::temp_directory_path() / ("tessaro-bench-max-" + std::to_string(::getpid()))) {
        fs::create_directories(path_ / "out");
        fs::copy(fs::path(TESSARO_SOURCE_DIR) / "examples" / "install", path_, fs::copy_options::recursive);
        tolmar::setInstallationRoot(path_.string());
    }
    ~Folder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    fs::path model() const { return path_ / "plant.json"; }
    fs::path out() const { return path_ / "out"; }
    fs::path raw() const { return path_ / "raw"; }

private:
    fs::path path_;
};

std::string bytesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::size_t count(const std::string& bytes, std::string_view what) {
    std::size_t found = 0;
    for (std::size_t at = bytes.find(what); at != std::string::npos; at = bytes.find(what, at + what.size())) {
        ++found;
    }
    return found;
}

double writeRaw(const std::vector<std::string>& files, const fs::path& target) {
    constexpr std::size_t block = 1 << 20;
    const double start = totalSeconds();
    for (const std::string& bytes : files) {
        const int file = ::open(target.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        for (std::size_t at = 0; at < bytes.size(); at += block) {
            const std::size_t size = std::min(block, bytes.size() - at);
            if (::write(file, bytes.data() + at, size) != static_cast<ssize_t>(size)) {
                std::abort();
            }
        }
        ::close(file);
    }
    return totalSeconds() - start;
}

// One fresh state in which the script has run.
double stateSeconds() {
    constexpr int states = 500;
    const CompiledScript script((tolmar::installationRoot() + "/plugins/maxoutplugins.lua").c_str());
    const double start = totalSeconds();
    for (int i = 0; i < states; ++i) {
        HextGlibScriptor scriptor;
        script.run(scriptor.getLua(0));
    }
    return (totalSeconds() - start) / states;
}

struct Figures {
    double command = std::numeric_limits<double>::max();
    double raw = std::numeric_limits<double>::max();
    double memory = 0;
    std::size_t bytes = 0;
    std::size_t objects = 0;
    std::size_t triangles = 0;
};

bool runOnce(const Folder& folder, Figures& figures) {
    plant::LoadResult result = plant::loadModel(folder.model());
    if (!result) {
        std::fprintf(stderr, "%s\n", result.error.c_str());
        return false;
    }
    plant::setCurrentModel(result.model.get());
    const BenchUi ui(folder.out());
    std::ofstream("/proc/self/clear_refs") << "5";
    const double before = memory("VmRSS:");
    const double start = totalSeconds();
    maxout();
    figures.command = std::min(figures.command, totalSeconds() - start);
    figures.memory = std::max(figures.memory, memory("VmHWM:") - before);
    clearBomCache();
    plant::setCurrentModel(nullptr);
    return tolmar::runReport().outcome() == tolmar::RunOutcome::Done && tolmar::runReport().files().size() == 2;
}

void readBack(const Folder& folder, Figures& figures) {
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(folder.out())) {
        files.push_back(bytesOf(entry.path()));
    }
    figures.bytes = figures.triangles = figures.objects = 0;
    for (const std::string& bytes : files) {
        figures.bytes += bytes.size();
        figures.triangles += count(bytes, "<face ");
        figures.objects += count(bytes, "<propertyGroup ");
    }
    figures.raw = std::min(figures.raw, writeRaw(files, folder.raw()));
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
    plant::GenerateOptions options{.objects = 20000, .seed = 1};
    if (argc > 1) {
        options.objects = std::strtoull(argv[1], nullptr, 10);
    }
    if (argc > 2) {
        options.seed = std::strtoull(argv[2], nullptr, 10);
    }
    const Folder folder;
    std::string error;
    if (!plant::generateModel(options, folder.model(), error)) {
        std::fprintf(stderr, "%s\n", error.c_str());
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
