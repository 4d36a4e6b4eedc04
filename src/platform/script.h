// The platform's script host: Lua 5.1 states, loading and calling of scripts, values to and from scripts, and the items
// of the graphics library. Main thread only.
//
// A script cannot bring the program down. Every call is protected: an error prints one line with file and line number
// on the command line and the call gives nil. A count hook looks at the host's cancel flag, so that a script that loops
// stops by an error soon after the user has pressed Cancel (the progress object then ends the run at its next call). A
// state has a memory limit that holds while a script runs. docs/scripts.md tells which library functions are missing.
//
// Scripts run in the C locale, whatever the program's is: a number is read and written with a point, texts order by
// their bytes, and the same script gives the same names on every machine.
//
// Functions that take a lua_State want one of a HextGlibScriptor. They use raw table access, so a result table's
// metamethods are not run. Texts are 8-bit in the code page.
#pragma once

#include "platform/ids.h"
#include "platform/param_list.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <locale.h>
#include <memory>
#include <string>
#include <string_view>

extern "C" {
struct lua_State;
typedef int (*lua_CFunction)(lua_State*);
}

namespace Hext {
using GlibStatus = int;
}
namespace Plant {
using ObjectType = int;
}

// A host with a Lua state of its own: the standard libraries as far as scripts may have them, and the library `plant`.
class HextGlibScriptor {
public:
    // Bytes that the script may hold by default.
    static constexpr std::size_t defaultMemoryLimit = std::size_t{1} << 30;

    HextGlibScriptor();
    ~HextGlibScriptor();
    HextGlibScriptor(const HextGlibScriptor&) = delete;
    HextGlibScriptor& operator=(const HextGlibScriptor&) = delete;

    // The state; it belongs to this host.
    lua_State* getLua(int) const;
    // Runs a script file in the state: 0 on success. A file that is missing, does not compile or raises an error says
    // so in one line on the command line; but for a missing one the run report has it, too, once for each file.
    int loadFile(const char* codePagePath, int);
    // Enters a C function into a global table, which is made when it is missing; "_G" is the table of globals. A
    // function that may throw goes in as hextlua::guarded<function>.
    void addLibFuncLua(const char* table, const char* name, lua_CFunction function);
    void setMemoryLimit(std::size_t bytes);

private:
    lua_State* state_;
};

// A script file compiled once, to be run in many fresh states.
class CompiledScript {
public:
    explicit CompiledScript(const char* codePagePath);
    ~CompiledScript();
    CompiledScript(const CompiledScript&) = delete;
    CompiledScript& operator=(const CompiledScript&) = delete;
    // False when the file is missing or does not compile, which the constructor has said, to the run report, too.
    bool isCompiled() const { return !bytecode_.empty(); }
    // Runs it in a state as lua_tinker::dofile does: 0 on success. The run report hears of the first failure.
    int run(lua_State* state) const;

private:
    std::string path_;
    std::string bytecode_;
    mutable bool isToldToFail_ = false;
};

namespace hextlua {

// The thread's locale is "C" for as long as this lives. A script error may jump over one that stands below another.
class CLocale {
public:
    CLocale();
    ~CLocale();
    CLocale(const CLocale&) = delete;
    CLocale& operator=(const CLocale&) = delete;

private:
    locale_t before_;
};

}  // namespace hextlua

namespace lua_tinker {

// The message handler of every call: prints the error with file and line number.
int on_error(lua_State* state);
// A line on the host's command line, by printf rules.
void print_error(lua_State* state, const char* format, ...) noexcept;
// Runs a script file: 0 on success, otherwise a line on the command line tells why not.
int dofile(lua_State* state, const char* codePagePath);

// One call of a global script function:
//
//     ScriptCall call(state, "getNodeName");
//     lua_pushnumber(call.state(), 17);
//     call.run();
//     use(call.text());
//
// A missing function prints its line (unless `quiet`) and the call gives nil. The results stay valid until the
// destructor, which puts the state's stack back.
class ScriptCall {
public:
    ScriptCall(lua_State* state, const char* function, bool quiet = false);
    ~ScriptCall();
    ScriptCall(const ScriptCall&) = delete;
    ScriptCall& operator=(const ScriptCall&) = delete;

