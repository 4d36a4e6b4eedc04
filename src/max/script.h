// The script of MAXOUT, "plugins\maxoutplugins.lua" under the installation root, as the export asks it about one
// object.
//
// The script is compiled once for a command and then run in a fresh state for each object and each document, so that
// nothing it keeps reaches the next. What a call cannot give reads as false, no table, empty; a failed call, a missing
// function and entries of the wrong form go into the run report.
#pragma once

#include "platform/objects.h"
#include "platform/script.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace maxfile {

// The script of one command.
class MaxScript {
public:
    MaxScript();
    const CompiledScript& compiled() const { return compiled_; }
    // Tells the run report, once for each function.
    void reportMissing(const char* function);

private:
    CompiledScript compiled_;
    std::set<std::string> missing_;
};

struct PropertyRow {
    std::string_view key;
    std::string_view value;
    std::string_view description;
};

// One load of the script, for one object.
class ScriptedObject {
public:
    ScriptedObject(MaxScript& script, const HxDbSmrtlnEntity& object);

    // False when the script does not load; nothing else may be asked then.
    bool isLoaded() const { return isLoaded_; }

    bool isObjChangeMesh();
    // False when the object has no insertion point.
    bool getObjCenterPt(HxGePoint3D& center);
    // Entries that are no points are left out.
    std::vector<HxGePoint3D> changeObj4Spline();
    // At least 1, or 0 when the script gives no such number.
    int getPartNum();
    std::string getObjsize();
    // The rows in order; their texts live until `visit` returns. Entries that are no tables are left out.
    void maxOutdata(const std::function<void(const PropertyRow&)>& visit);

private:
    class Call;
    void report(const char* what, const std::string& why) const;

    MaxScript& script_;
    const HxDbSmrtlnEntity& object_;
    HextGlibScriptor scriptor_;
    bool isLoaded_;
};

}  // namespace maxfile
