// A piping component file as records: a line that begins in the first column opens a record, lines that begin with a
// blank are its members.
//
//     PIPELINE-REFERENCE /100-B-1         keyword, blanks, a value up to the end of the line
//         PIPING-SPEC A3B                 a member: the same behind blanks or a tab
//
// Keywords are known in any letter case. Empty lines part nothing. Nothing is dropped here: what a keyword means is for
// those who read records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace plant::pcf {

struct Member {
    std::string_view key;    // upper case
    std::string_view value;  // without blanks around it
    std::uint32_t line = 0;  // from 1
};

struct Record {
    std::string_view key;
    std::string_view value;
    std::uint32_t line = 0;
    std::vector<Member> members;

    // The first member of a key; null when there is none.
    const Member* find(std::string_view key) const;
    // Its value; empty when there is none.
    std::string_view valueOf(std::string_view key) const;
};

// Views into the text, whose keywords become upper case; it must outlive the records. A member before any record gets a
// record without a keyword.
std::vector<Record> readRecords(std::string& utf8);

}  // namespace plant::pcf
