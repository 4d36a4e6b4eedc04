// The composing of macro lines alone: what a run has written is taken apart into the texts and numbers that its lines
// were made of, and composed again through the module's own number appends, line buffer and text file. No model, names
// or geometry take part, so the time is that of the emission. A whole number is appended as the trimmed form of a
// double, as those of positions are; ports and sizes cost the module less.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

class LineReplay {
public:
    // Takes a file's bytes apart; lines end in CR LF. The text must outlive the object. Numbers stand behind a blank, a
    // bracket, a comma, a quote or at the beginning; quotes bound texts, as they do in the calls that made the line.
    explicit LineReplay(std::string_view text);
    // Composes all lines and writes them to a file; gives its size.
    std::uint64_t write(const std::filesystem::path& file) const;
    std::size_t numbers() const { return numbers_; }

private:
    enum class Kind : std::uint8_t { Text, Fixed, Trimmed, LineEnd };
    struct Piece {
        Kind kind;
        std::uint32_t size = 0;  // of a text
        union {
            const char* text;
            double number;
        };
    };

    void takeLine(std::string_view line);
    void addText(std::string_view text);
    bool addNumber(std::string_view text);
    static void append(std::string& line, const Piece& piece);

    std::vector<Piece> pieces_;
    std::size_t numbers_ = 0;
};
