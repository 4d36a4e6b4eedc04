// RVMOUT of a generated plant without a script, beside writing the same bytes and beside a bare walk of the model file.
//
//   bench_rvm [OBJECTS [SEED]]      default 900000 1, which makes about 10^6 primitives
//
// The goals: both files within 8 times (aim 5) the time of writing their bytes raw in blocks of 1 MiB; load and export
// within 1.6 times a bare walk of the model file; no memory that grows with the primitives written. Exit status 1 when
// one is missed.
#include "forms/forms.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"
#include "rvm/rvm_command.h"
#include "scripts/script_host.h"
#include "tolmar/host_ui.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"
#include "yardsticks.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int rounds = 5;
constexpr double rawGoal = 8;
constexpr double walkGoal = 1.6;
constexpr long memoryGoal = 16 << 10;  // KiB

// Processor time, the system's included: other programs on the machine change it little.
double now() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// The most memory that was resident since the last reset, in KiB.
long peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) {
            return std::atol(line.c_str() + 6);
        }
    }
    return 0;
}
void resetPeakMemory() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

// Checks everything and answers with a folder. The clock of the export starts when the form is closed.
class BenchUi final : public tolmar::HostUi {
public:
    explicit BenchUi(fs::path folder) : folder_(std::move(folder)) { tolmar::setHostUi(this); }
    ~BenchUi() override { tolmar::setHostUi(nullptr); }
    void print(const std::string&) override {}
    void messageBox(const std::string&, const std::string&) override { ++boxes; }
    std::optional<std::string> fileDialog(const tolmar::FileDialog&) override { return std::nullopt; }
    std::optional<std::string> folderDialog(const std::string&) override { return folder_.string(); }
    std::optional<std::string> inputBox(const std::string&) override { return std::nullopt; }
    void runForm(OrnLogicForm& form) override {
        for (OrnLogicControl* control : form.controls()) {
            if (auto* tree = dynamic_cast<OrnLogicTree*>(control)) {
                for (OrnLogicTree::Item item : tree->topItems()) {
                    tree->setItemUnderMouse(item);
                    form.onControlClicked(tree->id());
                }
            }
        }
        form.onControlClicked(OrnLogicForm::ResultOk);
    }
    void progressChanged(const tolmar::ProgressState& state) override {
        if (state.open && opened == 0) {
            opened = now();
            resetPeakMemory();
            memoryAtStart = peakMemory();
        }
    }
    bool cancelRequested() override { return false; }

    int boxes = 0;
    double opened = 0;
    long memoryAtStart = 0;

private:
    fs::path folder_;
};

class Folder {
public:
    Folder() : path_(fs::temp_directory_path() / ("tessaro-bench-rvm-" + std::to_string(::getpid()))) {
        fs::create_directories(path_ / "out");
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

double writeRaw(const std::vector<std::string>& files, const fs::path& target) {
    constexpr std::size_t block = 1 << 20;
    const double start = now();
    for (std::size_t i = 0; i < files.size(); ++i) {
        const int file = ::open((target.string() + std::to_string(i)).c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        for (std::size_t at = 0; at < files[i].size(); at += block) {
            const std::size_t size = std::min(block, files[i].size() - at);
            if (::write(file, files[i].data() + at, size) != static_cast<ssize_t>(size)) {
                std::abort();
            }
        }
        ::close(file);
    }
    return now() - start;
}

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
bool runOnce(const Folder& folder, Times& times) {
    const double loadStart = now();
    const plant::LoadResult result = plant::loadModel(folder.model());
    if (!result) {
        std::fprintf(stderr, "%s\n", result.error.c_str());
        return false;
    }
    times.load = std::min(times.load, now() - loadStart);
    plant::setCurrentModel(result.model.get());
    BenchUi ui(folder.out());
    const double start = now();
    rvmout();
    times.write = std::min(times.write, now() - ui.opened);
    times.whole = std::min(times.whole, now() - start);
    times.memory = std::max(times.memory, peakMemory() - ui.memoryAtStart);
    destroyScriptHost();
    clearBomCache();
    plant::setCurrentModel(nullptr);
    return ui.boxes == 1 && tolmar::runReport().failedFiles().empty();
}

std::vector<std::string> outputs(const Folder& folder, Times& times) {
    std::vector<std::string> files;
    times.bytes = times.primitives = 0;
    for (const auto& entry : fs::directory_iterator(folder.out())) {
        files.push_back(bytesOf(entry.path()));
        times.bytes += files.back().size();
        times.primitives += countTag(files.back(), "PRIM") + countTag(files.back(), "OBST");
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
    plant::GenerateOptions options{.objects = 900000, .seed = 1};
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
    Times times;
    for (int round = 0; round < rounds; ++round) {
        if (!runOnce(folder, times)) {
            return 2;
        }
        times.raw = std::min(times.raw, writeRaw(outputs(folder, times), folder.raw()));
        const double start = now();
        bench::walkIntoStrings(folder.model());
        times.walk = std::min(times.walk, now() - start);
    }
    return report(times) ? 0 : 1;
}
