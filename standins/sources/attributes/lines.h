// Lines of an attribute text, and the attributes of a line.
#pragma once

#include "sources/attributes/index.h"

#include <cstring>
#include <optional>
#include <string_view>

namespace plant::attributes {

// The line at `at` without its end, and `at` behind it.
inline std::string_view takeLine(std::string_view text, std::uint64_t& at) {
    const char* start = text.data() + at;
    const std::size_t left = text.size() - at;
    const void* end = std::memchr(start, '\n', left);
    const std::size_t size = end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - start) : left;
    at += size + (end != nullptr ? 1 : 0);
    return {start, size};
}

enum class LineKind : std::uint8_t { Empty, Start, End, Attributes, Unknown };
struct Line {
    LineKind kind;
    std::string_view text;  // without blanks around; of a start the name alone
};
Line readLine(std::string_view line, const Syntax& syntax);

struct KeyValue {
    std::string_view key;
    std::string_view value;  // as it stands, without blanks around
};
// Takes the next attribute off a line; a part without `assign` has no key and is its value. Nothing at the end.
std::optional<KeyValue> takeAttribute(std::string_view& line, const Syntax& syntax);
// Without the quotes around it; two quotes within are one.
std::string_view unquoted(std::string_view value);

// Calls visit(key, value, line number) for each attribute of a block, not of those in it.
template <typename Visit>
void eachAttribute(const Index& index, const Block& block, Visit&& visit) {
    std::uint64_t at = block.body;
    std::uint32_t number = block.line;
    std::uint32_t son = block.son;
    while (at < block.end) {
        if (son != noBlock && number + 1 == index.blocks()[son].line) {
            at = index.blocks()[son].end;
            number = index.blocks()[son].endLine;
            son = index.blocks()[son].brother;
            continue;
        }
        ++number;
        Line line = readLine(takeLine(index.text(), at), index.syntax());
        if (line.kind != LineKind::Attributes) {
            continue;
        }
        while (const std::optional<KeyValue> pair = takeAttribute(line.text, index.syntax())) {
            if (!pair->key.empty()) {
                visit(pair->key, pair->value, number);
            }
        }
    }
}

}  // namespace plant::attributes
