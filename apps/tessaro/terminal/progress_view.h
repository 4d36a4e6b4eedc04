// The progress dialog as text: a line that is redrawn, plain lines, or JSON lines.
#pragma once

#include "tolmar/host_ui.h"

#include <chrono>
#include <string>

enum class ProgressStyle { None, Bar, Plain, Json };

// What `auto` means here: a bar on a terminal, plain lines elsewhere, nothing when quiet or in a CI run.
ProgressStyle automaticProgressStyle(bool quiet);

class ProgressView {
public:
    explicit ProgressView(ProgressStyle style) : style_(style) {}
    // What to write for a new state; empty when nothing is due. Starts at the beginning of a line.
    std::string draw(const tolmar::ProgressState& state);
    // What to write to clear a drawn bar; empty when none stands.
    std::string erase();

private:
    using Clock = std::chrono::steady_clock;

    std::string bar(const tolmar::ProgressState& state);
    std::string plain(const tolmar::ProgressState& state);
    std::string json(const tolmar::ProgressState& state);
    bool due(std::chrono::milliseconds interval);

    ProgressStyle style_;
    bool drawn_ = false;
    std::string lastText_;
    int lastValue_ = -1;
    Clock::time_point last_;
};
