// The bars of OBMOUT: bar 0 for the whole, then one for each level below the one at which the dialog was opened, down
// to the objects of a manager.
#pragma once

#include <cstddef>

namespace pmodel {

class ObmProgress {
public:
    // Fetches the progress object into the module's slot.
    void fetch();
    // Opens the dialog with a number of additional bars, unless it is open.
    void open(const char* title, int bars);
    int barCount() const { return barCount_; }
    void setText(const char* text, int bar);
    // part / whole * 100, truncated.
    void setBar(std::size_t part, std::size_t whole, int bar);
    // Closes an open dialog and empties the slot.
    void finish();

private:
    int barCount_ = 0;
};

}  // namespace pmodel
