// A first look at an RVM file: its head, its colours, and the tree of its groups as offsets. The bodies of primitives
// are not looked at. The whole chain of chunks is checked here, so that a file that is cut off or out of step is
// refused before anything of it is told.
#pragma once

#include "sources/report.h"
#include "sources/rvm/chunks.h"
#include "sources/rvm/colors.h"

#include <string>
#include <string_view>
#include <vector>

namespace plant::rvm {

// Groups stand in groups to this depth; files of real plants know some ten levels.
inline constexpr std::size_t deepestGroup = 500;

inline constexpr std::uint32_t noGroup = 0xFFFFFFFF;

// Offsets have 32 bits, as the format has them.
struct Group {
    std::uint32_t at;   // of its CNTB
    std::uint32_t end;  // behind its CNTE
    std::uint32_t parent = noGroup;
    std::uint32_t son = noGroup;
    std::uint32_t brother = noGroup;
    std::uint32_t primitives = 0;              // its own
    std::uint8_t obstructionTransparency = 0;  // of the first of its obstructions and insulations that has one
};

struct GroupFacts {
    std::string_view name;  // bytes as they stand
    std::uint32_t material = 0;
    std::uint8_t transparency = 0;  // 0 to 100
    std::uint64_t contents = 0;     // offset of the first chunk in it
};

struct Survey {
    bool isOwn = false;  // written by RVMOUT: a dialect of its own
    std::string_view information, note, date, user, encoding, project, model;
    ColorTable colors;
    std::vector<Group> groups;  // parents before sons, brothers in the order of the file
    std::uint32_t firstTop = noGroup;
};

bool isRvm(std::string_view firstBytes);
// Throws a Refusal with the offset. Tells the report what it passes over; `file` is the name for places.
Survey surveyRvm(std::string_view bytes, std::string_view file, SourceReport& report);
GroupFacts groupFacts(std::string_view bytes, const Group& group);

}  // namespace plant::rvm
