#include "export_run.h"

#include "forms/forms.h"
#include "generator/generate.h"
#include "tolmar/system.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <unistd.h>

namespace bench {

namespace fs = std::filesystem;

double processorSeconds() {
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

namespace {

long memoryFigure(std::string_view key) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(key)) {
            return std::atol(line.c_str() + key.size());
        }
    }
    return 0;
}

}  // namespace

long peakMemory() {
    return memoryFigure("VmHWM:");
}

long residentMemory() {
    return memoryFigure("VmRSS:");
}

void resetPeakMemory() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

plant::GenerateOptions plantOptions(int argc, char** argv, std::uint64_t objects) {
    plant::GenerateOptions options{.objects = objects, .seed = 1};
    if (argc > 1) {
        options.objects = std::strtoull(argv[1], nullptr, 10);
    }
    if (argc > 2) {
        options.seed = std::strtoull(argv[2], nullptr, 10);
    }
    return options;
}

bool makePlant(const plant::GenerateOptions& options, const fs::path& file) {
    std::string error;
    const bool good = plant::generateModel(options, file, error);
    if (!good) {
        std::fprintf(stderr, "%s\n", error.c_str());
    }
    return good;
}

plant::LoadResult loadPlant(const fs::path& file) {
    plant::LoadResult result = plant::loadModel(file);
    if (!result) {
        std::fprintf(stderr, "%s\n", result.error.c_str());
    }
    return result;
}

std::string bytesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

ExportUi::ExportUi(fs::path folder, std::string fileName) : folder_(std::move(folder)), fileName_(std::move(fileName)) {
    tolmar::setHostUi(this);
}

ExportUi::~ExportUi() {
    tolmar::setHostUi(nullptr);
}

std::optional<std::string> ExportUi::fileDialog(const tolmar::FileDialog&) {
    return fileName_.empty() ? std::nullopt : std::optional((folder_ / fileName_).string());
}

std::optional<std::string> ExportUi::folderDialog(const std::string&) {
    return folder_.string();
}

void ExportUi::runForm(OrnLogicForm& form) {
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

void ExportUi::progressChanged(const tolmar::ProgressState& state) {
    if (state.open && opened == Clock::time_point()) {
        peakBeforeStart = peakMemory();
        resetPeakMemory();
        memoryAtStart = peakMemory();
        opened = Clock::now();
        processorAtStart = processorSeconds();
    }
}

ExportFolder::ExportFolder(const std::string& name)
    : path_(fs::temp_directory_path() / ("tessaro-bench-" + name + "-" + std::to_string(::getpid()))) {
    fs::create_directories(path_ / "out");
    tolmar::setInstallationRoot(path_.string());
}

ExportFolder::~ExportFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::vector<std::string> ExportFolder::outputs() const {
    std::vector<std::string> files;
    for (const auto& entry : fs::directory_iterator(out())) {
        files.push_back(bytesOf(entry.path()));
    }
    return files;
}

void ExportFolder::takeInstallation(const std::vector<std::string>& parts) const {
    const fs::path example = fs::path(TESSARO_SOURCE_DIR) / "examples" / "install";
    for (const std::string& part : parts) {
        fs::create_directories(path_ / part);
        fs::copy(example / part, path_ / part, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    }
}

void ExportFolder::mapEveryComponent() const {
    fs::create_directories(hext());
    std::ofstream(hext() / "config.json") << R"({"skey":["##|##|##|##|##|##|X"],"type":{"X":"PCOM"}})";
}

namespace {

constexpr std::size_t blockSize = 1 << 20;

// A file that is written by the system's calls alone.
class RawFile {
public:
    explicit RawFile(const fs::path& path) : file_(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666)) {}
    ~RawFile() { ::close(file_); }
    RawFile(const RawFile&) = delete;
    RawFile& operator=(const RawFile&) = delete;
    void write(const char* bytes, std::size_t size) const {
        if (::write(file_, bytes, size) != static_cast<ssize_t>(size)) {
            throw std::runtime_error(std::string("raw write: ") + std::strerror(errno));
        }
    }

private:
    int file_;
};

}  // namespace

double writeRaw(const std::vector<std::string>& files, const fs::path& target) {
    const double start = processorSeconds();
    for (std::size_t i = 0; i < files.size(); ++i) {
        const RawFile file(target.string() + std::to_string(i));
        for (std::size_t at = 0; at < files[i].size(); at += blockSize) {
            file.write(files[i].data() + at, std::min(blockSize, files[i].size() - at));
        }
    }
    return processorSeconds() - start;
}

double writeRaw(std::uint64_t size, const fs::path& target) {
    const std::string block(blockSize, 'x');
    const double start = processorSeconds();
    {
        const RawFile file(target);
        for (std::uint64_t left = size; left > 0; left -= std::min<std::uint64_t>(left, blockSize)) {
            file.write(block.data(), std::min<std::uint64_t>(left, blockSize));
        }
    }
    return processorSeconds() - start;
}

}  // namespace bench
