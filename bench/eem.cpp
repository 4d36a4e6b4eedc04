// ORNAOUT of a generated plant without a script, beside writing the same bytes.
//
//   bench_eem [OBJECTS [SEED]]      default 900000 1, which makes about 10^6 primitives
//
// The goal: both files within 8 times (aim 5) the time of writing their bytes raw in blocks of 1 MiB. Exit status 1
// when it is missed.
#include "exports/eem_command.h"
#include "forms/forms.h"
#include "plant/model.h"
#include "platform/attribute_cache.h"
#include "scripts/script_host.h"
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
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int rounds = 5;
constexpr double rawGoal = 8;

double seconds(Clock::time_point from) {
    return std::chrono::duration<double>(Clock::now() - from).count();
}

// Checks everything and answers with a file. The clock of the export starts when the progress opens, which is
// behind the scope dialog.
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
        if (state.open && opened == Clock::time_point()) {
            opened = Clock::now();
        }
    }
    bool cancelRequested() override { return false; }

    int boxes = 0;
    Clock::time_point opened{};

private:
    fs::path file_;
};

class Folder {
public:
    Folder() : path_(fs::temp_directory_path() / ("tessaro-bench-eem-" + std::to_string(::getpid()))) {
        fs::create_directories(path_);
        tolmar::setInstallationRoot(path_.string());
    }
    ~Folder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    fs::path file(const char* name) const { return path_ / name; }

private:
    fs::path path_;
};

std::string bytesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

double writeRaw(const std::vector<std::string>& files, const fs::path& target) {
    constexpr std::size_t block = 1 << 20;
    const auto start = Clock::now();
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
    return seconds(start);
}

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

// One load and export; false when it fails.
bool runOnce(const Folder& folder, Times& times) {
    const plant::LoadResult result = plant::loadModel(folder.file("plant.json"));
    if (!result) {
        std::fprintf(stderr, "%s\n", result.error.c_str());
        return false;
    }
    plant::setCurrentModel(result.model.get());
    BenchUi ui(folder.file("out.eem"));
    ornaout();
    times.write = std::min(times.write, seconds(ui.opened));
    destroyScriptHost();
    clearBomCache();
    plant::setCurrentModel(nullptr);
    return ui.boxes == 1 && tolmar::runReport().failedFiles().empty();
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
    const Folder folder;
    std::string error;
    if (!plant::generateModel(options, folder.file("plant.json"), error)) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 2;
    }
    Times times;
    std::vector<std::string> files;
    for (int round = 0; round < rounds; ++round) {
        if (!runOnce(folder, times)) {
            return 2;
        }
        files = {bytesOf(folder.file("out.eem")), bytesOf(folder.file("out.json"))};
        times.raw = std::min(times.raw, writeRaw(files, folder.file("raw")));
    }
    return report(times, files) ? 0 : 1;
}
