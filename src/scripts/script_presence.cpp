#include "scripts/script_presence.h"

#include "scripts/script_host.h"

#include <lua.hpp>

bool scriptHasFunction(const char* name) {
    lua_State* state = getScriptHost(false);
    if (state == nullptr) {
        return false;
    }
    lua_getglobal(state, name);
    const bool isFunction = lua_isfunction(state, -1);
    lua_pop(state, 1);
    return isFunction;
}
