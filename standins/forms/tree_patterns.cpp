#include "forms/tree_patterns.h"

#include "tolmar/code_page.h"

#include <algorithm>

namespace {

// Stands for "*" in a parsed part; no character of a label.
constexpr char16_t star = 0xFFFF;

// The parts of a pattern between slashes, escapes resolved. One slash at either end does not count; other empty parts
// are empty labels. No parts for no pattern.
std::vector<std::u16string> partsOf(const std::string& pattern) {
    std::vector<std::u16string> parts(1);
    bool escaped = false;
    for (const char16_t unit : tolmar::utf8ToWide(pattern)) {
        if (escaped) {
            parts.back() += unit;
            escaped = false;
        } else if (unit == u'\\') {
            escaped = true;
        } else if (unit == u'/') {
            parts.emplace_back();
        } else {
            parts.back() += unit == u'*' ? star : unit;
        }
    }
    if (parts.size() > 1 && parts.front().empty()) {
        parts.erase(parts.begin());
    }
    if (parts.size() > 1 && parts.back().empty()) {
        parts.pop_back();
    }
    return pattern.empty() ? std::vector<std::u16string>() : parts;
}

bool isDeep(const std::u16string& part) {
    return part.size() == 2 && part[0] == star && part[1] == star;
}

// Walks the text once; a mismatch goes back to the last star, which then takes one character more.
bool globMatches(std::u16string_view glob, std::u16string_view text) {
    std::size_t g = 0;
    std::size_t t = 0;
    std::size_t lastStar = std::u16string_view::npos;
    std::size_t resume = 0;
    while (t < text.size()) {
        if (g < glob.size() && glob[g] == star) {
            lastStar = g++;
            resume = t;
        } else if (g < glob.size() && glob[g] == text[t]) {
            ++g;
            ++t;
        } else if (lastStar != std::u16string_view::npos) {
            g = lastStar + 1;
            t = ++resume;
        } else {
            return false;
        }
    }
    return std::all_of(glob.begin() + static_cast<std::ptrdiff_t>(g), glob.end(), [](char16_t u) { return u == star; });
}

}  // namespace

TreePatterns::TreePatterns(const std::vector<std::string>& patterns) {
    addNode(false);
    for (std::uint32_t number = 0; number < patterns.size(); ++number) {
        addPattern(patterns[number], number);
    }
}

TreePatterns::State TreePatterns::addNode(bool loops) {
    nodes_.emplace_back().loops = loops;
    return static_cast<State>(nodes_.size() - 1);
}

void TreePatterns::addPattern(const std::string& pattern, std::uint32_t number) {
    const std::vector<std::u16string> parts = partsOf(pattern);
    State at = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (!isDeep(parts[i])) {
            at = childFor(at, parts[i]);
            continue;
        }
        State Node::*const link = i + 1 == parts.size() ? &Node::anyBelow : &Node::anyDepth;
        if (nodes_[at].*link == none) {
            const State deep = addNode(true);
            nodes_[at].*link = deep;
        }
        at = nodes_[at].*link;
    }
    if (at != 0) {
        nodes_[at].accepts.push_back(number);
    }
}

TreePatterns::State TreePatterns::childFor(State from, const std::u16string& part) {
    if (part.find(star) == std::u16string::npos) {
        const auto [place, isNew] = nodes_[from].literals.try_emplace(part, static_cast<State>(nodes_.size()));
        return isNew ? addNode(false) : place->second;
    }
    for (const auto& [glob, state] : nodes_[from].globs) {
        if (glob == part) {
            return state;
        }
    }
    const State child = addNode(false);
    nodes_[from].globs.emplace_back(part, child);
    return child;
}

void TreePatterns::reach(std::vector<State>& states, State state) {
    while (state != none && nodes_[state].lastStep != steps_) {
        nodes_[state].lastStep = steps_;
        states.push_back(state);
        state = nodes_[state].anyDepth;
    }
}

void TreePatterns::start(std::vector<State>& states) {
    ++steps_;
    reach(states, 0);
}

void TreePatterns::step(std::vector<State>& states, std::size_t fromBegin, std::size_t fromEnd,
                        std::u16string_view label) {
    ++steps_;
    for (std::size_t i = fromBegin; i < fromEnd; ++i) {
        const State from = states[i];
        const Node& node = nodes_[from];
        if (node.loops) {
            reach(states, from);
        }
        const auto literal = node.literals.find(label);
        if (literal != node.literals.end()) {
            reach(states, literal->second);
        }
        for (const auto& [glob, state] : node.globs) {
            if (globMatches(glob, label)) {
                reach(states, state);
            }
        }
        reach(states, node.anyBelow);
    }
}