    lua_State* state() const { return state_; }
    // False when there is no function of that name; arguments need not be pushed then.
    bool found() const { return found_; }
    // Calls with everything pushed since the constructor. False when the call failed; the result is nil then.
    bool run();

    // The one result, at this stack index.
    int result() const { return base_ + 2; }
    // Nil and false are false, anything else is true.
    bool truth() const;
    // A string (up to its first zero byte) or a number as text; empty for anything else.
    std::string_view text() const;
    // A number or a numeric string; 0 for anything else.
    double number() const;
    bool isTable() const;

private:
    hextlua::CLocale locale_;  // for whoever reads the results
    lua_State* state_;
    int base_;
    bool found_;
};

}  // namespace lua_tinker

namespace hextlua {

// A C function for scripts that turns a C++ exception into a script error. The function must not hold anything with a
// destructor while it calls into Lua: a Lua error jumps over it.
template <lua_CFunction Function>
int guarded(lua_State* state);

// Append a pattern to the paths that `require` searches for scripts, and to package.cpath. Native modules are not
// loaded on this system; the second only shows in the variable.
void addPath(lua_State* state, const char* pattern);
void addCPath(lua_State* state, const char* pattern);

// Empties the list and fills it from the table at a stack index; false when there is no table. An entry comes from
//   - a row under an integer key, in ascending order of the keys, holes aside: {key=, value=, description=} or
//     {key, value, description};
//   - a member under a text key, in byte order of the keys, behind the rows: the key and its value.
// A whole number becomes a 64-bit integer, another number a double, a string itself, true and false their names,
// anything else the empty text. Rows that are no tables or have no key, and members that are tables, are counted as
// skipped.
bool getParams(lua_State* state, int table, ParamList& out, int = 0);

// Calls a global function. `signature` holds a letter for each argument and, behind ">", for each result: s text
// (const char*, null is nil), o object id (std::int64_t), i int, d double, b bool (int as an argument). Results go to
// pointers: char** (a copy, to be freed by std::free; null when the result is neither text nor number), std::int64_t*,
// int*, double*, bool*. False when there is no such function, which prints nothing, or when the call failed.
bool callLuaFunc(lua_State* state, const char* function, const char* signature, ...);

// Copies the table at a stack index of one state to the top of the stack of another: numbers, strings, booleans and
// tables in tables, shared and cyclic ones included; the rest is left out. To be called from a function that the other
// state runs. False, with nothing pushed, for tables nested too deep.
bool copyLuaTable(lua_State* from, int table, lua_State* to);

// The numbers at 1, 2, ... of the table at a stack index; false when one of them is missing.
bool getNumbers(lua_State* state, int table, double* numbers, int count);
// A Lua number as an object id; invalid for what is no whole number in range.
HxDbObjectId toObjectId(double number);

int raiseError(lua_State* state, const char* text);

template <lua_CFunction Function>
int guarded(lua_State* state) {
    char text[256] = "unknown error";
    try {
        return Function(state);
    } catch (const std::exception& error) {
        const std::string_view what = error.what();
        text[what.copy(text, sizeof text - 1)] = '\0';
    } catch (...) {
        // Keeps the text above.
    }
    return raiseError(state, text);
}

}  // namespace hextlua

// An item of the graphics library: the script "glib/NAME.lua" under the installation root, run once.
class HextGlibItem {
public:
    // The host that has run the item's script.
    HextGlibScriptor* getLuaScriptor() { return &scriptor_; }

private:
    HextGlibScriptor scriptor_;
};

namespace glib {

// Status of getGlibItem beside 0.
inline constexpr Hext::GlibStatus eNoItem = 1;
inline constexpr Hext::GlibStatus eItemFailed = 2;

// The host that has run the system script "sys/NAME.lua" under the installation root; null when there is none or it
// failed. Kept until clearItems.
HextGlibScriptor* initSysScriptor(const char* name);
// The item of a name; one script serves all object types and modules of its name. Kept until clearItems.
Hext::GlibStatus getGlibItem(const char* name, Plant::ObjectType type, HextGlibItem*& item, int module);
// Forgets all items and system scripts, so that their next use reads the files again.
void clearItems();

}  // namespace glib
