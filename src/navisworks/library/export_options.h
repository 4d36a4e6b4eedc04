// What an export reads once at its start.
#pragma once

namespace nv {

struct Options {
    bool expandPipeRuns = false;   // pipelines open into their runs
    bool sortsManagers = false;    // the script orders the managers of a zone or directory
    bool gridsAsGeometry = false;  // a grid goes out as ordinary geometry rather than as a grid system
    bool withWelds = false;        // welds are written
    bool keepsWeldText = false;    // the text of a weld stays in its shape
    // Whether there is a script to ask. Without one the answers are known, and a call for each object is saved.
    bool asksNames = true;
    bool asksProperties = true;
};

// `isScriptLoaded`: the script came up at the start of the command.
Options readOptions(bool isScriptLoaded);

}  // namespace nv
