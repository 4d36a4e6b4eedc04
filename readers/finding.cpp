#include "readers/finding.h"

#include <cstdio>

namespace readers {

void note(Findings& findings, std::string place, std::string text) {
    if (findings.size() < mostFindings) {
        findings.push_back({std::move(place), std::move(text)});
    }
}

std::string atByte(std::uint64_t offset) {
    char text[32];
    std::snprintf(text, sizeof text, "at 0x%llX", static_cast<unsigned long long>(offset));
    return text;
}

std::string atLine(std::size_t line) {
    return "line " + std::to_string(line);
}

std::string atItem(const char* array, std::size_t index) {
    return std::string(array) + "[" + std::to_string(index) + "]";
}

std::string sentence(const Finding& finding) {
    return finding.place.empty() ? finding.text : finding.place + ": " + finding.text;
}

}  // namespace readers
