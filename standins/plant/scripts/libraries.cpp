// The standard libraries, less what would let a script end the program, hang it out of reach of the count hook, break
// the virtual machine's own memory, or write into the program's standard output.
#include "plant/scripts/state.h"

#include "platform/hxcom.h"
#include "tolmar/system.h"

#include <cstdint>
#include <cstring>

namespace hextlua {

namespace {

// Values that one call may push: the language's own limit.
constexpr std::int64_t mostPushed = LUAI_MAXCSTACK;

struct Refused {
    const char* library;
    const char* function;
};
constexpr Refused refusedFunctions[] = {
    {"os", "exit"}, {"os", "execute"}, {"os", "setlocale"}, {"io", "popen"},
    {"io", "read"}, {"io", "input"},   {"io", "output"},    {"package", "loadlib"},
};
// What changes files, which only scripts that are trusted may do.
constexpr Refused writers[] = {{"os", "remove"}, {"os", "rename"}, {"os", "tmpname"}, {"io", "tmpfile"}};

constexpr const char* keptOfDebug[] = {"traceback", "getinfo"};

int refuse(lua_State* state) {
    return luaL_error(state, "%s.%s is not available to scripts", lua_tostring(state, lua_upvalueindex(1)),
                      lua_tostring(state, lua_upvalueindex(2)));
}

void refuseFunction(lua_State* state, const Refused& refused) {
    lua_getglobal(state, refused.library);
    lua_pushstring(state, refused.library);
    lua_pushstring(state, refused.function);
    lua_pushcclosure(state, refuse, 2);
    lua_setfield(state, -2, refused.function);
    lua_pop(state, 1);
}

void printText(const char* text) {
    hxcad::hextPrintf("%s", text);
}

// print: the texts of its arguments with tabs between, as one line of the command line.
int scriptPrint(lua_State* state) {
    const int count = lua_gettop(state);
    lua_getglobal(state, "tostring");
    lua_pushliteral(state, "");
    for (int i = 1; i <= count; ++i) {
        lua_pushvalue(state, count + 1);
        lua_pushvalue(state, i);
        lua_call(state, 1, 1);
        if (lua_isstring(state, -1) == 0) {
            return luaL_error(state, "'tostring' must return a string to 'print'");
        }
        lua_pushstring(state, i < count ? "\t" : "");
        lua_concat(state, 3);
    }
    lua_pushliteral(state, "\n");
    lua_concat(state, 2);
    printText(lua_tostring(state, -1));
    return 0;
}

int scriptWrite(lua_State* state) {
    const int count = lua_gettop(state);
    for (int i = 1; i <= count; ++i) {
        printText(luaL_checkstring(state, i));
    }
    lua_pushboolean(state, 1);
    return 1;
}

// io.lines of a named file; without a name it would wait for standard input. The upvalue is the library's own function.
int scriptLines(lua_State* state) {
    luaL_checkstring(state, 1);
    lua_pushvalue(state, lua_upvalueindex(1));
    lua_pushvalue(state, 1);
    lua_call(state, 1, 1);
    return 1;
}

// A function of a library, whose own function the upvalue is.
int callOriginal(lua_State* state) {
    return lua_tocfunction(state, lua_upvalueindex(1))(state);
}

// A dry run leaves all files as they are, whoever writes them.
bool mayWriteFiles() {
    return tolmar::scriptsTrusted() && !tolmar::dryRun();
}

// Calls the library's own function, which the upvalue is, as a call of its own, since a file belongs to the environment
// of the function that opens it.
int callByItself(lua_State* state) {
    lua_pushvalue(state, lua_upvalueindex(1));
    lua_insert(state, 1);
    lua_call(state, lua_gettop(state) - 1, LUA_MULTRET);
    return lua_gettop(state);
}

// io.open. The way of opening is a letter and perhaps "b"; every one but "r" writes.
int scriptOpen(lua_State* state) {
    const char* way = luaL_optstring(state, 2, "r");
    const bool isReading = std::strcmp(way, "r") == 0 || std::strcmp(way, "rb") == 0;
    if (!isReading && !mayWriteFiles()) {
        return luaL_error(state, "io.open for writing is not available to scripts that are not trusted");
    }
    return callByItself(state);
}

// A function that changes files; the further upvalues are its library and its name. Whether scripts are trusted is
// asked at the call, since a state may be older than the answer.
int callWriter(lua_State* state) {
    if (!mayWriteFiles()) {
        return luaL_error(state, "%s.%s is not available to scripts that are not trusted",
                          lua_tostring(state, lua_upvalueindex(2)), lua_tostring(state, lua_upvalueindex(3)));
    }
    return callByItself(state);
}

void guardWriter(lua_State* state, const Refused& writer) {
    lua_getglobal(state, writer.library);
    lua_getfield(state, -1, writer.function);
    lua_pushstring(state, writer.library);
    lua_pushstring(state, writer.function);
    lua_pushcclosure(state, callWriter, 3);
    lua_setfield(state, -2, writer.function);
    lua_pop(state, 1);
}

// unpack, whose own count of what it gives overflows.
int scriptUnpack(lua_State* state) {
    luaL_checktype(state, 1, LUA_TTABLE);
    const std::int64_t first = luaL_optint(state, 2, 1);
    const std::int64_t last = lua_isnoneornil(state, 3) ? static_cast<std::int64_t>(lua_objlen(state, 1))
                                                        : std::int64_t{luaL_checkint(state, 3)};
    if (last - first >= mostPushed) {
        return luaL_error(state, "too many results to unpack");
    }
    return callOriginal(state);
}

// table.insert, which would move everything from a place far below the table, out of reach of the count hook.
int scriptInsert(lua_State* state) {
    if (lua_gettop(state) == 3 && luaL_checkint(state, 2) < 0) {
        return luaL_argerror(state, 2, "position out of bounds");
    }
    return callOriginal(state);
}

// string.rep that fails before it has filled the memory.
int repeatText(lua_State* state) {
    std::size_t length = 0;
    luaL_checklstring(state, 1, &length);
    const lua_Number times = luaL_checknumber(state, 2);
    if (times * static_cast<lua_Number>(length) > static_cast<lua_Number>(contextOf(state).limit)) {
        return luaL_error(state, "resulting string too large");
    }
    if (length == 0) {
        lua_pushliteral(state, "");
        return 1;
    }
    return callOriginal(state);
}

// The error handler of a script's xpcall, which the upvalue is. It runs without the count hook when the hook has raised
// the error, so it is left out then.
int handleUnlessStopped(lua_State* state) {
    if (contextOf(state).stopped) {
        return 1;
    }
    lua_settop(state, 1);
    lua_pushvalue(state, lua_upvalueindex(1));
    lua_insert(state, 1);
    lua_call(state, 1, 1);
    return 1;
}

int scriptXpcall(lua_State* state) {
    luaL_checkany(state, 2);
    lua_settop(state, 2);
    lua_pushcclosure(state, handleUnlessStopped, 1);
    lua_insert(state, 1);
    const int status = lua_pcall(state, 0, LUA_MULTRET, 1);
    lua_pushboolean(state, status == 0 ? 1 : 0);
    lua_replace(state, 1);
    return lua_gettop(state);
}

// Puts `function` with the library's own function as its upvalue in that one's place; the library is on top.
void wrap(lua_State* state, const char* name, lua_CFunction function) {
    lua_getfield(state, -1, name);
    lua_pushcclosure(state, function, 1);
    lua_setfield(state, -2, name);
}

void changeBase(lua_State* state) {
    lua_pushvalue(state, LUA_GLOBALSINDEX);
    setFunction(state, "print", guarded<scriptPrint>);
    setFunction(state, "xpcall", scriptXpcall);
    wrap(state, "unpack", scriptUnpack);
    lua_pushnil(state);
    lua_setfield(state, -2, "newproxy");
    lua_pop(state, 1);
}

// Files cannot be told another way to close themselves, since finalizers run without the count hook.
void changeIo(lua_State* state) {
    lua_getglobal(state, LUA_IOLIBNAME);
    setFunction(state, "write", guarded<scriptWrite>);
    wrap(state, "lines", scriptLines);
    wrap(state, "open", scriptOpen);
    lua_pushnil(state);
    lua_setfield(state, -2, "stdin");
    lua_getfield(state, -1, "stderr");
    lua_setfield(state, -2, "stdout");
    lua_pop(state, 1);
    luaL_getmetatable(state, LUA_FILEHANDLE);
    lua_pushliteral(state, "file");
    lua_setfield(state, -2, "__metatable");
    lua_pop(state, 1);
}

void changeString(lua_State* state) {
    lua_getglobal(state, LUA_STRLIBNAME);
    wrap(state, "rep", repeatText);
    lua_pop(state, 1);
    openPatterns(state);
}

void changeTable(lua_State* state) {
    lua_getglobal(state, LUA_TABLIBNAME);
    wrap(state, "insert", scriptInsert);
    lua_pop(state, 1);
}

bool isKeptOfDebug(const char* name) {
    for (const char* kept : keptOfDebug) {
        if (std::strcmp(name, kept) == 0) {
            return true;
        }
    }
    return false;
}

void changeDebug(lua_State* state) {
    lua_getglobal(state, LUA_DBLIBNAME);
    lua_pushnil(state);
    while (lua_next(state, -2) != 0) {
        lua_pop(state, 1);
        if (!isKeptOfDebug(lua_tostring(state, -1))) {
            lua_pushvalue(state, -1);
            lua_pushnil(state);
            lua_rawset(state, -4);
        }
    }
    lua_pop(state, 1);
}

}  // namespace

void openLibraries(lua_State* state) {
    luaL_openlibs(state);
    changeBase(state);
    changeIo(state);
    changeString(state);
    changeTable(state);
    changeDebug(state);
    for (const Refused& refused : refusedFunctions) {
        refuseFunction(state, refused);
    }
    for (const Refused& writer : writers) {
        guardWriter(state, writer);
    }
    openLoaders(state);
    openPlantLibrary(state);
}

}  // namespace hextlua
