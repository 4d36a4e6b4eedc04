#include "tessaro/run/report_output.h"

#include "tessaro/terminal/json_text.h"
#include "tolmar/code_page.h"

#include <algorithm>
#include <cstdio>
#include <fmt/core.h>
#include <map>
#include <vector>

namespace {

using tolmar::RunOutcome;
using tolmar::RunReport;
using tolmar::toUtf8;

constexpr std::size_t shownLines = 5;
constexpr const char* scriptKind = "script";

const char* nameOf(RunOutcome outcome) {
    switch (outcome) {
    case RunOutcome::Done:
        return "done";
    case RunOutcome::Refused:
        return "refused";
    case RunOutcome::Failed:
        return "failed";
    case RunOutcome::Cancelled:
        return "cancelled";
    }
    return "";
}

const char* meaningOf(ExitStatus status) {
    switch (status) {
    case ExitStatus::Done:
        return "done";
    case ExitStatus::WrongUsage:
        return "wrong usage";
    case ExitStatus::InputRefused:
        return "input refused";
    case ExitStatus::SomethingLeftOut:
        return "done, but something was left out";
    case ExitStatus::Failed:
        return "failed";
    case ExitStatus::Cancelled:
        return "cancelled";
    }
    return "";
}

void appendText(std::string& out, const char* key, const std::string& codePageText) {
    out += key;
    appendJsonString(out, toUtf8(codePageText));
}

void appendHead(std::string& out, const RunFacts& facts) {
    out += "{\n  \"version\": \"" TESSARO_VERSION "\",\n  \"commands\": ";
    appendJsonLines(out, facts.commands,
                    [](std::string& text, const std::string& command) { appendJsonString(text, command); });
    out += ",\n  \"model\": ";
    appendJsonString(out, facts.model);
    out += ",\n  \"status\": ";
    appendJsonNumber(out, static_cast<int>(facts.status));
    out += ",\n  \"outcome\": ";
    appendJsonString(out, nameOf(facts.outcome));
    out += ",\n  \"reason\": ";
    appendJsonString(out, facts.reason);
}

void appendFiles(std::string& out, const RunReport& report) {
    out += ",\n  \"files\": ";
    appendJsonLines(out, report.files(), [](std::string& text, const tolmar::WrittenFile& file) {
        appendText(text, "{\"path\": ", file.path);
        text += ", \"size\": ";
        appendJsonNumber(text, file.size);
        text += '}';
    });
    out += ",\n  \"failedFiles\": ";
    std::size_t index = 0;
    appendJsonLines(out, report.failedFiles(), [&](std::string& text, const tolmar::WrittenFile& file) {
        appendText(text, "{\"path\": ", file.path);
        appendText(text, ", \"why\": ", report.failures()[index++]);
        text += '}';
    });
}

void appendObjects(std::string& out, const RunReport& report) {
    out += ",\n  \"passedOver\": ";
    appendJsonLines(out, report.passed(), [](std::string& text, const tolmar::PassedOver& passed) {
        text += "{\"id\": ";
        appendJsonNumber(text, passed.id);
        appendText(text, ", \"name\": ", passed.name);
        appendText(text, ", \"what\": ", passed.what);
        appendText(text, ", \"why\": ", passed.why);
        text += '}';
    });
    out += ",\n  \"coloured\": ";
    appendJsonLines(out, report.colours(), [](std::string& text, const tolmar::ColouredObject& object) {
        text += "{\"id\": ";
        appendJsonNumber(text, object.id);
        text += ", \"color\": ";
        appendJsonNumber(text, object.color);
        text += '}';
    });
    out += "\n}\n";
}

std::string lineOf(const tolmar::PassedOver& passed) {
    const std::string id = passed.id != 0 ? fmt::format(" {}", passed.id) : "";
    const std::string name = passed.name.empty() ? "" : fmt::format(" \"{}\"", toUtf8(passed.name));
    return fmt::format("{}{}{}: {}", toUtf8(passed.what), id, name, toUtf8(passed.why));
}

// A script that does not load changes all of the output: it comes first, and is told also where little is.
std::vector<const tolmar::PassedOver*> scriptsFirst(const RunReport& report) {
    std::vector<const tolmar::PassedOver*> rows;
    for (const tolmar::PassedOver& passed : report.passed()) {
        rows.push_back(&passed);
    }
    std::stable_partition(rows.begin(), rows.end(),
                          [](const tolmar::PassedOver* row) { return row->what == scriptKind; });
    return rows;
}

void printRow(Console& console, const tolmar::PassedOver& row, bool isShown) {
    if (row.what == scriptKind && console.verbosity() == Verbosity::Quiet) {
        console.error(lineOf(row));
    } else if (isShown) {
        console.note("  " + lineOf(row));
    } else {
        console.detail("  " + lineOf(row));
    }
}

void printPassed(Console& console, const RunReport& report) {
    std::map<std::string, std::size_t> counts;
    for (const tolmar::PassedOver& passed : report.passed()) {
        ++counts[toUtf8(passed.what)];
    }
    std::string head = fmt::format("passed over: {}", report.passed().size());
    const char* separator = " (";
    for (const auto& [what, count] : counts) {
        head += fmt::format("{}{} {}", separator, what, count);
        separator = ", ";
    }
    console.note(head + ")");
    std::size_t number = 0;
    for (const tolmar::PassedOver* row : scriptsFirst(report)) {
        printRow(console, *row, number++ < shownLines);
    }
    if (report.passed().size() > shownLines && console.verbosity() != Verbosity::Verbose) {
        console.note(fmt::format("  ... and {} more; -v or --report shows all", report.passed().size() - shownLines));
    }
}

}  // namespace

