#include "tessaro/run/command.h"

#include "forms/scripted_ui.h"
#include "plant/model.h"
#include "tessaro/run/folder_lock.h"
#include "tessaro/run/module_file.h"
#include "tessaro/run/places.h"
#include "tessaro/run/report_output.h"
#include "tessaro/run/screen_ui.h"
#include "tessaro/run/xdb_function.h"
#include "tessaro/terminal/cancel_signal.h"
#include "tessaro/terminal/console.h"
#include "tolmar/code_page.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <strings.h>

namespace {

using tolmar::fromUtf8;
using tolmar::RunOutcome;
using tolmar::runReport;
using tolmar::ScriptedUi;
namespace fs = std::filesystem;

// Answers from the command line, speaks through the console.
class CommandLineUi final : public ScriptedUi {
public:
    CommandLineUi(tolmar::ScriptedAnswers answers, Console& console)
        : ScriptedUi(std::move(answers), outputTo(console)), console_(console) {}
    void progressChanged(const tolmar::ProgressState& state) override { console_.progress(state); }

private:
    static Output outputTo(Console& console) {
        return [&console](Channel channel, const std::string& utf8) {
            switch (channel) {
            case Channel::Print:
                return console.print(utf8);
            case Channel::Box:
            case Channel::Note:
                return console.note(utf8);
            case Channel::Error:
                return console.error(utf8);
            }
        };
    }
    Console& console_;
};

ProgressStyle progressStyleOf(const RunOptions& options) {
    constexpr std::pair<const char*, ProgressStyle> styles[] = {{"bar", ProgressStyle::Bar},
                                                                {"plain", ProgressStyle::Plain},
                                                                {"json", ProgressStyle::Json},
                                                                {"none", ProgressStyle::None}};
    for (const auto& [name, style] : styles) {
        if (options.progress == name) {
            return style;
        }
    }
    return automaticProgressStyle(options.quiet);
}

Verbosity verbosityOf(const RunOptions& options) {
    return options.quiet ? Verbosity::Quiet : options.verbose ? Verbosity::Verbose : Verbosity::Normal;
}

// A command may change the working folder, so every path is made absolute first.
void makeAbsolute(fs::path& path) {
    if (!path.empty() && path != "-") {
        path = fs::absolute(path).lexically_normal();
    }
}

bool isXdbFunction(const std::string& name) {
    return ::strcasecmp(name.c_str(), xdbFunctionName) == 0;
}

fs::path defaultRoot() {
    const char* root = std::getenv("TESSARO_ROOT");
    return root != nullptr && *root != '\0' ? root : "./install";
}

// Two commands of a run may answer the same dialog alike.
class Overwrites {
public:
    // After each command. A file that an earlier one wrote, and that is written anew, is lost.
    void lookAt(const std::string& command) {
        for (const tolmar::WrittenFile& file : runReport().files()) {
            Writer& last = writers_[file.path];
            if (file.writes == last.writes) {
                continue;
            }
            if (!last.command.empty() && ::strcasecmp(last.command.c_str(), command.c_str()) != 0) {
                const std::string why = "of " + last.command + ": " + command + " wrote over it";
                runReport().passedOver(0, file.path, "file", fromUtf8(why));
            }
            last = {command, file.writes};
        }
    }

private:
    struct Writer {
        std::string command;
        std::size_t writes = 0;
    };
    std::map<std::string, Writer> writers_;
};

class Run {
public:
    Run(const RunOptions& options, Console& console) : options_(options), console_(console) {}

    ExitStatus execute() {
        for (const auto step :
             {&Run::prepareRoot, &Run::loadTheModule, &Run::checkNames, &Run::checkOutputs, &Run::checkTarget,
              &Run::lockFolders, &Run::prepareUi, &Run::openScreen, &Run::loadTheModel}) {
            const ExitStatus status = (this->*step)();
            if (status != ExitStatus::Done) {
                return status;
            }
        }
        runAll();
        module_.reset();
        plant::setCurrentModel(nullptr);
        tolmar::setHostUi(nullptr);
        return finalStatus();
    }

private:
    static ExitStatus refuse(ExitStatus status, const std::string& utf8) {
        runReport().ended(status == ExitStatus::Failed ? RunOutcome::Failed : RunOutcome::Refused, fromUtf8(utf8));
        return status;
    }

