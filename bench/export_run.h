// What benchmarks of exports share: a user who takes everything, a folder, memory and raw writes.
#pragma once

#include "tolmar/host_ui.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace bench {

using Clock = std::chrono::steady_clock;

double seconds(Clock::time_point from);
// Processor time of this process, user and system, in seconds: a loaded machine leaves it alone.
double processorSeconds();

// The most memory that was resident since the last reset, in KiB.
long peakMemory();
void resetPeakMemory();

// Checks everything and answers with a folder, and in it with a file. The clock of the export starts when the progress
// dialog opens, which is when the form is closed.
class ExportUi final : public tolmar::HostUi {
public:
    explicit ExportUi(std::filesystem::path folder, std::string fileName = {});
    ~ExportUi() override;
    void print(const std::string&) override {}
    void messageBox(const std::string&, const std::string&) override { ++boxes; }
    std::optional<std::string> fileDialog(const tolmar::FileDialog& dialog) override;
    std::optional<std::string> folderDialog(const std::string& title) override;
    std::optional<std::string> inputBox(const std::string&) override { return std::nullopt; }
    void runForm(OrnLogicForm& form) override;
    void progressChanged(const tolmar::ProgressState& state) override;
    bool cancelRequested() override { return false; }

    int boxes = 0;
    Clock::time_point opened{};
    double processorAtStart = 0;
    long memoryAtStart = 0;

private:
    std::filesystem::path folder_;
    std::string fileName_;
};

// A temporary installation root with a place for the model and a folder for what comes out.
class ExportFolder {
public:
    explicit ExportFolder(const std::string& name);
    ~ExportFolder();
    ExportFolder(const ExportFolder&) = delete;
    ExportFolder& operator=(const ExportFolder&) = delete;
    std::filesystem::path model() const { return path_ / "plant.json"; }
    std::filesystem::path out() const { return path_ / "out"; }
    std::filesystem::path raw() const { return path_ / "raw"; }
    // The bytes of every file that came out.
    std::vector<std::string> outputs() const;

private:
    std::filesystem::path path_;
};

// Seconds to write the bytes in blocks of 1 MiB, each text to a file of its own.
double writeRaw(const std::vector<std::string>& files, const std::filesystem::path& target);

}  // namespace bench
