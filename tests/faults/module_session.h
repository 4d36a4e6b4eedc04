// The real module in this process, with a small plant, an installation root and an output folder of its own.
#pragma once

#include "plant/model.h"
#include "tolmar/module_api.h"
#include "tolmar/module_loader.h"
#include "tolmar/run_report.h"
#include "tolmar/scripted_ui.h"
#include "tolmar/system.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

// Bytes of the files of a run by their paths below the session's folder.
using Files = std::map<std::string, std::string>;

class ModuleSession {
public:
    ModuleSession();
    ~ModuleSession();
    ModuleSession(const ModuleSession&) = delete;
    ModuleSession& operator=(const ModuleSession&) = delete;

    struct Run {
        tolmar::RunOutcome outcome = tolmar::RunOutcome::Done;
        std::string reason;
        std::string printed;
        Files files;
    };
    // Empties the output folder and the working folder but for the configuration, runs the command, waits for what it
    // started, and reads what it wrote. `before` runs right before the command, `after` right behind it.
    Run run(const std::string& command, tolmar::ScriptedAnswers answers = {}, const std::function<void()>& before = {},
            const std::function<void()>& after = {});

    std::filesystem::path root() const { return folder_ / "root"; }
    std::filesystem::path out() const { return folder_ / "out"; }

private:
    void clean() const;
    Files written() const;

    std::filesystem::path folder_;
    plant::ModelPtr model_;
    std::unique_ptr<tolmar::LoadedModule> module_;
};

// A command whose output one run of the process does not change for the next.
struct FaultCase {
    const char* command;
    bool hasProgress;
};
inline constexpr FaultCase faultCases[] = {
    {"HEXTOUT", true}, {"RVMOUT", true}, {"NVOUT", true}, {"ORNAOUT", true}, {"MAXOUT", false}};
inline void PrintTo(const FaultCase& fault, std::ostream* out) {
    *out << fault.command;
}
