// What benchmarks share: a plant, a user who takes everything, a folder, processor time, memory and raw writes.
#pragma once

#include "generator/generate.h"
#include "plant/model.h"
#include "tolmar/host_ui.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

using Clock = std::chrono::steady_clock;

// Processor time of this process, user and system, in seconds: a loaded machine leaves it alone.
double processorSeconds();

// The most memory that was resident since the last reset, in KiB.
long peakMemory();
void resetPeakMemory();
// What is resident now, in KiB.
long residentMemory();

// Arguments OBJECTS [SEED] of a benchmark; the seed is 1 unless it is given.
plant::GenerateOptions plantOptions(int argc, char** argv, std::uint64_t objects);
// Both say on standard error what is wrong.
bool makePlant(const plant::GenerateOptions& options, const std::filesystem::path& file);
plant::LoadResult loadPlant(const std::filesystem::path& file);

std::string bytesOf(const std::filesystem::path& file);

// Checks everything and answers with a folder, in it with a file, and with any text. The clock of the export starts
// when the progress dialog opens, which is when the form is closed.
class ExportUi final : public tolmar::HostUi {
public:
    explicit ExportUi(std::filesystem::path folder, std::string fileName = {});
    ~ExportUi() override;
    void print(const std::string&) override {}
    void messageBox(const std::string&, const std::string&) override { ++boxes; }
    std::optional<std::string> fileDialog(const tolmar::FileDialog& dialog) override;
    std::optional<std::string> folderDialog(const std::string& title) override;
    std::optional<std::string> inputBox(const std::string&) override { return "X"; }
    void runForm(OrnLogicForm& form) override;
    void progressChanged(const tolmar::ProgressState& state) override;
    bool cancelRequested() override { return false; }

    int boxes = 0;
    Clock::time_point opened{};
    double processorAtStart = 0;
    long memoryAtStart = 0;
    long peakBeforeStart = 0;

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
    std::filesystem::path hext() const { return path_ / "temp" / "hext"; }
    // Copies the example's installation, or these parts of it alone.
    void takeInstallation(const std::vector<std::string>& parts = {""}) const;
    // A configuration that gives every component the type PCOM.
    void mapEveryComponent() const;
    // The bytes of every file that came out.
    std::vector<std::string> outputs() const;

private:
    std::filesystem::path path_;
};

// Processor seconds to write the bytes in blocks of 1 MiB, each text to a file of its own; throws when that fails.
double writeRaw(const std::vector<std::string>& files, const std::filesystem::path& target);
// The same for a file of so many bytes.
double writeRaw(std::uint64_t size, const std::filesystem::path& target);

}  // namespace bench
