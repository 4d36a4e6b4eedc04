// From what the plant model knows of a component to the two codes that say what it is: the Skey, and by it the GType.
#pragma once

#include "hextinterface/manager/register/numbered_texts.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace naming {

// item, itype, end1 to end4
using TypeFields = std::array<std::string_view, 6>;
// The six fields with a separator between them.
std::string joined(const TypeFields& fields, char separator);

// Rows of six fields and an Skey. "##" in a row matches anything.
class SkeyTable {
public:
    void clear() { rows_.clear(); }
    // A row of the configuration: seven fields joined by "|". Empty rows, those that begin with ";" and those of fewer
    // fields are passed over. A later row takes the place of one with equal fields.
    void addRow(std::string_view row);
    // The Skey of the row that equals the query, else of the one with the highest score, of equal ones the first in
    // field order; null when no row matches.
    const std::string* find(const TypeFields& query) const;

private:
    using Key = std::array<std::string, 6>;
    struct FieldOrder {
        using is_transparent = void;
        template <typename A, typename B>
        bool operator()(const A& a, const B& b) const {
            return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), std::less<>());
        }
    };
    using Rows = std::map<Key, std::string, FieldOrder>;
    struct Best;

    void scoreRowsOf(std::string_view item, const TypeFields& query, Best& best) const;

    Rows rows_;
};

// Skey patterns and their GTypes. "#" in a pattern matches any character, at its end any number of them.
class GtypeTable {
public:
    void clear() { gtypes_.clear(); }
    void add(std::string_view pattern, std::string_view gtype) { gtypes_[std::string(pattern)] = gtype; }
    // The entry that equals the Skey, else the one with the highest score, of equal ones the first in byte order; null
    // when none scores 1 or more.
    const std::string* find(std::string_view skey) const;

private:
    std::map<std::string, std::string, std::less<>> gtypes_;
};

// Both tables as the project configuration gives them, what was found, and what was not.
class TypeMapping {
public:
    // Each reads the project configuration; its exceptions pass.
    void loadSkeys();
    void loadGtypes();
    // Empty when there is none. Each such call adds a line to the export log.
    std::string skeyOf(const TypeFields& fields);
    std::string gtypeOf(const TypeFields& fields);

    const std::set<std::string>& lostSkeys() const { return lostSkeys_; }
    const std::set<std::string>& lostGtypes() const { return lostGtypes_; }

private:
    // Results by query, null for a lost one.
    struct Answers {
        TextTable queries;
        std::vector<const std::string*> results;
    };

    SkeyTable skeys_;
    GtypeTable gtypes_;
    Answers skeyAnswers_, gtypeAnswers_;
    std::set<std::string> lostSkeys_, lostGtypes_;
};

}  // namespace naming
