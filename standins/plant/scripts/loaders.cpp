// Everything that turns script text into functions. Files go through the host's paths, and compiled chunks are refused:
// the virtual machine trusts them blindly.
#include "plant/scripts/state.h"

#include "platform/hxcom.h"
#include "tolmar/file.h"
#include "tolmar/paths.h"
#include "tolmar/run_report.h"
#include "tolmar/system.h"

#include <algorithm>
#include <filesystem>

namespace hextlua {

namespace {

constexpr char compiledMark = LUA_SIGNATURE[0];
constexpr const char* compiledText = "compiled chunks are not loaded";

// "@" and the path below the installation root, so that messages are the same on every machine.
void setChunkName(std::string& name, std::string_view path) {
    const std::string& root = tolmar::installationRoot();
    if (!root.empty() && path.substr(0, root.size()) == root) {
        path.remove_prefix(root.size());
        path.remove_prefix(std::min(path.find_first_not_of("/\\"), path.size()));
    }
    name = "@";
    name += path;
}

// The script's text without a byte order mark and without a first line that begins with "#" (its line end stays, so
// that line numbers are right).
std::string_view scriptText(std::string_view bytes) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (bytes.substr(0, mark.size()) == mark) {
        bytes.remove_prefix(mark.size());
    }
    if (!bytes.empty() && bytes.front() == '#') {
        bytes.remove_prefix(std::min(bytes.find('\n'), bytes.size()));
    }
    return bytes;
}

int compile(lua_State* state, std::string_view text, const char* chunkName) {
    if (!text.empty() && text.front() == compiledMark) {
        lua_pushfstring(state, "%s: %s", chunkName + 1, compiledText);
        return LUA_ERRSYNTAX;
    }
    const CLocale locale;
    return luaL_loadbuffer(state, text.data(), text.size(), chunkName);
}

int nilAndMessage(lua_State* state) {
    lua_pushnil(state);
    lua_insert(state, -2);
    return 2;
}

int scriptLoadString(lua_State* state) {
    std::size_t length = 0;
    const char* text = luaL_checklstring(state, 1, &length);
    const char* name = luaL_optstring(state, 2, text);
    if (length > 0 && text[0] == compiledMark) {
        lua_pushstring(state, compiledText);
        return nilAndMessage(state);
    }
    return luaL_loadbuffer(state, text, length, name) == 0 ? 1 : nilAndMessage(state);
}

// Stack of `load`: 1 the function that gives the pieces, 2 the chunk's name, 3 the piece in hand.
const char* readPiece(lua_State* state, void* first, std::size_t* size) {
    luaL_checkstack(state, 2, "too many nested functions");
    lua_pushvalue(state, 1);
    lua_call(state, 0, 1);
    if (lua_isnil(state, -1)) {
        *size = 0;
        return nullptr;
    }
    if (lua_isstring(state, -1) == 0) {
        luaL_error(state, "reader function must return a string");
    }
    lua_replace(state, 3);
    const char* piece = lua_tolstring(state, 3, size);
    auto& isFirst = *static_cast<bool*>(first);
    if (isFirst && *size > 0 && piece[0] == compiledMark) {
        luaL_error(state, "%s", compiledText);
    }
    isFirst = isFirst && *size == 0;
    return piece;
}

int scriptLoad(lua_State* state) {
    const char* name = luaL_optstring(state, 2, "=(load)");
    luaL_checktype(state, 1, LUA_TFUNCTION);
    lua_settop(state, 3);
    bool first = true;
    return lua_load(state, readPiece, &first, name) == 0 ? 1 : nilAndMessage(state);
}

int scriptLoadFile(lua_State* state) {
    return loadChunk(state, luaL_checkstring(state, 1)) == 0 ? 1 : nilAndMessage(state);
}

int scriptDoFile(lua_State* state) {
    if (loadChunk(state, luaL_checkstring(state, 1)) != 0) {
        return lua_error(state);
    }
    const int function = lua_gettop(state);
    lua_call(state, 0, LUA_MULTRET);
    return lua_gettop(state) - function + 1;
}

// The next pattern of a ";" list; false at its end.
bool nextPattern(std::string_view& list, std::string_view& pattern) {
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(';'), list.size());
        pattern = list.substr(0, end);
        list.remove_prefix(std::min(end + 1, list.size()));
        if (!pattern.empty()) {
            return true;
        }
    }
    return false;
}

// The pattern with every "?" replaced by the module's name, whose dots are folders.
void fillPattern(std::string& path, std::string_view pattern, std::string_view module) {
    path.clear();
    for (const char c : pattern) {
        if (c != '?') {
            path += c;
            continue;
        }
        const std::size_t start = path.size();
        path += module;
        std::replace(path.begin() + static_cast<std::ptrdiff_t>(start), path.end(), '.', '/');
    }
}

