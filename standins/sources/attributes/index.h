// The blocks of an attribute text as an index: where each stands, not what is in it. The text itself stays where it
// is, so that a text of any length takes a few dozen bytes a block.
//
//   first line   CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&
//   block        NEW name, lines, END; blocks stand in blocks
//   line         key := value, several parted by `sep`; blanks before key and value do not count
//
// A line with `:=` is an attribute, whatever its key is.
#pragma once

#include "sources/report.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace plant::attributes {

// The four words of the first line.
struct Syntax {
    std::string_view start = "NEW";
    std::string_view end = "END";
    std::string_view assign = ":=";
    std::string_view separator = "&end&";
};

inline constexpr std::uint32_t noBlock = 0xFFFFFFFF;
// Blocks stand in blocks to this depth.
inline constexpr std::size_t deepestBlock = 500;

struct Block {
    std::uint64_t name;  // offset
    std::uint64_t body;  // of the line behind its NEW
    std::uint64_t end;   // of the line behind its END
    std::uint32_t nameSize;
    std::uint32_t line;  // of its NEW, from 1
    std::uint32_t endLine;
    std::uint32_t parent = noBlock;
    std::uint32_t son = noBlock;
    std::uint32_t brother = noBlock;
    std::uint32_t attributes = 0;
    std::uint16_t type = 0;       // number of the text of TYPE, 0 for none
    std::uint16_t classType = 0;  // of Class, which RVMOUT's script writes
    std::uint16_t refSize = 0;    // of REF or REFNO
    std::uint64_t ref = 0;        // offset
};

class Index {
public:
    // Tells the report lines that are neither block nor attribute. Refuses blocks that stand too deep.
    Index(std::string_view text, std::string_view file, SourceReport& report);

    const Syntax& syntax() const { return syntax_; }
    std::string_view text() const { return text_; }
    const std::vector<Block>& blocks() const { return blocks_; }
    std::uint32_t firstTop() const { return firstTop_; }
    std::string_view nameOf(const Block& block) const { return text_.substr(block.name, block.nameSize); }
    std::string_view refOf(const Block& block) const { return text_.substr(block.ref, block.refSize); }
    // The text of TYPE in capitals, of Class as it stands; empty for none.
    const std::string& wordOf(std::uint16_t number) const { return words_[number]; }

private:
    friend class IndexBuilder;

    std::string_view text_;
    Syntax syntax_;
    std::vector<Block> blocks_;
    std::vector<std::string> words_{""};
    std::uint32_t firstTop_ = noBlock;
};

bool isAttributeText(std::string_view firstBytes);

}  // namespace plant::attributes
