// Hosts, calls and error lines.
#include "plant/scripts/state.h"

#include "platform/hxcom.h"

#include <cctype>
#include <cstdarg>
#include <cstdio>
#include <cstring>

using hextlua::contextOf;

HextGlibScriptor::HextGlibScriptor() : state_(hextlua::newState()) {}

HextGlibScriptor::~HextGlibScriptor() {
    hextlua::closeState(state_);
}

lua_State* HextGlibScriptor::getLua(int) const {
    return state_;
}

int HextGlibScriptor::loadFile(const char* codePagePath, int) {
    return lua_tinker::dofile(state_, codePagePath);
}

void HextGlibScriptor::addLibFuncLua(const char* table, const char* name, lua_CFunction function) {
    const int top = lua_gettop(state_);
    lua_pushstring(state_, table);
    lua_rawget(state_, LUA_GLOBALSINDEX);
    if (!lua_istable(state_, -1)) {
        lua_newtable(state_);
        lua_pushstring(state_, table);
        lua_pushvalue(state_, -2);
        lua_rawset(state_, LUA_GLOBALSINDEX);
    }
    hextlua::setFunction(state_, name, function);
    lua_settop(state_, top);
}

void HextGlibScriptor::setMemoryLimit(std::size_t bytes) {
    contextOf(state_).limit = bytes;
}

namespace lua_tinker {

namespace {

// True for a message that says where, as "name.lua:12: text" does.
bool hasPlace(const char* message) {
    for (const char* colon = std::strchr(message, ':'); colon != nullptr; colon = std::strchr(colon + 1, ':')) {
        const char* end = colon + 1;
        while (std::isdigit(static_cast<unsigned char>(*end)) != 0) {
            ++end;
        }
        if (end > colon + 1 && *end == ':') {
            return true;
        }
    }
    return false;
}

// The file and line of the innermost script function; false when there is none.
bool scriptPlace(lua_State* state, lua_Debug& record) {
    for (int level = 0; lua_getstack(state, level, &record) != 0; ++level) {
        lua_getinfo(state, "Sl", &record);
        if (record.currentline > 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

// Runs inside an error, possibly for want of memory: it allocates nothing in the state.
int on_error(lua_State* state) {
    char otherwise[64];
    const char* message = otherwise;
    if (lua_type(state, 1) == LUA_TSTRING) {
        message = lua_tostring(state, 1);
    } else if (lua_type(state, 1) == LUA_TNUMBER) {
        std::snprintf(otherwise, sizeof otherwise, LUA_NUMBER_FMT, lua_tonumber(state, 1));
    } else {
        std::snprintf(otherwise, sizeof otherwise, "error object is a %s value", luaL_typename(state, 1));
    }
    lua_Debug place;
    if (!hasPlace(message) && scriptPlace(state, place)) {
        print_error(state, "%s:%d: %s", place.short_src, place.currentline, message);
    } else {
        print_error(state, "%s", message);
    }
    return 1;
}

void print_error(lua_State*, const char* format, ...) noexcept {
    char text[4096];  // a longer line is cut
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    try {
        hxcad::hextPrintf("%s\n", text);
    } catch (...) {
        // The line is lost; nothing may leave this function on its way through Lua.
    }
}

int dofile(lua_State* state, const char* givenPath) {
    // The script itself may make the platform write over what the caller has from it.
    const std::string path = givenPath;
    const char* codePagePath = path.c_str();
    const int top = lua_gettop(state);
    hextlua::pushHandler(state);
    int status = hextlua::loadChunk(state, codePagePath);
    if (status != 0) {
        print_error(state, "%s", lua_tostring(state, -1));
    } else {
        status = hextlua::protectedCall(state, 0, 0, top + 1);
    }
    if (status != 0 && !hextlua::isMissing(status, codePagePath)) {
        hextlua::reportUnloaded(state, codePagePath);
    }
    lua_settop(state, top);
    return status;
}

ScriptCall::ScriptCall(lua_State* state, const char* function, bool quiet) : state_(state), base_(lua_gettop(state)) {
    lua_checkstack(state, LUA_MINSTACK);
    hextlua::pushHandler(state);
    lua_pushstring(state, function);
    lua_rawget(state, LUA_GLOBALSINDEX);
    found_ = lua_isfunction(state, -1);
    if (!found_ && !quiet) {
        print_error(state, "lua_tinker::call() attempt to call global `%s' (not a function)", function);
    }
}

ScriptCall::~ScriptCall() {
    lua_settop(state_, base_);
}

bool ScriptCall::run() {
    const int function = base_ + 2;
    const bool done = found_ && hextlua::protectedCall(state_, lua_gettop(state_) - function, 1, base_ + 1) == 0;
    if (!done) {
        lua_settop(state_, base_ + 1);
        lua_pushnil(state_);
    }
    return done;
}

bool ScriptCall::truth() const {
    return lua_toboolean(state_, result()) != 0;
}

std::string_view ScriptCall::text() const {
    const char* text = lua_tostring(state_, result());
    return text != nullptr ? std::string_view(text) : std::string_view();
}

double ScriptCall::number() const {
    return lua_tonumber(state_, result());
}

bool ScriptCall::isTable() const {
    return lua_istable(state_, result());
}

}  // namespace lua_tinker
