#include "tessaro/terminal/console.h"

namespace {

void put(std::FILE* file, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), file);
}

}  // namespace

Console::Console(Verbosity verbosity, ProgressStyle progress) : verbosity_(verbosity), view_(progress) {}

Console::~Console() {
    show(view_.erase());
    if (!screenAtLineStart_) {
        put(stderr, "\n");
    }
    closeLog();
}

bool Console::openLog(const std::filesystem::path& file) {
    log_ = std::fopen(file.c_str(), "wb");
    return log_ != nullptr;
}

bool Console::closeLog() {
    if (log_ == nullptr) {
        return true;
    }
    const bool bad = std::ferror(log_) != 0;
    const bool closed = std::fclose(log_) == 0;
    log_ = nullptr;
    return closed && !bad;
}

void Console::show(std::string_view utf8) {
    if (!utf8.empty()) {
        put(stderr, utf8);
    }
}

void Console::emit(std::string_view utf8, bool shown) {
    if (utf8.empty()) {
        return;
    }
    if (log_ != nullptr) {
        put(log_, utf8);
        logAtLineStart_ = utf8.back() == '\n';
    }
    if (!shown) {
        return;
    }
    show(view_.erase());
    if (borrowedLineEnd_ && utf8.front() == '\n') {
        utf8.remove_prefix(1);
    }
    borrowedLineEnd_ = false;
    show(utf8);
    screenAtLineStart_ = utf8.empty() || utf8.back() == '\n';
}

void Console::line(std::string_view utf8, bool shown) {
    if (log_ != nullptr && !logAtLineStart_) {
        put(log_, "\n");
        logAtLineStart_ = true;
    }
    if (shown && !screenAtLineStart_) {
        show(view_.erase());
        show("\n");
        screenAtLineStart_ = true;
    }
    borrowedLineEnd_ = false;
    emit(std::string(utf8) + "\n", shown);
}

void Console::print(std::string_view utf8) {
    emit(utf8, verbosity_ != Verbosity::Quiet);
}

void Console::note(std::string_view utf8) {
    line(utf8, verbosity_ != Verbosity::Quiet);
}

void Console::error(std::string_view utf8) {
    errors_.emplace(utf8);
    line("tessaro: " + std::string(utf8), true);
}

void Console::detail(std::string_view utf8) {
    line(utf8, verbosity_ == Verbosity::Verbose);
}

void Console::progress(const tolmar::ProgressState& state) {
    const std::string drawn = view_.draw(state);
    if (drawn.empty()) {
        return;
    }
    if (!screenAtLineStart_) {
        show("\n");
        screenAtLineStart_ = true;
        borrowedLineEnd_ = true;
    }
    show(drawn);
}
