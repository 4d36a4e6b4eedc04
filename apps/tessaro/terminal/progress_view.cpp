#include "tessaro/terminal/progress_view.h"

#include "tessaro/terminal/json_text.h"
#include "tolmar/code_page.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fmt/core.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds barInterval{80};
constexpr std::chrono::milliseconds lineInterval{500};
constexpr int barCells = 24;
constexpr int plainStep = 10;

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

int terminalColumns() {
    winsize size{};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

// As much of the text as fits; characters of the wide scripts take two columns.
std::string fitting(const std::string& utf8, int columns) {
    std::size_t at = 0;
    while (at < utf8.size()) {
        const auto lead = static_cast<unsigned char>(utf8[at]);
        const std::size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        const int width = lead < 0x20 ? 0 : lead >= 0xE2 ? 2 : 1;
        if (columns < width) {
            break;
        }
        columns -= width;
        at += size;
    }
    return utf8.substr(0, at);
}

std::string headline(const tolmar::ProgressState& state) {
    std::string text = tolmar::toUtf8(state.title);
    const std::string more = tolmar::toUtf8(state.text);
    if (!more.empty()) {
        text += text.empty() ? more : " " + more;
    }
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
    return text;
}

int mainValue(const tolmar::ProgressState& state) {
    return state.bars.empty() ? 0 : state.bars[0].value;
}

}  // namespace

ProgressStyle automaticProgressStyle(bool quiet) {
    if (quiet || isSet("CI")) {
        return ProgressStyle::None;
    }
    const char* terminal = std::getenv("TERM");
    const bool redraws = ::isatty(STDERR_FILENO) == 1 && terminal != nullptr && std::strcmp(terminal, "dumb") != 0;
    return redraws ? ProgressStyle::Bar : ProgressStyle::Plain;
}

std::string ProgressView::draw(const tolmar::ProgressState& state) {
    switch (style_) {
    case ProgressStyle::None:
        return {};
    case ProgressStyle::Bar:
        return bar(state);
    case ProgressStyle::Plain:
        return plain(state);
    case ProgressStyle::Json:
        return json(state);
    }
    return {};
}

std::string ProgressView::erase() {
    if (!drawn_) {
        return {};
    }
    drawn_ = false;
    return "\r\x1b[K";
}

bool ProgressView::due(std::chrono::milliseconds interval) {
    const Clock::time_point now = Clock::now();
    if (now - last_ < interval) {
        return false;
    }
    last_ = now;
    return true;
}

std::string ProgressView::bar(const tolmar::ProgressState& state) {
    if (!state.open) {
        return erase();
    }
    if (!due(barInterval)) {
        return {};
    }
    const int value = mainValue(state);
    const int filled = value * barCells / 100;
    std::string line = fmt::format("[{:#>{}}{:->{}}] {:3} %", "", filled, "", barCells - filled, value);
    for (std::size_t i = 1; i < state.bars.size(); ++i) {
        line += fmt::format(" |{:3} %", state.bars[i].value);
    }
    drawn_ = true;
    return "\r\x1b[K" + fitting(line + "  " + headline(state), terminalColumns() - 1);
}

// A line for every tenth of the way and for a new text, but not for texts that change all the time.
std::string ProgressView::plain(const tolmar::ProgressState& state) {
    const std::string text = headline(state);
    const int value = mainValue(state);
    const bool further = state.open && value / plainStep != lastValue_ / plainStep;
    if (!state.open) {
        lastText_.clear();
        lastValue_ = -1;
        return {};
    }
    if (!further && (text == lastText_ || !due(lineInterval))) {
        return {};
    }
    lastText_ = text;
    lastValue_ = value;
    return fmt::format("{:3} %  {}\n", value, text);
}

std::string ProgressView::json(const tolmar::ProgressState& state) {
    const std::string text = headline(state);
    const int value = state.open ? mainValue(state) : -1;
    if (text == lastText_ && value == lastValue_ && !due(barInterval)) {
        return {};
    }
    lastText_ = text;
    lastValue_ = value;
    std::string line = "{\"open\":" + std::string(state.open ? "true" : "false") + ",\"title\":";
    appendJsonString(line, tolmar::toUtf8(state.title));
    line += ",\"text\":";
    appendJsonString(line, tolmar::toUtf8(state.text));
    line += ",\"bars\":[";
    for (const tolmar::ProgressBar& shown : state.bars) {
        line += &shown == state.bars.data() ? "{\"text\":" : ",{\"text\":";
        appendJsonString(line, tolmar::toUtf8(shown.text));
        line += ",\"value\":";
        appendJsonNumber(line, shown.value);
        line += "}";
    }
    return line + "]}\n";
}
