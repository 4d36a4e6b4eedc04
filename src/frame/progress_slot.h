// The progress object of the command in hand, in a slot for the length of the command.
#pragma once

#include "platform/progress.h"

// Null outside a command.
modeling::NamedPipeProgressStatus*& progressSlot();

// part / whole * 100 in single precision, truncated; 0 for an empty whole.
int percentage(std::size_t part, std::size_t whole);

// Fetches the progress object into the slot; closes it and empties the slot at the end, on every way out.
class ProgressScope {
public:
    ProgressScope();
    ~ProgressScope();
    ProgressScope(const ProgressScope&) = delete;
    ProgressScope& operator=(const ProgressScope&) = delete;
    // Closes the dialog now.
    void close();
};

// Adds bars 1..count with empty labels for an inner loop, and removes them at its end unless an exception passes.
class InnerBars {
public:
    explicit InnerBars(int count);
    ~InnerBars() noexcept(false);
    InnerBars(const InnerBars&) = delete;
    InnerBars& operator=(const InnerBars&) = delete;

private:
    int count_;
    int pending_;
};
