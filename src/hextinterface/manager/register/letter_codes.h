// Short letter codes that stand for attribute values in names.
#pragma once

#include "hextinterface/manager/register/numbered_texts.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace naming {

// A counter of fixed width over the 52 letters A..Z, a..z, in that order; starts at all "A".
class LetterCode {
public:
    static constexpr int maxWidth = 3;

    explicit LetterCode(int width) : width_(width) { letters_.fill('A'); }
    // Counts the rightmost letter up; "z" becomes "A" and carries to the left. OutOfRange, and no change, when the
    // leftmost letter would carry.
    void increment();
    std::string_view text() const { return {letters_.data(), static_cast<std::size_t>(width_)}; }

private:
    std::array<char, maxWidth> letters_;
    int width_;
};

// Gives each distinct value the next code. All "A" is never given.
class CodeTable {
public:
    explicit CodeTable(int width) : last_(width) {}
    // The value's code; the empty text is a value like any other. ExportException "%s类型数超出预定范围！" when all
    // codes are taken. The view stays valid until the next call.
    std::string_view code(std::string_view value);
    // Appends the code, or all "_" for the empty value.
    void append(std::string& name, std::string_view value);

private:
    TextTable values_;
    std::vector<LetterCode> codes_;  // by number of the value
    LetterCode last_;
};

// One code table for each attribute that names spell in letters. Shared by components, attachments and bolts of a run.
struct CodeTables {
    CodeTable standard{2};
    CodeTable item{2};
    CodeTable itype{2};
    CodeTable end{1};
    CodeTable size{2};
    CodeTable rating{1};
    CodeTable sch{2};
    CodeTable thick{2};
    CodeTable spec{2};
    CodeTable radius{2};
    CodeTable angle{2};
    CodeTable nozzle{3};
};

// The spelling of a counter of at least 1 in the letters A..Z as digits: 1 is "B", 26 is "BA". At most 8 letters.
std::string letters(std::uint64_t counter);

}  // namespace naming
