#include "frame/easy_log.h"

#include "tolmar/paths.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace hextlog {

namespace {

// The text of a second is made once.
const std::string& timeText() {
    static std::time_t last = -1;
    static std::string text;
    const std::time_t now = std::time(nullptr);
    if (now != last) {
        std::tm local{};
        localtime_r(&now, &local);
        char buffer[128];
        text.assign(buffer, std::strftime(buffer, sizeof buffer, "\t[%Y.%m.%d %X %A]", &local));
        last = now;
    }
    return text;
}

std::string formatted(const char* format, std::va_list arguments) {
    std::va_list copy;
    va_copy(copy, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

}  // namespace

EasyLog::EasyLog(const char* path, bool truncateFirst) {
    setTarget(path, truncateFirst);
}

void EasyLog::setTarget(const char* path, bool truncateFirst) {
    if (path != nullptr) {
        target_ = path;
        path_.clear();
        truncateFirst_ = truncateFirst;
    }
}

void EasyLog::write(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const std::string text = formatted(format, arguments);
    va_end(arguments);
    writeText(text);
}

// The log goes past the run report: it is no output of a run, and losing a line is no failure.
void EasyLog::writeText(const std::string& text) {
    if (target_.empty()) {
        return;
    }
    if (path_.empty()) {
        path_ = tolmar::resolvePath(target_).string();
    }
    const int file =
        ::open(path_.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | (truncateFirst_ ? O_TRUNC : O_APPEND), 0666);
    if (file < 0) {
        return;
    }
    truncateFirst_ = false;
    std::string line;
    for (const std::string_view part : {std::string_view(text), std::string_view(timeText()), std::string_view("\n")}) {
        for (const char c : part) {
            if (c == '\n') {
                line += '\r';
            }
            line += c;
        }
    }
    for (std::size_t at = 0; at < line.size();) {
        const ssize_t written = ::write(file, line.data() + at, line.size() - at);
        if (written <= 0 && errno != EINTR) {
            break;
        }
        at += written > 0 ? static_cast<std::size_t>(written) : 0;
    }
    ::close(file);
}

EasyLog& exportLog() {
    static EasyLog log("\\temp\\log\\Trace.txt", false);
    return log;
}

}  // namespace hextlog
