#include "tessaro/command_line.h"

#include "tessaro/run/module_file.h"
#include "tessaro/terminal/standard_streams.h"

#include <cstdio>
#include <fmt/core.h>
#include <limits>

namespace {

constexpr const char* about = "Tessaro: exports of plant models.";
constexpr const char* exitStatuses =
    "Exit status: 0 done, 1 wrong usage, 2 input refused, 3 done but something was left out,\n"
    "4 failed or could not write, 130 cancelled.\n\n"
    "Examples:\n"
    "  tessaro model generate --objects 1000 -o plant.json\n"
    "  tessaro run HEXTOUT --model plant.json --root install\n"
    "  tessaro check hext install/temp/hext\n"
    "  tessaro run --help";
constexpr const char* runExamples =
    "A pattern of --select and --deselect is a path in the tree of the scope dialog: labels joined by \"/\",\n"
    "\"*\" for any text in a label, \"**\" for any number of labels, a backslash before a character that stands\n"
    "for itself. Without --select everything is checked.\n\n"
    "Examples:\n"
    "  tessaro run HEXTOUT --model plant.json --root install\n"
    "  tessaro run NVOUT --model review.rvm --out exported\n"
    "  tessaro run RVMOUT NVOUT --model plant.json --out exported --report report.json\n"
    "  tessaro run RVMOUT --model plant.json --select 'World/*North*/**' --deselect '**/TEMP*' --dry-run\n"
    "  tessaro run NVOUT --model plant.json --set outWeld=1 --set nvExpandBranch=0 --progress plain\n"
    "  tessaro run MAXOUT --model plant.json --out exported --input Project --input Station\n"
    "  tessaro run XDBOUT --model plant.json --select '**/L-100' > shapes.json";
constexpr const char* commandsExamples = "Examples:\n  tessaro commands";
constexpr const char* modelExamples = "Examples:\n"
                                      "  tessaro model check plant.json\n"
                                      "  tessaro model info plant.json --json\n"
                                      "  tessaro model tree plant.json --depth 3\n"
                                      "  tessaro model convert review.rvm -o plant.json\n"
                                      "  tessaro model generate --objects 100000 --seed 7 -o big.json";
// The file of so many takes 770 GB.
constexpr double mostObjects = 1e9;
constexpr double mostSeed = 9007199254740992;

std::string settingFault(const std::string& text) {
    std::string key;
    bool on = false;
    return splitSetting(text, key, on) ? "" : "KEY=0 or KEY=1 expected, \"" + text + "\" found";
}

std::string example(const OutputChecker& checker) {
    const std::string line = std::string("\n  tessaro check ") + checker.kind;
    const std::string strict = line + " --strict " + checker.example;
    return line + " " + checker.example + (checker.checkStrictly != nullptr ? strict : "");
}

// A whole number within bounds.
CLI::Validator wholeNumber(double low, double high) {
    return CLI::Validator(
        [low, high](const std::string& text) {
            double value = 0;
            const bool isWhole =
                text.find_first_not_of("0123456789") == std::string::npos && CLI::detail::lexical_cast(text, value);
            return isWhole && value >= low && value <= high
                       ? std::string()
                       : fmt::format("a whole number from {:.0f} to {:.0f} expected, \"{}\" found", low, high, text);
        },
        "");
}

// An option that may be given again and again, with one value each time.
CLI::Option* addRepeated(CLI::App& app, const char* name, std::vector<std::string>& values, const char* help) {
    return app.add_option(name, values, help)->allow_extra_args(false)->take_all();
}

ExitStatus listCommands() {
    std::string error;
    const auto module = loadModule(error);
    if (module == nullptr) {
        std::fprintf(stderr, "tessaro: %s\n", error.c_str());
        return ExitStatus::Failed;
    }
    for (const auto& command : registeredCommands().commands()) {
        std::printf("%s\n", command->globalName.c_str());
    }
    return finishStandardOutput() ? ExitStatus::Done : ExitStatus::Failed;
}

}  // namespace

