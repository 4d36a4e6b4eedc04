// Every command of the module on plants of growing size, each in a process of its own:
//
//     bench_commands MODULE ROOT OUT FILE...
//
// MODULE is libtessaro.so, ROOT a copy of the example installation, OUT a scratch folder, FILE the plants from small to
// large. A row gives processor seconds of the command (model in memory), microseconds an object, its peak of memory
// beside that of the loaded model, the bytes that it wrote, and the ratio to writing as many bytes raw in blocks of
// 1 MiB. A command whose documents would not fit into the memory of the machine is not run, and says so.

#include "child_process.h"
#include "export_run.h"
#include "forms/scripted_ui.h"
#include "plant/model.h"
#include "tolmar/module_api.h"
#include "tolmar/module_loader.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Setting {
    fs::path module;
    fs::path root;
    fs::path out;
};

struct Result {
    bool isRun = false;
    double seconds = 0;
    double rawSeconds = 0;
    double objects = 0;
    double bytes = 0;
    double loadedBytes = 0;
    double peakBytes = 0;
    int outcome = 0;
};

struct Command {
    const char* name;
    double mostObjects;  // beyond, its documents pass the memory of a machine of 24 GiB
};
constexpr Command commands[] = {{"HEXTOUT", 1e9}, {"RVMOUT", 1e9},  {"NVOUT", 1e9},
                                {"OBMOUT", 1e9},  {"ORNAOUT", 1e9}, {"MAXOUT", 3e5}};

// The scripts would be measured, not the exports.
void removeScripts(const fs::path& root) {
    for (const char* script : {"nvoutplugins.lua"}) {
        fs::remove(root / "plugins" / script);
    }
    fs::remove_all(root / "bin");
}

Result runHere(const Setting& setting, const Command& command, const fs::path& file) {
    Result result;
    tolmar::setInstallationRoot(setting.root.string());
    const plant::LoadResult loaded = plant::loadModel(file);
    if (!loaded) {
        throw std::runtime_error(loaded.error);
    }
    plant::setCurrentModel(loaded.model.get());
    result.objects = static_cast<double>(plant::objectCount(*loaded.model));
    result.loadedBytes = bench::peakBytes();
    if (result.objects > command.mostObjects) {
        return result;
    }
    std::string error;
    const auto module = tolmar::LoadedModule::load(setting.module, error);
    if (module == nullptr) {
        throw std::runtime_error(error);
    }
    tolmar::ScriptedUi ui({.target = setting.out, .inputs = {"P", "S"}}, [](auto, const std::string&) {});
    tolmar::setHostUi(&ui);
    const auto* stack = TlEdCommandStack::cast(tlrxSysRegistry()->at(TLAD_REGISTERED_COMMANDS));
    const double start = bench::processorSeconds();
    stack->lookup(command.name)->handler();
    result.seconds = bench::processorSeconds() - start;
    result.isRun = true;
    result.peakBytes = bench::peakBytes();
    result.outcome = static_cast<int>(tolmar::runReport().outcome());
    for (const auto& written : tolmar::runReport().files()) {
        result.bytes += static_cast<double>(written.size);
    }
    result.rawSeconds = bench::writeRaw(static_cast<std::uint64_t>(result.bytes), setting.out / "raw");
    fs::remove(setting.out / "raw");
    tolmar::setHostUi(nullptr);
    return result;
}

void emptyFolder(const fs::path& folder) {
    fs::remove_all(folder);
    fs::create_directories(folder);
}

Result runApart(const Setting& setting, const Command& command, const fs::path& file) {
    emptyFolder(setting.out);
    const Result result = bench::inChildProcess(command.name, [&] { return runHere(setting, command, file); });
    emptyFolder(setting.out);
    return result;
}

// False when the command did not do its work.
bool printRow(const Command& command, const Result& result) {
    if (!result.isRun) {
        std::printf("%-8s %9.0f   not run: its documents would pass the machine's memory\n", command.name,
                    result.objects);
        return true;
    }
    std::printf("%-8s %9.0f %9.3f %9.2f %9.2f %10.1f %9.1f%s\n", command.name, result.objects, result.seconds,
                result.seconds * 1e6 / result.objects, result.peakBytes / result.loadedBytes, result.bytes / 1e6,
                result.seconds / result.rawSeconds,
                result.outcome == static_cast<int>(tolmar::RunOutcome::Done) ? "" : "   FAILED");
    std::fflush(stdout);
    return result.outcome == static_cast<int>(tolmar::RunOutcome::Done);
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 5) {
        std::fprintf(stderr, "usage: bench_commands MODULE ROOT OUT FILE...\n");
        return 1;
    }
    try {
        const Setting setting{fs::absolute(arguments[1]), fs::absolute(arguments[2]), fs::absolute(arguments[3])};
        removeScripts(setting.root);
        std::printf("%-8s %9s %9s %9s %9s %10s %9s\n", "", "objects", "s", "us/object", "memory", "MB", "raw");
        bool allDone = true;
        for (const Command& command : commands) {
            for (int i = 4; i < count; ++i) {
                allDone = printRow(command, runApart(setting, command, fs::absolute(arguments[i]))) && allDone;
            }
        }
        return allDone ? 0 : 1;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return 2;
    }
}
