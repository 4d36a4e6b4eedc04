#include "export_run.h"

#include "forms/forms.h"
#include "tolmar/system.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <string_view>
#include <unistd.h>

namespace bench {

namespace fs = std::filesystem;

double seconds(Clock::time_point from) {
    return std::chrono::duration<double>(Clock::now() - from).count();
}

double processorSeconds() {
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

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
        std::ifstream in(entry.path(), std::ios::binary);
        files.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    return files;
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

}  // namespace bench
