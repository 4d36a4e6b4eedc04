#include "scripts/script_functions.h"

#include "platform/hxcom.h"
#include "platform/script.h"
#include "tolmar/system.h"

#include <lua.hpp>
#include <string>

namespace {

// _ALERT(text), hxcom.errorMsg(text)
int errorMessage(lua_State* state) {
    hxcom::errorMsg(luaL_checkstring(state, 1));
    return 0;
}

// hxcom.getHextPath(relative path)
int hextPath(lua_State* state) {
    static std::string path;  // a script error jumps over destructors
    path = tolmar::installedPath(luaL_checkstring(state, 1));
    lua_pushlstring(state, path.data(), path.size());
    return 1;
}

// The state of a graphics library item, with its stack emptied; null when there is none.
lua_State* itemState(const char* name, int type) {
    HextGlibItem* item = nullptr;
    if (glib::getGlibItem(name, type, item, hxcom::getCurrentModule()) != 0 || item == nullptr) {
        return nullptr;
    }
    lua_State* state = item->getLuaScriptor()->getLua(0);
    lua_settop(state, 0);
    return state;
}

// hxcom.getSkeyParam(library name, object type, table name): a copy of the table, or no value.
int skeyParam(lua_State* state) {
    if (lua_gettop(state) != 3 || lua_type(state, 1) != LUA_TSTRING || lua_type(state, 2) != LUA_TNUMBER ||
        lua_type(state, 3) != LUA_TSTRING) {
        return 0;
    }
    lua_State* item = itemState(lua_tostring(state, 1), static_cast<int>(lua_tointeger(state, 2)));
    if (item == nullptr) {
        return 0;
    }
    lua_pushstring(item, lua_tostring(state, 3));
    lua_rawget(item, LUA_GLOBALSINDEX);
    const bool copied = lua_istable(item, 1) && hextlua::copyLuaTable(item, 1, state);
    lua_settop(item, 0);
    return copied ? 1 : 0;
}

}  // namespace

void registerScriptFunctions(HextGlibScriptor& scriptor) {
    scriptor.addLibFuncLua("_G", "_ALERT", hextlua::guarded<errorMessage>);
    scriptor.addLibFuncLua("hxcom", "errorMsg", hextlua::guarded<errorMessage>);
    scriptor.addLibFuncLua("hxcom", "getHextPath", hextlua::guarded<hextPath>);
    scriptor.addLibFuncLua("hxcom", "getSkeyParam", hextlua::guarded<skeyParam>);
}
