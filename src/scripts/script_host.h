// The bridge to the project's script, "plugins\nvoutplugins.lua" under the installation root, and to the prefixes of
// tree nodes. docs/scripts.md tells script writers what is called and what they may call.
//
// Main thread only. A script that is missing, fails to load or raises an error leaves the export running without it:
// no attributes, empty names, no order. Every failed call prints a line on the command line.
#pragma once

#include "platform/ids.h"
#include "platform/param_list.h"

#include <string>
#include <vector>

struct lua_State;
class HxDbObject;

// The script state, made and loaded on first use; with `reload` the script is loaded again into the existing state.
// Null when this load failed (the host stays, so a later call without `reload` gives its state).
lua_State* getScriptHost(bool reload);
// Frees the host; the next getScriptHost makes a new one. To be called when the module is unloaded, too.
void destroyScriptHost();

// The attributes that the script gives to an object, from its functions getReference and getReferenceRvm. The list is
// emptied first and owns its texts; hand in the same list again and again to reuse its storage. getReferenceRvm makes
// no host of its own.
void callGetReference(HxDbObjectId id, ParamList& out);
void getReferenceRvm(HxDbObjectId id, ParamList& out);

// The script's answer whether everything selected goes into one pair of files. Makes no host of its own.
bool checkExportCustom();

// The script's name of an object; empty when it gives none.
std::string getNodeName(HxDbObjectId id, bool isPipelineObject);

// The ids in the order that the script gives, appended to `out`; ids of the result that are no valid ids are dropped,
// nothing is appended without a script.
void sortTreeNodes(const std::vector<HxDbObjectId>& ids, std::vector<HxDbObjectId>& out);

// The prefix of a tree node's label: from the function getNodePrefix of the system script "hextInt2Str", else from
// section "NodePrefix" of "sys\hextProfile.ini", where the key is the class name. Object and texts may be null.
std::string getNodePrefix(const char* className, const HxDbObject* object, const char* text1, const char* text2);
