// Many path patterns at once, as one machine that reads a path label by label. What a step costs depends on the
// patterns that still fit, not on how many there are.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

class TreePatterns {
public:
    // Patterns are UTF-8; they keep their number.
    explicit TreePatterns(const std::vector<std::string>& patterns);

    using State = std::uint32_t;
    // Adds to `states` those before the first label.
    void start(std::vector<State>& states);
    // Adds the states that a label leads to from those in the given range of the same list.
    void step(std::vector<State>& states, std::size_t fromBegin, std::size_t fromEnd, std::u16string_view label);
    // Numbers of the patterns whose path ends in a state.
    const std::vector<std::uint32_t>& accepted(State state) const { return nodes_[state].accepts; }

private:
    static constexpr State none = UINT32_MAX;
    struct LabelHash {
        using is_transparent = void;
        std::size_t operator()(std::u16string_view label) const { return std::hash<std::u16string_view>()(label); }
    };
    struct Node {
        std::unordered_map<std::u16string, State, LabelHash, std::equal_to<>> literals;
        std::vector<std::pair<std::u16string, State>> globs;
        std::vector<std::uint32_t> accepts;
        // By "**": the state for any number of labels ahead of the rest, and for all labels below.
        State anyDepth = none;
        State anyBelow = none;
        bool loops = false;
        std::uint64_t lastStep = 0;
    };

    void addPattern(const std::string& pattern, std::uint32_t number);
    State addNode(bool loops);
    State childFor(State from, const std::u16string& part);
    void reach(std::vector<State>& states, State state);

    std::vector<Node> nodes_;
    std::uint64_t steps_ = 0;
};
