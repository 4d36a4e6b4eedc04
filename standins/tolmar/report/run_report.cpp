#include "tolmar/run_report.h"

namespace tolmar {

namespace {

int severity(RunOutcome outcome) {
    switch (outcome) {
    case RunOutcome::Done:
        return 0;
    case RunOutcome::Cancelled:
        return 1;
    case RunOutcome::Refused:
        return 2;
    case RunOutcome::Failed:
        return 3;
    }
    return 3;
}

}  // namespace

void RunReport::fileWritten(std::string_view path, std::uint64_t size) {
    const auto [place, isNew] = fileIndex_.try_emplace(std::string(path), files_.size());
    if (isNew) {
        files_.push_back({place->first, size, 1});
    } else {
        files_[place->second].size = size;
        ++files_[place->second].writes;
    }
}

void RunReport::fileFailed(std::string_view path, std::string_view why) {
    failedFiles_.push_back({std::string(path), 0, 1});
    failures_.emplace_back(why);
    ended(RunOutcome::Failed, std::string(path) + ": " + std::string(why));
}

void RunReport::fileUnfinished(std::string_view path, std::string_view why) {
    failedFiles_.push_back({std::string(path), 0, 1});
    failures_.emplace_back(why);
    if (unfinished_.empty()) {
        unfinished_ = std::string(path) + ": " + std::string(why);
    }
}

void RunReport::fileRefused(std::string_view path, std::string_view why) {
    failedFiles_.push_back({std::string(path), 0, 1});
    failures_.emplace_back(why);
    if (refused_.empty()) {
        refused_ = std::string(path) + ": " + std::string(why);
    }
}

void RunReport::fileRemoved(std::string_view path) {
    const auto place = fileIndex_.find(std::string(path));
    if (place == fileIndex_.end()) {
        return;
    }
    files_.erase(files_.begin() + static_cast<std::ptrdiff_t>(place->second));
    fileIndex_.clear();
    for (std::size_t i = 0; i < files_.size(); ++i) {
        fileIndex_.emplace(files_[i].path, i);
    }
}

void RunReport::passedOver(std::int64_t id, std::string_view name, std::string_view what, std::string_view why) {
    passed_.push_back({id, std::string(name), std::string(what), std::string(why)});
}

void RunReport::coloured(std::int64_t id, int color) {
    colours_.push_back({id, color});
}

void RunReport::ended(RunOutcome outcome, std::string_view why) {
    if (severity(outcome) > severity(outcome_)) {
        outcome_ = outcome;
        reason_ = why;
    }
}

RunOutcome RunReport::outcome() const {
    if (!refused_.empty()) {
        return RunOutcome::Refused;
    }
    return outcome_ == RunOutcome::Done && !unfinished_.empty() ? RunOutcome::Failed : outcome_;
}

const std::string& RunReport::reason() const {
    if (!refused_.empty()) {
        return refused_;
    }
    return outcome_ == RunOutcome::Done ? unfinished_ : reason_;
}

void RunReport::clear() {
    *this = RunReport();
}

RunReport& runReport() {
    static RunReport report;
    return report;
}

}  // namespace tolmar
