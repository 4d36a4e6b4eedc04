// The script host: Lua states for the project's scripts, behind platform/script.h.
//
// A file goes through the loaders into a state whose libraries lack what could harm the program; a call goes in under a
// message handler, a count hook and a memory limit; its result is read from the stack into plain values. What belongs
// to one state stands in its ScriptContext, which is reached from the state alone.
#pragma once

#include "platform/script.h"

#include <lua.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace hextlua {

// Strings live here and not in C functions' frames: a Lua error jumps over destructors.
struct ScriptContext {
    lua_State* main = nullptr;
    std::size_t used = 0;
    std::size_t limit = HextGlibScriptor::defaultMemoryLimit;
    int depth = 0;         // protected calls under way; the limit holds in them
    bool stopped = false;  // the count hook has stopped the call under way
    int handler = 0;       // registry reference of lua_tinker::on_error
    std::string bytes;     // a file on its way into the state
    std::string text;      // a text on its way into the state
};

// A state with its context, libraries and hook; never null.
lua_State* newState();
void closeState(lua_State* state);
ScriptContext& contextOf(lua_State* state);

// Calls the function below `arguments` values with the message handler at a stack index. The status of lua_pcall;
// errors have been printed.
int protectedCall(lua_State* state, int arguments, int results, int handler);
void pushHandler(lua_State* state);

// To be called now and then by what takes long: raises an error when the user has asked to stop.
void stopWhenCancelled(lua_State* state);

// Opens the standard libraries as far as scripts may have them, and the library `plant`.
void openLibraries(lua_State* state);
void openPlantLibrary(lua_State* state);
// The functions of the string library that match patterns.
void openPatterns(lua_State* state);
// The functions that load scripts: loadstring, load, loadfile, dofile and the search of require.
void openLoaders(lua_State* state);

// Compiles a script file and pushes the function, or a message that names the file. The status of lua_load.
int loadChunk(lua_State* state, const char* codePagePath);

// Whether the status is that of a script file that is not there, which no installation needs to have.
bool isMissing(int status, const char* codePagePath);
// Tells the run report, once for each file, that a script does not load; the message is on top of the stack.
void reportUnloaded(lua_State* state, const char* codePagePath);

inline void pushText(lua_State* state, std::string_view text) {
    lua_pushlstring(state, text.data(), text.size());
}
// Sets a field of the table on top of the stack, bypassing metamethods.
void setFunction(lua_State* state, const char* name, lua_CFunction function);

}  // namespace hextlua
