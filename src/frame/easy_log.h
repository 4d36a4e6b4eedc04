// A small logger: one line a message with the local time behind it. The file is opened and closed for each line, so it
// can be read at any moment and nothing is lost; it is for notes, not for every object.
#pragma once

#include <string>

namespace hextlog {

class EasyLog {
public:
    EasyLog() = default;
    // See setTarget.
    EasyLog(const char* path, bool truncateFirst);
    virtual ~EasyLog() = default;

    // `path` is in the code page; null leaves the object as it is. With `truncateFirst` the first line empties the
    // file.
    void setTarget(const char* path, bool truncateFirst);
    // printf rules. A file that cannot be opened loses the line without notice.
    void write(const char* format, ...) __attribute__((format(printf, 2, 3)));
    // One finished text.
    void writeText(const std::string& text);

private:
    std::string target_;
    std::string path_;  // of the target on this system; empty until the first line
    bool truncateFirst_ = false;
};

// The one log of the module. Lives from module load to unload.
EasyLog& exportLog();

}  // namespace hextlog
