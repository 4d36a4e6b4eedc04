// Switches of the exports, section "Control" of "plugins\nvoutplugins.ini" under the installation root.
//
// The file is read anew at each use and not cached: code that asks once an object reads the option once a command.
#pragma once

namespace options {

inline constexpr const char* outWeld = "outWeld";                // welds are exported
inline constexpr const char* outWeldText = "outWeldText";        // a weld keeps its text
inline constexpr const char* nvExpandBranch = "nvExpandBranch";  // pipelines open into their branches
inline constexpr const char* orAxiss = "orAxiss";                // a grid goes out as ordinary geometry
inline constexpr const char* sortNode = "sortNode";              // the script orders the managers of a zone
inline constexpr const char* clearCache = "clearCache";          // the attribute cache is cleared by the scope dialog
inline constexpr const char* rvmCompat = "rvmCompat";            // RVM files for readers that are stricter

}  // namespace options

// True when the option's value is exactly 1; a missing file, section or key is off.
bool optionOn(const char* key);
// Writes the option as "1" or "0"; false when the file could not be written.
bool setOption(const char* key, bool on);
