// The run report as the program hands it out: JSON for scripts, a summary for people, the exit status.
#pragma once

#include "tessaro/terminal/console.h"
#include "tessaro/terminal/exit_status.h"
#include "tolmar/run_report.h"

#include <filesystem>
#include <string>
#include <vector>

ExitStatus statusOf(const tolmar::RunReport& report);

struct RunFacts {
    std::vector<std::string> commands;
    std::string model;  // its files
    ExitStatus status = ExitStatus::Done;
    tolmar::RunOutcome outcome = tolmar::RunOutcome::Done;
    // In UTF-8.
    std::string reason;
};

// "-" is standard output. False when it cannot be written.
bool writeReport(const std::filesystem::path& file, const tolmar::RunReport& report, const RunFacts& facts);

void printSummary(Console& console, const tolmar::RunReport& report, const RunFacts& facts);
