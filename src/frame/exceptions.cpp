#include "frame/exceptions.h"

std::string fillPlaceholder(const std::string& format, const std::string& value) {
    constexpr std::string_view mark = "%1%";
    std::string result;
    std::size_t from = 0;
    for (std::size_t at; (at = format.find(mark, from)) != std::string::npos; from = at + mark.size()) {
        result.append(format, from, at - from);
        result += value;
    }
    return result.append(format, from, std::string::npos);
}