CommandLine::CommandLine() : app_(about, "tessaro") {
    app_.set_version_flag("--version", std::string("tessaro ") + TESSARO_VERSION);
    app_.footer(exitStatuses);
    app_.require_subcommand(1);
    app_.get_formatter()->column_width(34);
    addRun();
    addCommands();
    addModel();
    addCheck();
}

ExitStatus CommandLine::main(int argc, char** argv) {
    try {
        app_.parse(argc, argv);
    } catch (const CLI::Success& help) {
        app_.exit(help);
        return finishStandardOutput() ? ExitStatus::Done : ExitStatus::Failed;
    } catch (const CLI::ParseError& error) {
        complain(error);
        return ExitStatus::WrongUsage;
    }
    return action_();
}

// What was wrong, and where the help for it is.
void CommandLine::complain(const CLI::ParseError& error) const {
    std::string program = "tessaro";
    const CLI::App* place = &app_;
    for (auto used = place->get_subcommands(); !used.empty(); used = place->get_subcommands()) {
        place = used.front();
        program += " " + place->get_name();
    }
    const std::vector<std::string> unknown = app_.remaining(true);
    const bool lacksCommand = place->get_require_subcommand_min() > 0 && !unknown.empty();
    const std::string what = lacksCommand ? unknown.front() + ": no such sub-command" : error.what();
    std::fprintf(stderr, "tessaro: %s\n\"%s --help\" tells more.\n", what.c_str(), program.c_str());
}

void CommandLine::addRun() {
    CLI::App* run = app_.add_subcommand("run", "Run commands of the module on a plant model");
    run->footer(runExamples);
    run->add_option("COMMAND", run_.commands,
                    "Commands in the order in which they run (see: tessaro commands), or XDBOUT")
        ->required();
    run->add_option("--model", run_.model, "The plant: a model file, or review models and folders of them")
        ->required()
        ->type_name("FILE ...");
    run->add_option("--root", run_.root, "The installation root (default: TESSARO_ROOT, else ./install)")
        ->type_name("DIR");
    run->add_option("--out", run_.out, "Where files go when a command asks (default: the working folder)")
        ->type_name("DIR");
    addRunAnswers(*run);
    addRunOutput(*run);
    run->callback([this] { action_ = [this] { return runCommands(run_); }; });
}

void CommandLine::addRunAnswers(CLI::App& run) {
    addRepeated(run, "--select", run_.select, "Check the items of the scope dialog that match")->type_name("PATTERN");
    addRepeated(run, "--deselect", run_.deselect, "Uncheck the items that match")->type_name("PATTERN");
    run.add_option("--select-file", run_.selectFile, "Patterns, one a line: \"+ PATTERN\" or \"- PATTERN\"")
        ->type_name("FILE");
    addRepeated(
        run, "--set", run_.set,
        "Set an option of the scope dialog (outWeld, nvExpandBranch, orAxiss, clearCache) or of XDBOUT (strict)")
        ->type_name("KEY=0|1")
        ->check(settingFault);
    addRepeated(run, "--input", run_.inputs, "Answer an input box; in order")->type_name("TEXT");
    run.add_flag("--interactive", run_.interactive, "Show the dialogs on the screen");
    run.add_flag("--trust-scripts", run_.trustScripts, "Let the project's scripts write, move and delete files");
    run.add_flag("--dry-run", run_.dryRun, "Say what would go out (with -v every item of the tree), write nothing");
}

void CommandLine::addRunOutput(CLI::App& run) {
    run.add_option("--report", run_.report, "Write the run report as JSON; - is standard output")->type_name("FILE");
    run.add_option("--progress", run_.progress, "How the progress shows on standard error (default: auto)")
        ->type_name("STYLE")
        ->check(CLI::IsMember({"auto", "bar", "plain", "json", "none"}));
    run.add_option("--log-file", run_.logFile, "Everything said goes into this file too")->type_name("FILE");
    CLI::Option* quiet = run.add_flag("-q,--quiet", run_.quiet, "Say only what went wrong");
    run.add_flag("-v,--verbose", run_.verbose, "Say everything")->excludes(quiet);
}

