// The command line: sub-commands, their options and their help.
#pragma once

#include "tessaro/check/command.h"
#include "tessaro/model/command.h"
#include "tessaro/run/command.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>

class CommandLine {
public:
    CommandLine();
    // Parses and carries out; what the caller does next is to end with this status.
    ExitStatus main(int argc, char** argv);

private:
    void addRun();
    void addRunAnswers(CLI::App& run);
    void addRunOutput(CLI::App& run);
    void addCommands();
    void addModel();
    void addModelReader(CLI::App& model, const char* name, const char* about, ExitStatus (*read)(const ModelOptions&));
    void addModelConvert(CLI::App& model);
    void addModelGenerate(CLI::App& model);
    void addCheck();
    void complain(const CLI::ParseError& error) const;

    CLI::App app_;
    RunOptions run_;
    ModelOptions model_;
    std::filesystem::path checked_;
    bool isCheckStrict_ = false;
    // What the parsed sub-command does.
    std::function<ExitStatus()> action_;
};