ExitStatus statusOf(const RunReport& report) {
    switch (report.outcome()) {
    case RunOutcome::Cancelled:
        return ExitStatus::Cancelled;
    case RunOutcome::Failed:
        return ExitStatus::Failed;
    case RunOutcome::Refused:
        return ExitStatus::InputRefused;
    case RunOutcome::Done:
        break;
    }
    return report.passed().empty() ? ExitStatus::Done : ExitStatus::SomethingLeftOut;
}

bool writeReport(const std::filesystem::path& file, const RunReport& report, const RunFacts& facts) {
    std::string text;
    appendHead(text, facts);
    appendFiles(text, report);
    appendObjects(text, report);
    const bool toStandardOutput = file == "-";
    std::FILE* out = toStandardOutput ? stdout : std::fopen(file.c_str(), "wb");
    if (out == nullptr) {
        return false;
    }
    const bool written = std::fwrite(text.data(), 1, text.size(), out) == text.size() && std::fflush(out) == 0;
    return (toStandardOutput || std::fclose(out) == 0) && written;
}

void printSummary(Console& console, const RunReport& report, const RunFacts& facts) {
    for (const tolmar::WrittenFile& file : report.files()) {
        console.note(fmt::format("{:>12}  {}", file.size, toUtf8(file.path)));
    }
    for (std::size_t i = 0; i < report.failedFiles().size(); ++i) {
        const std::string failure = toUtf8(report.failedFiles()[i].path + ": " + report.failures()[i]);
        if (failure != facts.reason) {
            console.error(failure);
        }
    }
    if (!report.colours().empty()) {
        console.note(fmt::format("coloured: {} objects", report.colours().size()));
    }
    if (!report.passed().empty()) {
        printPassed(console, report);
    }
    const std::string meaning = meaningOf(facts.status);
    if (facts.status == ExitStatus::Done || facts.status == ExitStatus::SomethingLeftOut) {
        console.note(meaning);
    } else {
        const bool isSaid = facts.reason.empty() || console.hasTold(facts.reason);
        console.error(isSaid ? meaning : meaning + ": " + facts.reason);
    }
}