void CommandLine::addCommands() {
    CLI::App* commands = app_.add_subcommand("commands", "The commands that the module registers, one a line");
    commands->footer(commandsExamples);
    commands->callback([this] { action_ = listCommands; });
}

void CommandLine::addModel() {
    CLI::App* model = app_.add_subcommand("model", "Look into plant models, or make one");
    model->footer(modelExamples);
    model->require_subcommand(1);
    addModelReader(*model, "check", "Is the file good; if not, what is wrong and where", checkModel);
    addModelReader(*model, "info", "What is in the file: counts, bounds, names, what exports will miss",
                   describeModelFile);
    addModelReader(*model, "tree", "The tree of the model: classes, ids and names", printModelTree);
    addModelConvert(*model);
    addModelGenerate(*model);
}

void CommandLine::addModelReader(CLI::App& model, const char* name, const char* help,
                                 ExitStatus (*read)(const ModelOptions&)) {
    CLI::App* command = model.add_subcommand(name, help);
    command->add_option("FILE", model_.files, "The files of the plant, or folders of them")->required()->type_name("");
    if (read == describeModelFile) {
        command->add_flag("--json", model_.json, "As JSON");
    }
    if (read == printModelTree) {
        command->add_option("--depth", model_.depth, "Levels below the roots (default: all)")
            ->type_name("N")
            ->check(wholeNumber(0, std::numeric_limits<int>::max()));
    }
    command->footer(modelExamples);
    command->callback([this, read] { action_ = [this, read] { return read(model_); }; });
}

void CommandLine::addModelConvert(CLI::App& model) {
    CLI::App* convert = model.add_subcommand("convert", "One model file of the files of a plant in other formats");
    convert->add_option("FILE", model_.files, "The files of the plant, or folders of them")->required()->type_name("");
    convert->add_option("-o,--output", model_.file, "The model file to write")->required()->type_name("FILE");
    convert->footer(modelExamples);
    convert->callback([this] { action_ = [this] { return convertModel(model_); }; });
}

void CommandLine::addModelGenerate(CLI::App& model) {
    CLI::App* generate =
        model.add_subcommand("generate", "Make a plausible plant; the same options give the same bytes");
    generate->add_option("--objects", model_.objects, "Smart objects, about (default: 1000)")
        ->type_name("N")
        ->check(wholeNumber(1, mostObjects));
    generate->add_option("--seed", model_.seed, "What makes one plant differ from another (default: 1)")
        ->type_name("S")
        ->check(wholeNumber(0, mostSeed));
    generate->add_flag("--odd", model_.odd, "Odd values and missing parts, to test what reads the plant");
    generate->add_option("-o,--output", model_.file, "The file to write")->required()->type_name("FILE");
    generate->footer(modelExamples);
    generate->callback([this] { action_ = [this] { return generateModelFile(model_); }; });
}

void CommandLine::addCheck() {
    CLI::App* check = app_.add_subcommand("check", "Is an output whole, would its receiver take it");
    std::string examples = "Examples:";
    for (const OutputChecker& checker : outputCheckers()) {
        examples += example(checker);
    }
    check->footer(examples);
    check->require_subcommand(1);
    for (const OutputChecker& checker : outputCheckers()) {
        CLI::App* kind = check->add_subcommand(checker.kind, checker.about);
        kind->add_option("PATH", checked_, "The output")->required()->type_name("");
        kind->footer("Examples:" + example(checker));
        if (checker.checkStrictly != nullptr) {
            kind->add_flag("--strict", isCheckStrict_, "Demand the form for readers that are stricter");
        }
        kind->callback([this, &checker] {
            action_ = [this, &checker] { return checkOutput(checker, checked_, isCheckStrict_); };
        });
    }
}