    ExitStatus prepareRoot() {
        std::error_code error;
        if (!fs::is_directory(options_.root, error)) {
            return refuse(ExitStatus::InputRefused,
                          options_.root.string() + ": no installation root (--root or TESSARO_ROOT names it)");
        }
        tolmar::setInstallationRoot(fromUtf8(options_.root.string()));
        tolmar::setDryRun(options_.dryRun);
        tolmar::setScriptsTrusted(options_.trustScripts);
        return ExitStatus::Done;
    }

    ExitStatus loadTheModule() {
        std::string error;
        module_ = loadModule(error);
        return module_ != nullptr ? ExitStatus::Done : refuse(ExitStatus::Failed, error);
    }

    ExitStatus checkNames() {
        for (const std::string& name : options_.commands) {
            if (registeredCommands().lookup(fromUtf8(name)) == nullptr && !isXdbFunction(name)) {
                std::string known;
                for (const auto& command : registeredCommands().commands()) {
                    known += command->globalName + ", ";
                }
                return refuse(ExitStatus::WrongUsage, name + ": no such command; there are " + known + xdbFunctionName);
            }
        }
        return ExitStatus::Done;
    }

    // Two JSON texts on one stream are none.
    ExitStatus checkOutputs() {
        const bool hasXdb = std::any_of(options_.commands.begin(), options_.commands.end(), isXdbFunction);
        return hasXdb && options_.out.empty() && options_.report == "-"
                   ? refuse(ExitStatus::WrongUsage,
                            "XDBOUT and the report would both go to standard output; give --out "
                            "or a file for --report")
                   : ExitStatus::Done;
    }

    ExitStatus checkTarget() {
        const std::string fault = faultOfTarget(options_);
        if (!fault.empty()) {
            return refuse(ExitStatus::InputRefused, fault);
        }
        protectPlaces(options_);
        return ExitStatus::Done;
    }

    // HEXTOUT writes below the installation root, everything else to the target.
    ExitStatus lockFolders() {
        if (options_.dryRun) {
            return ExitStatus::Done;
        }
        const auto isOfRoot = [](const std::string& name) { return ::strcasecmp(name.c_str(), "HEXTOUT") == 0; };
        const std::vector<std::string>& all = options_.commands;
        const auto rootCommands = std::count_if(all.begin(), all.end(), isOfRoot);
        std::string fault = rootCommands > 0 ? rootLock_.take(options_.root) : "";
        if (fault.empty() && rootCommands < std::ssize(all) && !options_.out.empty()) {
            fault = targetLock_.take(options_.out);
        }
        return fault.empty() ? ExitStatus::Done : refuse(ExitStatus::InputRefused, fault);
    }

    ExitStatus prepareUi() {
        tolmar::ScriptedAnswers answers;
        answers.target = options_.out.empty() ? fs::current_path() : options_.out;
        answers.inputs = options_.inputs;
        answers.selection = {options_.select, options_.deselect};
        answers.dryRun = options_.dryRun;
        answers.listItems = options_.verbose;
        answers.cancelled = cancelSignalled;
        std::string error;
        if (!options_.selectFile.empty() && !readSelectFile(options_.selectFile, answers.selection, error)) {
            return refuse(ExitStatus::InputRefused, error);
        }
        for (const std::string& setting : options_.set) {
            std::string key;
            bool on = false;
            splitSetting(setting, key, on);
            if (key == "strict") {
                strict_ = on;
            } else {
                answers.options.emplace_back(key, on);
            }
        }
        hasPatterns_ = !answers.selection.select.empty();
        ui_ = std::make_unique<CommandLineUi>(std::move(answers), console_);
        return ExitStatus::Done;
    }

    ExitStatus openScreen() {
        if (!options_.interactive) {
            return ExitStatus::Done;
        }
        std::string error;
        screen_ = openScreenUi(*ui_, error);
        return screen_ != nullptr ? ExitStatus::Done : refuse(ExitStatus::InputRefused, error);
    }

    ExitStatus loadTheModel() {
        plant::LoadResult loaded = plant::loadPlant(options_.model);
        if (!loaded) {
            return refuse(ExitStatus::InputRefused, loaded.error);
        }
        for (const plant::LoadRemark& remark : loaded.remarks) {
            tellRemark(remark);
        }
        model_ = std::move(loaded.model);
        plant::setCurrentModel(model_.get());
        return ExitStatus::Done;
    }

    // What a file holds and the model does not is left out of every export.
    void tellRemark(const plant::LoadRemark& remark) {
        if (remark.grade == plant::LoadRemark::Grade::Note) {
            console_.detail(plant::textOf(remark));
        } else {
            runReport().passedOver(0, fromUtf8(remark.place), "source", fromUtf8(remark.code + ": " + remark.text));
        }
    }

