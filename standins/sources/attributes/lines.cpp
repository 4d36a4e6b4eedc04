#include "sources/attributes/lines.h"

#include "sources/text_decoder.h"

namespace plant::attributes {

namespace {

// Most lines have one attribute: the first character of the separator tells at once that there is no other.
std::size_t separatorIn(std::string_view line, const Syntax& syntax) {
    if (syntax.separator.empty() || std::memchr(line.data(), syntax.separator.front(), line.size()) == nullptr) {
        return std::string_view::npos;
    }
    return line.find(syntax.separator);
}

bool startsBlock(std::string_view line, const Syntax& syntax) {
    const std::size_t size = syntax.start.size();
    return line.starts_with(syntax.start) && (line.size() == size || line[size] == ' ' || line[size] == '\t');
}

}  // namespace

Line readLine(std::string_view line, const Syntax& syntax) {
    line = trimmed(line);
    if (line.empty()) {
        return {LineKind::Empty, line};
    }
    if (line.find(syntax.assign) != std::string_view::npos) {
        return {LineKind::Attributes, line};
    }
    if (line == syntax.end) {
        return {LineKind::End, line};
    }
    if (startsBlock(line, syntax)) {
        return {LineKind::Start, trimmed(line.substr(syntax.start.size()))};
    }
    return {LineKind::Unknown, line};
}

std::optional<KeyValue> takeAttribute(std::string_view& line, const Syntax& syntax) {
    if (line.empty()) {
        return std::nullopt;
    }
    const std::size_t separator = separatorIn(line, syntax);
    const std::string_view part = trimmed(line.substr(0, separator));
    line.remove_prefix(separator == std::string_view::npos ? line.size() : separator + syntax.separator.size());
    const std::size_t assign = part.find(syntax.assign);
    if (assign == std::string_view::npos) {
        return KeyValue{{}, part};
    }
    return KeyValue{trimmed(part.substr(0, assign)), trimmed(part.substr(assign + syntax.assign.size()))};
}

std::string_view unquoted(std::string_view value) {
    const bool isQuoted =
        value.size() >= 2 && (value.front() == '\'' || value.front() == '"') && value.back() == value.front();
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace plant::attributes
