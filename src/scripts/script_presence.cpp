#include "scripts/script_presence.h"

#include "scripts/script_host.h"

#include <lua.hpp>

bool scriptHasFunction(const char* name) {
    lua_State* state = getScriptHost(false);
    if (state == nullptr) {
        return false;
    }
    // Raw: a script may have given its globals a metatable that raises errors.
    lua_pushstring(state, name);
    lua_rawget(state, LUA_GLOBALSINDEX);
    const bool isFunction = lua_isfunction(state, -1);
    lua_pop(state, 1);
    return isFunction;
}
