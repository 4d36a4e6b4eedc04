// The real module in this process, with a small plant, an installation root and an output folder of its own.
#pragma once

#include "forms/scripted_ui.h"
#include "generator/generate.h"
#include "plant/model.h"
#include "tolmar/module_api.h"
#include "tolmar/module_loader.h"
#include "tolmar/run_report.h"
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
    // With the plant of a model text, or a small one with a few objects of every kind.
    explicit ModuleSession(const std::string& modelText = plant::generateModelText({40, 7}));
    ~ModuleSession();
    ModuleSession(const ModuleSession&) = delete;
    ModuleSession& operator=(const ModuleSession&) = delete;

    struct Run {
        tolmar::RunOutcome outcome = tolmar::RunOutcome::Done;
        std::string reason;
        std::string printed;
        // What is given back in another way than by files stands among them: colours shown, arrays handed out.
        Files files;
        // The files in the form in which they are the same in every run: of a package whose ids go on counting, what
        // its reader makes of it; else the bytes.
        Files contents;
    };
    // Empties the output folder and the working folder but for the configuration, runs the command (or calls the
    // function XDBOUT), waits for what it started, and reads what it wrote. `before` runs right before the command,
    // `after` right behind it.
    Run run(const std::string& command, tolmar::ScriptedAnswers answers = {}, const std::function<void()>& before = {},
            const std::function<void()>& after = {});

    // What the module exports under that name.
    void* symbol(const char* name) const { return module_->symbol(name); }
    std::filesystem::path root() const { return folder_ / "root"; }
    std::filesystem::path out() const { return folder_ / "out"; }
    std::filesystem::path working() const { return root() / "temp" / "hext"; }

private:
    void clean() const;
    Files written() const;
    void call(const std::string& command, Files& handedOut) const;
    void callXdb(Files& handedOut) const;

    std::filesystem::path folder_;
    plant::ModelPtr model_;
    std::unique_ptr<tolmar::LoadedModule> module_;
};

struct FaultCase {
    const char* command;
    bool hasProgress;
    // Path pattern of what is selected; all when empty.
    const char* select = "";
    bool writesFiles = true;
    const char* checker = nullptr;  // of `tessaro check`
    // Whose calls its result hangs on.
    const char* script = "nvoutplugins.lua";
    int scriptCalls = 1;  // so many at least
    long questions = 20;  // so many at least whether to cancel
};
inline constexpr FaultCase faultCases[] = {
    {"HEXTOUT", true, "", true, "hext"},
    {"RVMOUT", true, "", true, "rvm", "nvoutplugins.lua", 50},
    {"NVOUT", true, "", true, "scene", "nvoutplugins.lua", 50},
    {"ORNAOUT", true, "", true, "eem"},
    {"OBMOUT", true, "", true, "package"},
    {"MAXOUT", false, "", true, "max", "maxoutplugins.lua", 50},
    {"ShowHextBranch", true, "**/PIPE:LS-1001-150-A2B", false, nullptr, nullptr, 1, 5},
    {"XDBOUT", true, "", false, nullptr, nullptr},
};
inline void PrintTo(const FaultCase& fault, std::ostream* out) {
    *out << fault.command;
}
