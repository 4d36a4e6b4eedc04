#include "sources/pcf/records.h"

#include "sources/text_decoder.h"

#include <algorithm>

namespace plant::pcf {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// Splits a line that is not empty into keyword and value.
Member readLine(char* start, std::size_t size, std::uint32_t line) {
    const std::string_view text = trimmed({start, size});
    const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
    char* key = start + (text.data() - start);
    std::transform(key, key + end, key, upper);
    return {text.substr(0, end), trimmed(text.substr(end)), line};
}

}  // namespace

const Member* Record::find(std::string_view wanted) const {
    const auto at = std::find_if(members.begin(), members.end(), [&](const Member& one) { return one.key == wanted; });
    return at == members.end() ? nullptr : &*at;
}

std::string_view Record::valueOf(std::string_view wanted) const {
    const Member* member = find(wanted);
    return member == nullptr ? std::string_view{} : member->value;
}

std::vector<Record> readRecords(std::string& utf8) {
    std::vector<Record> records;
    std::uint32_t number = 0;
    for (std::size_t at = 0; at < utf8.size();) {
        const std::size_t end = std::min(utf8.find('\n', at), utf8.size());
        ++number;
        if (!trimmed(std::string_view(utf8).substr(at, end - at)).empty()) {
            const Member line = readLine(utf8.data() + at, end - at, number);
            if (!isBlank(utf8[at])) {
                records.push_back({line.key, line.value, line.line, {}});
            } else if (records.empty()) {
                records.push_back({{}, {}, line.line, {line}});
            } else {
                records.back().members.push_back(line);
            }
        }
        at = end + 1;
    }
    return records;
}

}  // namespace plant::pcf