// Finds the module's file into context.text; false with the list of tried files in context.bytes.
bool findModule(ScriptContext& context, std::string_view list, std::string_view module) {
    std::string bytes;
    context.bytes.clear();
    for (std::string_view pattern; nextPattern(list, pattern);) {
        fillPattern(context.text, pattern, module);
        if (tolmar::readFile(context.text, bytes)) {
            return true;
        }
        context.bytes += "\n\tno file '" + context.text + "'";
    }
    return false;
}

// The searcher of `require`; its upvalue is the table `package`.
int searchModule(lua_State* state) {
    std::size_t length = 0;
    const char* module = luaL_checklstring(state, 1, &length);
    lua_getfield(state, lua_upvalueindex(1), "path");
    std::size_t listLength = 0;
    const char* list = lua_tolstring(state, -1, &listLength);
    if (list == nullptr) {
        return luaL_error(state, "'package.path' must be a string");
    }
    ScriptContext& context = contextOf(state);
    if (!findModule(context, {list, listLength}, {module, length})) {
        pushText(state, context.bytes);
        return 1;
    }
    lua_pushlstring(state, context.text.data(), context.text.size());
    if (loadChunk(state, lua_tostring(state, -1)) != 0) {
        return luaL_error(state, "error loading module '%s':\n\t%s", module, lua_tostring(state, -1));
    }
    return 1;
}

// Leaves require with package.preload and the search above.
void openSearchers(lua_State* state) {
    lua_getglobal(state, LUA_LOADLIBNAME);
    lua_pushliteral(state, "");
    lua_setfield(state, -2, "path");
    lua_pushliteral(state, "");
    lua_setfield(state, -2, "cpath");
    lua_getfield(state, -1, "loaders");
    lua_pushvalue(state, -2);
    lua_pushcclosure(state, guarded<searchModule>, 1);
    lua_rawseti(state, -2, 2);
    for (int native = 3; native <= 4; ++native) {
        lua_pushnil(state);
        lua_rawseti(state, -2, native);
    }
    lua_pop(state, 2);
}

void appendToPath(lua_State* state, const char* variable, const char* pattern) {
    const int top = lua_gettop(state);
    lua_pushliteral(state, LUA_LOADLIBNAME);
    lua_rawget(state, LUA_GLOBALSINDEX);
    if (lua_istable(state, -1)) {
        lua_pushstring(state, variable);
        lua_rawget(state, -2);
        std::string list = lua_isstring(state, -1) != 0 ? lua_tostring(state, -1) : "";
        list += list.empty() ? "" : ";";
        list += pattern;
        lua_pushstring(state, variable);
        pushText(state, list);
        lua_rawset(state, -4);
    }
    lua_settop(state, top);
}

}  // namespace

int loadChunk(lua_State* state, const char* codePagePath) {
    ScriptContext& context = contextOf(state);
    setChunkName(context.text, codePagePath);
    if (!tolmar::readFile(codePagePath, context.bytes)) {
        lua_pushfstring(state, "cannot open %s", context.text.c_str() + 1);
        return LUA_ERRFILE;
    }
    return compile(state, scriptText(context.bytes), context.text.c_str());
}

bool isMissing(int status, const char* codePagePath) {
    std::error_code error;
    return status == LUA_ERRFILE && !std::filesystem::exists(tolmar::resolvePath(codePagePath), error);
}

void reportUnloaded(lua_State* state, const char* codePagePath) {
    std::string name;
    setChunkName(name, codePagePath);
    name.erase(0, 1);
    const std::vector<tolmar::PassedOver>& passed = tolmar::runReport().passed();
    const bool isKnown = std::any_of(passed.begin(), passed.end(), [&name](const tolmar::PassedOver& entry) {
        return entry.what == "script" && entry.name == name;
    });
    if (!isKnown) {
        const char* message = lua_tostring(state, -1);
        tolmar::runReport().passedOver(0, name, "script",
                                       "does not load: " + std::string(message != nullptr ? message : "an error"));
    }
}

void openLoaders(lua_State* state) {
    lua_pushvalue(state, LUA_GLOBALSINDEX);
    setFunction(state, "loadstring", scriptLoadString);
    setFunction(state, "load", scriptLoad);
    setFunction(state, "loadfile", guarded<scriptLoadFile>);
    setFunction(state, "dofile", guarded<scriptDoFile>);
    lua_pop(state, 1);
    openSearchers(state);
}

void addPath(lua_State* state, const char* pattern) {
    appendToPath(state, "path", pattern);
}

void addCPath(lua_State* state, const char* pattern) {
    appendToPath(state, "cpath", pattern);
}

}  // namespace hextlua
