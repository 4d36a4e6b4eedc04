// Reader of EEM files and the JSON files beside them that trusts nothing: what a receiver would stumble over becomes a
// finding. It shares no code with the writer.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace eemcheck {

// Something wrong: `place` is a byte offset ("at 0x1F4") or a member ("member 17").
struct Finding {
    std::string place;
    std::string text;
};
using Findings = std::vector<Finding>;

struct Vertex {
    std::int32_t kind = 0;
    std::array<double, 3> point{};
};

// A record, its fields apart by type, each in the order of the file.
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
    std::string name;
    std::int64_t id = 0;
    std::vector<Record> records;  // none in a block of a paper
};

struct EemContent {
    bool isPapers = false;
    std::vector<Block> blocks;
    bool isWhole = false;  // the trailer was reached
};

// A block with a fault is read as far as it makes sense, and the reading goes on at the block's end. A fault in the
// chain of blocks ends it.
EemContent readEem(std::string_view bytes, Findings& findings);

struct SideMember {
    std::string key;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string className;
    std::string name;
};

std::vector<SideMember> readSideFile(std::string_view bytes, Findings& findings);

// That both files tell of the same objects, by id and name, in the same order.
void checkPair(const EemContent& content, const std::vector<SideMember>& members, Findings& findings);

}  // namespace eemcheck
