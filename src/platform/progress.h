// The platform's progress dialogs. Both are process-wide; any operation may raise ProgressCancelException.
#pragma once

#include <exception>

// Raised by a progress object when the user has pressed Cancel.
class ProgressCancelException : public std::exception {
public:
    ProgressCancelException();
    ~ProgressCancelException() override;
    const char* what() const noexcept override;
};

namespace modeling {

// A dialog with a main text and numbered bars: bar 0 always, further ones added and removed. Texts are in the code
// page.
class NamedPipeProgressStatus {
public:
    virtual ~NamedPipeProgressStatus() = default;
    virtual void setBarText(const char* text, int bar) = 0;
    virtual void setText(const char* text) = 0;
    virtual void openProgress(int range, const char* text, int extraBars) = 0;
    virtual void close() = 0;
    // `value` is a percentage.
    virtual void setBar(int value, int bar) = 0;
    virtual void addBar() = 0;
    virtual void removeBar() = 0;
    virtual bool isProgressOpen() = 0;
};

// A plain dialog with one bar.
class GeneralProgressStatus {
public:
    virtual ~GeneralProgressStatus() = default;
    virtual void open(int steps, const char* title) = 0;
    virtual void step() = 0;
    virtual void close() = 0;
};

}  // namespace modeling

namespace hxcad {
modeling::NamedPipeProgressStatus* getNamedPipeProgressDialog();
// Null when there is no dialog to show.
modeling::GeneralProgressStatus* getProgressDialog();
}  // namespace hxcad
