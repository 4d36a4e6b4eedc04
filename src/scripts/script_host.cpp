#include "scripts/script_host.h"

#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "platform/script.h"
#include "tolmar/system.h"

#include "scripts/script_functions.h"

#include <lua.hpp>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

constexpr const char* scriptFile = "plugins\\nvoutplugins.lua";
constexpr const char* systemScript = "hextInt2Str";
constexpr const char* profileFile = "sys\\hextProfile.ini";
constexpr int longestPrefix = 255;

struct Host {
    HextGlibScriptor scriptor;
    bool loaded = false;  // the last load went well
};

std::unique_ptr<Host>& host() {
    static std::unique_ptr<Host> theHost;
    return theHost;
}

bool load(Host& target) {
    target.loaded = target.scriptor.loadFile(HextSystem::getFullHextName(scriptFile), 0) == 0;
    return target.loaded;
}

void setModulePaths(lua_State* state) {
    const std::string platform = HextSystem::hextFullPlatformPath();
    hextlua::addCPath(state, (platform + "\\?.dll").c_str());
    for (const char* pattern : {"bin\\?.lua", "bin\\utils\\?.lua", "sys\\?.lua", "plugins\\?.lua"}) {
        hextlua::addPath(state, HextSystem::getFullHextName(pattern));
    }
    hextlua::addPath(state, (platform + "\\?.lua").c_str());
}

// A script that did not load has said so once; that its functions are missing is no news then.
bool isQuiet() {
    return !host()->loaded;
}

void reportLeftOutOf(HxDbObjectId id, const char* what, const std::string& why) {
    const HxDbObject* object = openAs<HxDbObject>(id);
    reportLeftOut(object != nullptr ? LeftOutThing(object, what) : LeftOutThing(id, "", what), why);
}

void pushIdField(lua_State* state, HxDbObjectId id) {
    lua_pushliteral(state, "objid");
    lua_pushnumber(state, static_cast<lua_Number>(id.toInt()));
    lua_rawset(state, -3);
}

// The script function `function` of one object; `out` is empty when anything fails.
void readReference(lua_State* state, const char* function, HxDbObjectId id, ParamList& out) {
    lua_tinker::ScriptCall call(state, function, isQuiet());
    if (!call.found()) {
        return;
    }
    lua_createtable(state, 0, 1);
    pushIdField(state, id);
    if (!call.run()) {
        reportLeftOutOf(id, "attributes", std::string("the script function ") + function + " failed");
        return;
    }
    hextlua::getParams(state, call.result(), out);
    if (out.skipped() > 0) {
        reportLeftOutOf(id, "attribute",
                        std::to_string(out.skipped()) + " entries of the result of " + function + " are no attributes");
    }
}

// Ids that the script has not given back are left out by the caller.
void reportMissing(const std::vector<HxDbObjectId>& ids, const std::vector<HxDbObjectId>& sorted, std::size_t from) {
    static std::vector<HxDbObjectId> given;
    given.assign(sorted.begin() + static_cast<std::ptrdiff_t>(from), sorted.end());
    std::sort(given.begin(), given.end());
    for (const HxDbObjectId id : ids) {
        if (!std::binary_search(given.begin(), given.end(), id)) {
            reportLeftOutOf(id, "manager", "not in the list that sortTreeNodes gives");
        }
    }
}

void callSortTreeNodes(lua_State* state, const std::vector<HxDbObjectId>& ids, std::vector<HxDbObjectId>& out) {
    lua_tinker::ScriptCall call(state, "sortTreeNodes", isQuiet());
    if (!call.found()) {
        return;
    }
    lua_createtable(state, static_cast<int>(ids.size()), 0);
    int index = 0;
    for (const HxDbObjectId id : ids) {
        lua_pushnumber(state, static_cast<lua_Number>(id.toInt()));
        lua_rawseti(state, -2, ++index);
    }
    call.run();
    const int count = call.isTable() ? static_cast<int>(lua_objlen(state, call.result())) : 0;
    for (int i = 1; i <= count; ++i) {
        lua_rawgeti(state, call.result(), i);
        const HxDbObjectId id = hextlua::toObjectId(lua_tonumber(state, -1));
        lua_pop(state, 1);
        if (id.isValid()) {
            out.push_back(id);
        }
    }
}

// The prefix that the system script gives; false when it gives none.
bool prefixFromScript(const char* className, HxDbObjectId id, const char* text1, const char* text2,
                      std::string& prefix) {
    HextGlibScriptor* scriptor = glib::initSysScriptor(systemScript);
    lua_State* state = scriptor != nullptr ? scriptor->getLua(0) : nullptr;
    char* text = nullptr;
    if (state == nullptr ||
        !hextlua::callLuaFunc(state, "getNodePrefix", "soss>s", className, id.toInt(), text1, text2, &text) ||
        text == nullptr) {
        return false;
    }
    prefix = text;
    std::free(text);
    return true;
}

}  // namespace

lua_State* getScriptHost(bool reload) {
    if (host() != nullptr) {
        if (reload) {
            glib::clearItems();
        }
        return reload && !load(*host()) ? nullptr : host()->scriptor.getLua(0);
    }
    host() = std::make_unique<Host>();
    registerScriptFunctions(host()->scriptor);
    setModulePaths(host()->scriptor.getLua(0));
    return load(*host()) ? host()->scriptor.getLua(0) : nullptr;
}

void destroyScriptHost() {
    host().reset();
    glib::clearItems();
}

void callGetReference(HxDbObjectId id, ParamList& out) {
    out.clear();
    if (lua_State* state = getScriptHost(false)) {
        readReference(state, "getReference", id, out);
    }
}

void getReferenceRvm(HxDbObjectId id, ParamList& out) {
    out.clear();
    if (host() != nullptr) {
        readReference(host()->scriptor.getLua(0), "getReferenceRvm", id, out);
    }
}

bool checkExportCustom() {
    if (host() == nullptr) {
        return false;
    }
    lua_tinker::ScriptCall call(host()->scriptor.getLua(0), "checkExportCustom", isQuiet());
    call.run();
    return call.truth();
}

std::string getNodeName(HxDbObjectId id, bool isPipelineObject) {
    lua_State* state = getScriptHost(false);
    if (state == nullptr) {
        return {};
    }
    lua_tinker::ScriptCall call(state, "getNodeName", isQuiet());
    if (call.found()) {
        lua_createtable(state, 0, 2);
        pushIdField(state, id);
        lua_pushliteral(state, "isplineobj");
        lua_pushboolean(state, isPipelineObject ? 1 : 0);
        lua_rawset(state, -3);
    }
    call.run();
    return std::string(call.text());
}

void sortTreeNodes(const std::vector<HxDbObjectId>& ids, std::vector<HxDbObjectId>& out) {
    const std::size_t from = out.size();
    if (lua_State* state = getScriptHost(false)) {
        callSortTreeNodes(state, ids, out);
    }
    reportMissing(ids, out, from);
}

std::string getNodePrefix(const char* className, const HxDbObject* object, const char* text1, const char* text2) {
    const HxDbObjectId id = object != nullptr ? object->objectId() : HxDbObjectId();
    std::string prefix;
    if (!prefixFromScript(className, id, text1, text2, prefix)) {
        prefix = tolmar::getPrivateProfileString("NodePrefix", className, "", longestPrefix,
                                                 HextSystem::getFullHextName(profileFile));
    }
    return prefix;
}
