// What the platform says to the user: printing on the command line, error boxes.
#include "platform/hxcom.h"
#include "tolmar/host_ui.h"
#include "tolmar/text.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

namespace {

// The length prefix I64 of the platform's compiler, as "ll".
std::string withStandardLengths(const char* format) {
    std::string result;
    bool inConversion = false;
    for (const char* at = format; *at != '\0'; ++at) {
        if (inConversion && std::string_view(at).substr(0, 3) == "I64") {
            result += "ll";
            at += 2;
            inConversion = false;
            continue;
        }
        result += *at;
        const bool flagOrWidth = std::string_view("-+ #0123456789.*").find(*at) != std::string_view::npos;
        inConversion = inConversion ? flagOrWidth : *at == '%';
    }
    return result;
}

std::string formatted(const char* format, std::va_list arguments) {
    char shortText[512];
    std::va_list copy;
    va_copy(copy, arguments);
    const int length = std::vsnprintf(shortText, sizeof shortText, format, copy);
    va_end(copy);
    if (length < 0) {
        return format;
    }
    const auto size = static_cast<std::size_t>(length);
    if (size < sizeof shortText) {
        return {shortText, size};
    }
    std::string text(size, '\0');
    std::vsnprintf(text.data(), size + 1, format, arguments);
    return text;
}

void printLine(const char* text) {
    const std::string line = tolmar::textOrEmpty(text);
    tolmar::hostUi().print(line.empty() || line.back() != '\n' ? line + "\n" : line);
}

}  // namespace

void hxcad::hextPrintf(const char* format, ...) {
    if (format == nullptr) {
        return;
    }
    std::va_list arguments;
    va_start(arguments, format);
    const std::string text = std::strstr(format, "I64") == nullptr
                                 ? formatted(format, arguments)
                                 : formatted(withStandardLengths(format).c_str(), arguments);
    va_end(arguments);
    tolmar::hostUi().print(text);
}

void hxcom::errorMsg(const char* text) {
    tolmar::hostUi().messageBox(tolmar::textOrEmpty(text), "Error");
    printLine(text);
}

void hxcom::printMsg(const char* text) {
    printLine(text);
}

// Texts stand in the language in which they are written.
const char* hextGetText_callbk(const char* text) {
    return text;
}
