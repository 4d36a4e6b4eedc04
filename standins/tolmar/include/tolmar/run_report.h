// What a run did: every file written and everything passed over. A service of the host, one for the process; the
// program reads it for --report, for the summary at the end and for the exit status.
//
// Texts are in the code page.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tolmar {

struct PassedOver {
    std::int64_t id = 0;  // 0 when nothing has an id
    std::string name;     // display name, row name, branch name
    std::string what;     // "pipe", "branch", "row", "object", "primitive", "file", ...
    std::string why;      // the reason, as a sentence fragment
};

struct WrittenFile {
    std::string path;
    std::uint64_t size = 0;
    std::size_t writes = 1;  // how often it was written or added to
};

struct ColouredObject {
    std::int64_t id = 0;
    int color = 0;
};

enum class RunOutcome { Done, Refused, Failed, Cancelled };

class RunReport {
public:
    // A file that is written again, or added to, keeps one entry with its last size.
    void fileWritten(std::string_view path, std::uint64_t size);
    // A file that could not be opened, read or written completely; makes the run fail.
    void fileFailed(std::string_view path, std::string_view why);
    // A file that was left before its end, by a cancel or an exception, whose own end of the command stands. A command
    // that ends in no other way has failed.
    void fileUnfinished(std::string_view path, std::string_view why);
    // A file that the run must not write: the run counts as refused, whatever its commands make of it.
    void fileRefused(std::string_view path, std::string_view why);
    // A file that was written, if it was, is deleted again.
    void fileRemoved(std::string_view path);
    void passedOver(std::int64_t id, std::string_view name, std::string_view what, std::string_view why);
    void coloured(std::int64_t id, int color);
    // How the command in hand ended. Of several the worst stands, with the first reason given for it: failed, then
    // refused, then cancelled, which also says that nobody answered a dialog.
    void ended(RunOutcome outcome, std::string_view why = {});

    const std::vector<WrittenFile>& files() const { return files_; }
    const std::vector<WrittenFile>& failedFiles() const { return failedFiles_; }
    // Why each of failedFiles failed, in the same order.
    const std::vector<std::string>& failures() const { return failures_; }
    const std::vector<PassedOver>& passed() const { return passed_; }
    const std::vector<ColouredObject>& colours() const { return colours_; }
    RunOutcome outcome() const;
    const std::string& reason() const;
    void clear();

private:
    std::vector<WrittenFile> files_;
    std::unordered_map<std::string, std::size_t> fileIndex_;
    std::vector<WrittenFile> failedFiles_;
    std::vector<std::string> failures_;
    std::vector<PassedOver> passed_;
    std::vector<ColouredObject> colours_;
    RunOutcome outcome_ = RunOutcome::Done;
    std::string reason_;
    std::string unfinished_;  // the first such file and why
    std::string refused_;     // the same
};

RunReport& runReport();

}  // namespace tolmar
