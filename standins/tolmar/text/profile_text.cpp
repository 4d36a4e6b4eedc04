#include "tolmar/text/profile_text.h"

#include "tolmar/case_fold.h"

namespace tolmar {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks(" \t\r\n\v\f\0", 7);
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

enum class LineKind { Other, Section, Value };
struct Line {
    LineKind kind = LineKind::Other;
    std::string_view name;
    // Place in the text; `next` is behind the line end, `end` before it.
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t next = 0;
};

Line lineAt(std::string_view text, std::size_t begin) {
    Line line;
    line.begin = begin;
    const std::size_t feed = text.find('\n', begin);
    line.next = feed == std::string_view::npos ? text.size() : feed + 1;
    line.end = feed == std::string_view::npos ? text.size() : feed;
    if (line.end > begin && text[line.end - 1] == '\r') {
        --line.end;
    }
    std::string_view content = text.substr(begin, line.end - begin);
    if (begin == 0 && content.substr(0, 3) == "\xEF\xBB\xBF") {
        content.remove_prefix(3);
    }
    content = trimmed(content);
    const std::size_t equals = content.find('=');
    if (content.empty() || content.front() == ';') {
        return line;
    }
    if (content.front() == '[') {
        line.kind = LineKind::Section;
        line.name = trimmed(content.substr(1, content.find(']') - 1));
    } else if (equals != std::string_view::npos) {
        line.kind = LineKind::Value;
        line.name = trimmed(content.substr(0, equals));
    }
    return line;
}

// Where a key stands, or, if it does not, where it belongs.
struct Place {
    bool sectionFound = false;
    bool keyFound = false;
    Line line;
    std::size_t insertAt = 0;
};

Place findKey(std::string_view text, std::string_view section, std::string_view key) {
    Place place;
    for (std::size_t at = 0; at < text.size();) {
        const Line line = lineAt(text, at);
        at = line.next;
        if (line.kind == LineKind::Section) {
            if (place.sectionFound) {
                return place;
            }
            place.sectionFound = equalWithoutAsciiCase(line.name, section);
        } else if (place.sectionFound && line.kind == LineKind::Value && equalWithoutAsciiCase(line.name, key)) {
            place.keyFound = true;
            place.line = line;
            return place;
        }
        if (place.sectionFound && line.end > line.begin) {
            place.insertAt = line.next;
        }
    }
    return place;
}

std::string_view lineEndOf(std::string_view text) {
    const std::size_t feed = text.find('\n');
    return feed != std::string_view::npos && (feed == 0 || text[feed - 1] != '\r') ? "\n" : "\r\n";
}

void appendPlain(std::string& out, std::string_view text) {
    for (const char c : text) {
        out += c == '\0' || c == '\r' ? ' ' : c;
    }
}

}  // namespace

std::string plainProfile(std::string_view text) {
    std::string plain;
    plain.reserve(text.size() + 1);
    for (std::size_t at = 0; at < text.size();) {
        const Line line = lineAt(text, at);
        at = line.next;
        if (line.kind == LineKind::Section) {
            appendPlain(plain.append("["), line.name);
            plain += "]\n";
        } else if (line.kind == LineKind::Value && !line.name.empty()) {
            const std::string_view content = text.substr(line.begin, line.end - line.begin);
            appendPlain(plain, line.name);
            appendPlain(plain, content.substr(content.find('=')));
            plain += '\n';
        }
    }
    return plain;
}

std::string withProfileValue(std::string_view text, std::string_view section, std::string_view key,
                             std::optional<std::string_view> value) {
    const Place place = findKey(text, section, key);
    std::string result(text);
    if (!value) {
        return place.keyFound ? result.erase(place.line.begin, place.line.next - place.line.begin) : result;
    }
    const std::string name(place.keyFound ? place.line.name : key);
    const std::string entry = name + "=" + std::string(*value);
    if (place.keyFound) {
        return result.replace(place.line.begin, place.line.end - place.line.begin, entry);
    }
    const std::string lineEnd(lineEndOf(text));
    std::size_t at = place.sectionFound ? place.insertAt : result.size();
    if (at > 0 && result[at - 1] != '\n') {
        result.insert(at, lineEnd);
        at += lineEnd.size();
    }
    std::string lines;
    if (!place.sectionFound) {
        lines.append("[").append(section).append("]").append(lineEnd);
    }
    return result.insert(at, lines.append(entry).append(lineEnd));
}

}  // namespace tolmar