    void runAll() {
        tolmar::setHostUi(screen_ != nullptr ? screen_.get() : ui_.get());
        catchCancelSignals();
        for (const std::string& name : options_.commands) {
            if (cancelSignalled()) {
                runReport().ended(RunOutcome::Cancelled);
            }
            // The scope dialog of a dry run is cancelled on purpose.
            const bool isCancelled = !options_.dryRun && runReport().outcome() == RunOutcome::Cancelled;
            if (cancelSignalled() || isCancelled || !ui_->refusal().empty()) {
                break;
            }
            console_.detail("command " + name);
            const int formsBefore = ui_->formsRun();
            runOne(name);
            if (options_.dryRun && !options_.interactive && ui_->formsRun() == formsBefore) {
                console_.note(name + " asks for no scope");
            }
            overwrites_.lookAt(name);
        }
        tolmar::waitForStartedPrograms();
    }

    // A handler catches what it expects; what comes through all the same fails this command alone.
    void runOne(const std::string& name) {
        try {
            if (const TlEdCommand* command = registeredCommands().lookup(fromUtf8(name))) {
                command->handler();
            } else {
                callXdbFunction({module_.get(), options_.out, strict_, hasPatterns_ ? model_.get() : nullptr});
            }
        } catch (const std::exception& error) {
            runReport().ended(RunOutcome::Failed, error.what());
        }
    }

    // The scope dialog of a dry run was cancelled on purpose.
    ExitStatus finalStatus() const {
        const bool onPurpose = options_.dryRun && runReport().outcome() == RunOutcome::Cancelled && !cancelSignalled();
        return onPurpose ? ExitStatus::Done : statusOf(runReport());
    }

    const RunOptions& options_;
    Console& console_;
    FolderLock rootLock_;
    FolderLock targetLock_;
    std::unique_ptr<CommandLineUi> ui_;
    std::unique_ptr<tolmar::HostUi> screen_;
    plant::ModelPtr model_;
    std::unique_ptr<tolmar::LoadedModule> module_;
    Overwrites overwrites_;
    bool strict_ = false;
    bool hasPatterns_ = false;  // of items to select
};

std::string namesOf(const std::vector<fs::path>& files) {
    std::string names;
    for (const fs::path& file : files) {
        names.append(names.empty() ? "" : ", ").append(file.string());
    }
    return names;
}

RunFacts factsOf(const RunOptions& options, ExitStatus status) {
    const tolmar::RunReport& report = runReport();
    RunFacts facts{options.commands, namesOf(options.model), status, report.outcome(), tolmar::toUtf8(report.reason())};
    if (status == ExitStatus::Done) {
        facts.outcome = RunOutcome::Done;
        facts.reason.clear();
    }
    return facts;
}

}  // namespace

bool splitSetting(const std::string& text, std::string& key, bool& on) {
    const std::size_t size = text.size();
    if (size < 3 || text[size - 2] != '=' || (text[size - 1] != '0' && text[size - 1] != '1')) {
        return false;
    }
    key = text.substr(0, size - 2);
    on = text[size - 1] == '1';
    return true;
}

ExitStatus runCommands(RunOptions options) {
    Console console(verbosityOf(options), progressStyleOf(options));
    if (options.root.empty()) {
        options.root = defaultRoot();
    }
    for (fs::path* path : {&options.root, &options.out, &options.selectFile, &options.report, &options.logFile}) {
        makeAbsolute(*path);
    }
    for (fs::path& path : options.model) {
        makeAbsolute(path);
    }
    if (const std::string fault = faultOfOwnFiles(options); !fault.empty()) {
        console.error(fault);
        return ExitStatus::InputRefused;
    }
    if (!options.logFile.empty() && !console.openLog(options.logFile)) {
        console.error(options.logFile.string() + ": cannot be written");
        return ExitStatus::Failed;
    }
    ExitStatus status = Run(options, console).execute();
    const RunFacts facts = factsOf(options, status);
    printSummary(console, runReport(), facts);
    if (options.report.parent_path() == options.out) {
        std::error_code ignored;
        fs::create_directories(options.out, ignored);
    }
    if (!options.report.empty() && !writeReport(options.report, runReport(), facts)) {
        console.error(options.report.string() + ": the report cannot be written");
        status = ExitStatus::Failed;
    }
    if (!console.closeLog()) {
        console.error(options.logFile.string() + ": not all of the log could be written");
        status = ExitStatus::Failed;
    }
    return status;
}
