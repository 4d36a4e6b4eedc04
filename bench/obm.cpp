// OBMOUT of a generated plant without a script, beside writing the same bytes.
//
//   bench_obm [OBJECTS [SEED]]      default 100000 1
//
// The goals: the package within 30 times (aim 20) the time of writing its bytes raw in blocks of 1 MiB, from the first
// node on (every mesh is made, written, copied into its scene and copied into the archive with its checksum); memory
// above the model of at most 1.5 KiB for each record of the tree, however many meshes there are. Times are processor
// time. Exit status 1 when one is missed.
#include "exports/obm_command.h"
#include "forms/forms.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"
#include "scripts/script_host.h"
#include "tolmar/host_ui.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <unistd.h>
#include <zip.h>

namespace {

namespace fs = std::filesystem;
constexpr int rounds = 3;
constexpr double rawGoal = 30;
constexpr double memoryGoal = 1.5;    // KiB a record
constexpr long memoryBase = 8 << 10;  // KiB, buffers and the largest object

// Processor time of this process, its share in the system included: other work on the machine does not count.
double processorTime() {
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
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

// Checks everything and names the file. The clock of the export starts when the progress dialog opens.
class BenchUi final : public tolmar::HostUi {
public:
    explicit BenchUi(fs::path file) : file_(std::move(file)) { tolmar::setHostUi(this); }
    ~BenchUi() override { tolmar::setHostUi(nullptr); }
    void print(const std::string&) override {}
    void messageBox(const std::string&, const std::string&) override { ++boxes; }
    std::optional<std::string> fileDialog(const tolmar::FileDialog&) override { return file_.string(); }
    std::optional<std::string> folderDialog(const std::string&) override { return std::nullopt; }
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
            opened = processorTime();
            std::ofstream("/proc/self/clear_refs") << "5";
            memoryAtStart = peakMemory();
        }
    }
    bool cancelRequested() override { return false; }

    int boxes = 0;
    double opened = 0;
    long memoryAtStart = 0;

private:
    fs::path file_;
};

class Folder {
public:
    Folder() : path_(fs::temp_directory_path() / ("tessaro-bench-obm-" + std::to_string(::getpid()))) {
        fs::create_directories(path_);
        tolmar::setInstallationRoot(path_.string());
    }
    ~Folder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    fs::path model() const { return path_ / "plant.json"; }
    fs::path package() const { return path_ / "plant.pmodel"; }
    fs::path raw() const { return path_ / "raw"; }

private:
    fs::path path_;
};

double writeRaw(std::uint64_t size, const fs::path& target) {
    const std::string block(1 << 20, 'x');
    const double start = processorTime();
    const int file = ::open(target.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    for (std::uint64_t at = 0; at < size; at += block.size()) {
        const std::size_t part = std::min<std::uint64_t>(block.size(), size - at);
        if (::write(file, block.data(), part) != static_cast<ssize_t>(part)) {
            std::abort();
        }
    }
    ::close(file);
    return processorTime() - start;
}

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

bool runOnce(const Folder& folder, Times& times) {
    const plant::LoadResult result = plant::loadModel(folder.model());
    if (!result) {
        std::fprintf(stderr, "%s\n", result.error.c_str());
        return false;
    }
    plant::setCurrentModel(result.model.get());
    BenchUi ui(folder.package());
    obmout();
    times.write = std::min(times.write, processorTime() - ui.opened);
    times.memory = std::max(times.memory, peakMemory() - ui.memoryAtStart);
    destroyScriptHost();
    clearBomCache();
    plant::setCurrentModel(nullptr);
    return ui.boxes == 1 && tolmar::runReport().failedFiles().empty() &&
           tolmar::runReport().outcome() == tolmar::RunOutcome::Done;
}

bool report(const Folder& folder, const Times& times) {
    constexpr double mebi = 1 << 20;
    const Entry tree = entryOf(folder.package(), "output/ORNA/modeltree.json", "\n[");
    const Entry scene = entryOf(folder.package(), "output/ORNA/scene.glb", "\"mesh\":");
    const double raw = times.write / times.raw;
    const double limit = memoryGoal * static_cast<double>(tree.count) + memoryBase;
    std::printf("%zu records, %zu meshes in the first scene, %.1f MiB\n", tree.count, scene.count,
                static_cast<double>(fs::file_size(folder.package())) / mebi);
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
    plant::GenerateOptions options{.objects = 100000, .seed = 1};
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
        times.raw = std::min(times.raw, writeRaw(fs::file_size(folder.package()), folder.raw()));
    }
    return report(folder, times) ? 0 : 1;
}
