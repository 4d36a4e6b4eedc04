// Calls by signature, members of tables, copies of tables.
#include "plant/scripts/state.h"

#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace hextlua {

namespace {

constexpr int deepestTable = 100;

void pushTextOrNil(lua_State* state, const char* text) {
    if (text != nullptr) {
        lua_pushstring(state, text);
    } else {
        lua_pushnil(state);
    }
}

// Pushes the argument for each letter up to ">" or the end; gives what follows.
const char* pushArguments(lua_State* state, const char* signature, std::va_list& arguments) {
    for (; *signature != '\0' && *signature != '>'; ++signature) {
        switch (*signature) {
        case 's':
            pushTextOrNil(state, va_arg(arguments, const char*));
            break;
        case 'o':
            lua_pushnumber(state, static_cast<lua_Number>(va_arg(arguments, std::int64_t)));
            break;
        case 'i':
            lua_pushinteger(state, va_arg(arguments, int));
            break;
        case 'd':
            lua_pushnumber(state, va_arg(arguments, double));
            break;
        default:
            lua_pushboolean(state, va_arg(arguments, int));
            break;
        }
    }
    return *signature == '>' ? signature + 1 : signature;
}

char* copyOfText(lua_State* state, int index) {
    const char* text = lua_tostring(state, index);
    return text != nullptr ? ::strdup(text) : nullptr;
}

void takeResults(lua_State* state, const char* signature, int index, std::va_list& arguments) {
    for (; *signature != '\0'; ++signature, ++index) {
        switch (*signature) {
        case 's':
            *va_arg(arguments, char**) = copyOfText(state, index);
            break;
        case 'o':
            *va_arg(arguments, std::int64_t*) = toObjectId(lua_tonumber(state, index)).toInt();
            break;
        case 'i':
            *va_arg(arguments, int*) = static_cast<int>(lua_tointeger(state, index));
            break;
        case 'd':
            *va_arg(arguments, double*) = lua_tonumber(state, index);
            break;
        default:
            *va_arg(arguments, bool*) = lua_toboolean(state, index) != 0;
            break;
        }
    }
}

// Leaves the stack as it is; the caller restores it.
bool callBySignature(lua_State* state, const char* function, const char* signature, std::va_list& arguments) {
    pushHandler(state);
    const int handler = lua_gettop(state);
    lua_pushstring(state, function);
    lua_rawget(state, LUA_GLOBALSINDEX);
    if (!lua_isfunction(state, -1)) {
        return false;
    }
    const char* results = pushArguments(state, signature, arguments);
    const int count = lua_gettop(state) - handler - 1;
    if (protectedCall(state, count, static_cast<int>(std::strlen(results)), handler) != 0) {
        return false;
    }
    takeResults(state, results, handler + 1, arguments);
    return true;
}

class TableCopier {
public:
    // The stack of `to` holds the table of copies made so far at index `known`, by the address of the original.
    TableCopier(lua_State* from, lua_State* to, int known) : from_(from), to_(to), known_(known) {}

    // Pushes the copy of a table; false when it is nested too deep.
    bool pushTable(int table, int depth) {
        if (depth > deepestTable || lua_checkstack(from_, 4) == 0) {
            return false;
        }
        luaL_checkstack(to_, 6, "table nested too deep");
        if (!pushKnown(table)) {
            return pushNew(table, depth);
        }
        return true;
    }

private:
    bool pushKnown(int table) {
        pushAddress(table);
        lua_rawget(to_, known_);
        const bool known = lua_istable(to_, -1);
        if (!known) {
            lua_pop(to_, 1);
        }
        return known;
    }

    bool pushNew(int table, int depth) {
        lua_newtable(to_);
        pushAddress(table);
        lua_pushvalue(to_, -2);
        lua_rawset(to_, known_);
        lua_pushnil(from_);
        while (lua_next(from_, table) != 0) {
            if (!setMember(depth)) {
                return false;
            }
            lua_pop(from_, 1);
        }
        return true;
    }

    // Copies the key and the value on top of `from` into the table on top of `to`.
    bool setMember(int depth) {
        const int value = lua_gettop(from_);
        if (!pushPlain(value - 1)) {
            return true;
        }
        if (lua_istable(from_, value)) {
            if (!pushTable(value, depth + 1)) {
                return false;
            }
        } else if (!pushPlain(value)) {
            lua_pop(to_, 1);
            return true;
        }
        lua_rawset(to_, -3);
        return true;
    }

    bool pushPlain(int index) {
        switch (lua_type(from_, index)) {
        case LUA_TNUMBER:
            lua_pushnumber(to_, lua_tonumber(from_, index));
            return true;
        case LUA_TBOOLEAN:
            lua_pushboolean(to_, lua_toboolean(from_, index));
            return true;
        case LUA_TSTRING: {
            std::size_t length = 0;
            const char* text = lua_tolstring(from_, index, &length);
            lua_pushlstring(to_, text, length);
            return true;
        }
        default:
            return false;
        }
    }

    void pushAddress(int table) { lua_pushlightuserdata(to_, const_cast<void*>(lua_topointer(from_, table))); }

    lua_State* from_;
    lua_State* to_;
    int known_;
};

}  // namespace

bool callLuaFunc(lua_State* state, const char* function, const char* signature, ...) {
    const CLocale locale;
    const int top = lua_gettop(state);
    std::va_list arguments;
    va_start(arguments, signature);
    const bool done = callBySignature(state, function, signature, arguments);
    va_end(arguments);
    lua_settop(state, top);
    return done;
}

bool copyLuaTable(lua_State* from, int table, lua_State* to) {
    const int fromTop = lua_gettop(from);
    const int toTop = lua_gettop(to);
    lua_pushvalue(from, table);
    luaL_checkstack(to, 2, "table nested too deep");
    lua_newtable(to);
    const bool done = TableCopier(from, to, toTop + 1).pushTable(fromTop + 1, 1);
    lua_settop(from, fromTop);
    if (done) {
        lua_replace(to, toTop + 1);
    }
    lua_settop(to, done ? toTop + 1 : toTop);
    return done;
}

bool getNumbers(lua_State* state, int table, double* numbers, int count) {
    const CLocale locale;
    bool whole = lua_istable(state, table);
    for (int i = 0; i < count && whole; ++i) {
        lua_rawgeti(state, table, i + 1);
        whole = lua_isnumber(state, -1) != 0;
        numbers[i] = lua_tonumber(state, -1);
        lua_pop(state, 1);
    }
    return whole;
}

}  // namespace hextlua
