#include "line_replay.h"

#include "hextinterface/hextbasemethod/macro_text.h"
#include "tolmar/code_page.h"
#include "tolmar/file.h"

#include <charconv>

namespace {

constexpr std::string_view digits = "0123456789";
constexpr std::string_view beforeNumbers = " (,='";
constexpr std::string_view numberCharacters = "-.0123456789";

}  // namespace

LineReplay::LineReplay(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = text.find("\r\n");
        takeLine(text.substr(0, end));
        if (end == std::string_view::npos) {
            return;
        }
        pieces_.push_back({Kind::LineEnd, 0, {nullptr}});
        text.remove_prefix(end + 2);
    }
}

void LineReplay::addText(std::string_view text) {
    if (!text.empty()) {
        pieces_.push_back({Kind::Text, static_cast<std::uint32_t>(text.size()), {text.data()}});
    }
}

// A number is one only when an append gives its very characters again.
bool LineReplay::addNumber(std::string_view text) {
    Piece piece{Kind::Text, 0, {nullptr}};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), piece.number);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        return false;
    }
    for (const Kind kind : {Kind::Fixed, Kind::Trimmed}) {
        piece.kind = kind;
        std::string again;
        append(again, piece);
        if (again == text) {
            pieces_.push_back(piece);
            ++numbers_;
            return true;
        }
    }
    return false;
}

void LineReplay::takeLine(std::string_view line) {
    std::size_t start = 0;
    for (std::size_t at = 0; at < line.size();) {
        const bool mayBegin = at == 0 || beforeNumbers.find(line[at - 1]) != std::string_view::npos;
        const std::size_t end = std::min(line.find_first_not_of(numberCharacters, at), line.size());
        if (mayBegin && end > at && line.substr(at, end - at).find_first_of(digits) != std::string_view::npos) {
            const std::size_t pieces = pieces_.size();
            addText(line.substr(start, at - start));
            if (addNumber(line.substr(at, end - at))) {
                start = at = end;
                continue;
            }
            pieces_.resize(pieces);
        }
        const bool quote = line[at++] == '\'';
        if (quote) {
            addText(line.substr(start, at - start));
            start = at;
        }
    }
    addText(line.substr(start));
}

void LineReplay::append(std::string& line, const Piece& piece) {
    switch (piece.kind) {
    case Kind::Text:
        line.append(piece.text, piece.size);
        return;
    case Kind::Fixed:
        return appendFixed(line, piece.number);
    case Kind::Trimmed:
        return appendTrimmed(line, piece.number);
    case Kind::LineEnd:
        line += '\n';
        return;
    }
}

std::uint64_t LineReplay::write(const std::filesystem::path& path) const {
    tolmar::OutputFile file(tolmar::fromUtf8(path.string()), tolmar::FileMode::Text);
    std::string line;
    for (const Piece& piece : pieces_) {
        append(line, piece);
        if (piece.kind == Kind::LineEnd) {
            file.write(line);
            line.clear();
        }
    }
    file.write(line);
    const std::uint64_t size = file.size();
    return file.close() ? size : 0;
}
