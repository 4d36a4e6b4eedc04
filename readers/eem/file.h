// An EEM file read back. Numbers have their least significant byte first; `int` has 32 bits, `double` 64:
//
//   model file = { object } trailer
//   paper file = string "PID"  int 1  { paper } trailer
//   trailer    = string "ENDE"
//   object     = int end  string "NA:"  string name  string "OBJID:"  int64 id  string "GEO:"  int n  n * record
//   paper      = int end  string "PNA:" string name  string "OBJID:"  int64 id
//   record     = int code  fields  int handedness  int colour
//              | int 20  point start  point end  int material
//   list       = int n  n * ( int kind  point )
//   string     = int n  n bytes in the code page
//
// `end` is the offset of the first byte behind the block. docs/eem-format.md tells what the fields of a code mean; here
// they are kept apart by type, each in the order of the file. Points are world millimetres.
#pragma once

#include "readers/finding.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace readers::eem {

inline constexpr std::int32_t codeOfLine = 20;
// The bits of a colour word above red, green and blue, and what they hold for an obstruction.
inline constexpr std::uint32_t alphaMask = 0xFF000000;
inline constexpr std::uint32_t alphaOfObstruction = 0x33000000;

struct Vertex {
    std::int32_t kind = 0;
    std::array<double, 3> point{};
};

struct Record {
    std::int32_t code = 0;
    std::vector<double> numbers;             // points and directions are three numbers
    std::vector<std::int32_t> integers;      // but for counts and kinds
    std::vector<std::vector<Vertex>> lists;  // of an extrusion the outline, then the holes
    std::int32_t handedness = 0;             // 0 for a line
    std::uint32_t color = 0;                 // colour word; the material code of a line
    std::uint64_t offset = 0;
};

struct Block {
    std::uint64_t offset = 0;
    std::uint64_t end = 0;
    std::string name;  // in the code page
    std::int64_t id = 0;
    std::vector<Record> records;  // none in a block of a paper
};

struct FileEnds {
    bool isPapers = false;
    bool isWhole = false;  // the trailer was reached
};

struct EemContent : FileEnds {
    std::vector<Block> blocks;
};

using BlockVisitor = std::function<void(Block&& block)>;

// Block after block. A block with a fault is read as far as it makes sense, and the reading goes on at the block's end.
// A fault in the chain of blocks ends it.
FileEnds readBlocks(std::string_view bytes, const BlockVisitor& visit, Findings& findings);
// All of them.
EemContent readEem(std::string_view bytes, Findings& findings);

}  // namespace readers::eem
