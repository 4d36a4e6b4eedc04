// Reader of RVM files and their attribute files that trusts nothing: what a receiver would stumble over becomes a
// finding. It shares no code with the writer.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rvmcheck {

// Something wrong: `place` is a byte offset ("at 0x1F4") or a line ("line 17").
struct Finding {
    std::string place;
    std::string text;
};
using Findings = std::vector<Finding>;

inline constexpr std::uint32_t none = 0xFFFFFFFF;

struct Primitive {
    std::uint32_t kind = 0;
    bool isObstruction = false;
    std::array<float, 12> matrix{};
    std::array<float, 6> box{};
    std::array<float, 9> parameters{};  // kinds other than 11
    std::size_t parameterCount = 0;
    std::uint32_t triangles = 0;    // kind 11
    std::array<float, 6> extent{};  // of its vertices
    std::vector<float> facets{};    // 18 numbers a triangle, when they are kept
    std::uint64_t offset = 0;       // of the chunk
};

struct Group {
    std::string name;
    std::array<float, 3> translation{};
    std::uint32_t material = 0;
    std::uint32_t parent = none;
    std::vector<std::uint32_t> children;    // indexes of groups
    std::vector<std::uint32_t> primitives;  // indexes of primitives
    std::uint64_t offset = 0;
};

struct RvmContent {
    std::array<std::string, 5> headTexts;  // info, note, date, user, encoding
    std::string project;
    std::string database;
    std::vector<Group> groups;  // parents before children
    std::vector<Primitive> primitives;
    std::vector<std::uint32_t> tops;  // groups without a parent
    bool isWhole = false;             // END: was reached

    std::map<std::uint32_t, std::size_t> kinds() const;
    // Names from the top down, separated by "/".
    std::string pathOf(std::uint32_t group) const;
};

// Reads as far as it makes sense; a fault in the chain of chunks ends it. `keepFacets` keeps the triangles, too.
RvmContent readRvm(std::string_view bytes, Findings& findings, bool keepFacets = false);

struct Element {
    std::string name;
    std::size_t level = 0;  // 0 root, 1 site, 2 zone, 3 manager, 4 object
    std::uint32_t parent = none;
    std::vector<std::uint32_t> children;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::size_t line = 0;
    bool isClosed = false;
};

struct AttributeContent {
    std::string project;
    std::string database;
    std::vector<Element> elements;  // parents before children
    // The root has its END: the form for strict readers.
    bool isRootClosed() const { return !elements.empty() && elements.front().isClosed; }
};

AttributeContent readAttributes(std::string_view bytes, Findings& findings);

// That both files hold the same tree: every element has its group, every group of an object its element, in the same
// order.
void checkPair(const RvmContent& rvm, const AttributeContent& text, Findings& findings);
// What the form for strict readers promises beyond that.
void checkStrictForm(const RvmContent& rvm, const AttributeContent& text, Findings& findings);

bool isUtf8(std::string_view text);

}  // namespace rvmcheck
