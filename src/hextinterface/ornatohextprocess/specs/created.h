// What the specification tables have written, for those who refer to it.
#pragma once

#include <set>
#include <string>
#include <unordered_set>

// Names of the specification rows that have been written; the row writer of pipe components empties it. Module-wide.
std::unordered_set<std::string>& createdSpcos();
// Names of the insulation specifications that have been written. Module-wide; grows as long as the module is loaded.
std::set<std::string, std::less<>>& createdIspecs();
