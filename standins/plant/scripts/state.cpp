#include "plant/scripts/state.h"

#include "plant/scripts/blocks.h"
#include "tolmar/host_ui.h"

#include <cstdio>
#include <cstdlib>
#include <new>

namespace hextlua {

CLocale::CLocale() {
    static const locale_t locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    before_ = ::uselocale(locale);
}

CLocale::~CLocale() {
    ::uselocale(before_);
}

namespace {

// About a millisecond of a script that loops.
constexpr int instructionsBetweenLooks = 100'000;

void* allocate(void* userData, void* block, std::size_t oldSize, std::size_t newSize) {
    auto& context = *static_cast<ScriptContext*>(userData);
    if (newSize == 0) {
        freeBlock(block, oldSize);
        context.used -= oldSize;
        return nullptr;
    }
    const bool growing = newSize > oldSize;
    if (growing && context.depth > 0 && context.used + (newSize - oldSize) > context.limit) {
        return nullptr;
    }
    void* moved = resizeBlock(block, oldSize, newSize);
    if (moved != nullptr) {
        context.used += newSize - oldSize;
    }
    return moved;
}

bool cancelRequested() noexcept {
    try {
        return tolmar::hostUi().cancelRequested();
    } catch (...) {
        return true;
    }
}

void onCount(lua_State* state, lua_Debug*);

// Once stopped, every further instruction raises the error again, so that no pcall in the script can hold it. `level`
// is the script function's in the stack of calls.
void stopWhenCancelledAt(lua_State* state, int level) {
    if (!cancelRequested()) {
        return;
    }
    ScriptContext& context = contextOf(state);
    context.stopped = true;
    lua_sethook(state, onCount, LUA_MASKCOUNT, 1);
    lua_sethook(context.main, onCount, LUA_MASKCOUNT, 1);  // `state` may be a coroutine
    luaL_where(state, level);
    lua_pushliteral(state, "script stopped by cancel");
    lua_concat(state, 2);
    lua_error(state);
}

void onCount(lua_State* state, lua_Debug*) {
    stopWhenCancelledAt(state, 0);
}

// An error that nothing protects would end the program without a word.
int panic(lua_State* state) {
    constexpr int failed = 4;
    lua_tinker::print_error(state, "script host: %s outside of any call; the program ends",
                            lua_type(state, -1) == LUA_TSTRING ? lua_tostring(state, -1) : "an error");
    std::fflush(stdout);
    std::_Exit(failed);
}

void watch(lua_State* state) {
    lua_sethook(state, onCount, LUA_MASKCOUNT, instructionsBetweenLooks);
}

}  // namespace

lua_State* newState() {
    auto context = std::make_unique<ScriptContext>();
    lua_State* state = lua_newstate(allocate, context.get());
    if (state == nullptr) {
        throw std::bad_alloc();
    }
    context.release()->main = state;
    lua_atpanic(state, panic);
    lua_pushcfunction(state, lua_tinker::on_error);
    contextOf(state).handler = luaL_ref(state, LUA_REGISTRYINDEX);
    openLibraries(state);
    watch(state);
    return state;
}

void closeState(lua_State* state) {
    const std::unique_ptr<ScriptContext> context(&contextOf(state));
    lua_close(state);
}

ScriptContext& contextOf(lua_State* state) {
    void* context = nullptr;
    lua_getallocf(state, &context);
    return *static_cast<ScriptContext*>(context);
}

void pushHandler(lua_State* state) {
    lua_rawgeti(state, LUA_REGISTRYINDEX, contextOf(state).handler);
}

int protectedCall(lua_State* state, int arguments, int results, int handler) {
    ScriptContext& context = contextOf(state);
    if (context.depth == 0 && context.stopped) {
        context.stopped = false;
        watch(context.main);
    }
    const CLocale locale;
    ++context.depth;
    const int status = lua_pcall(state, arguments, results, handler);
    --context.depth;
    if (status == LUA_ERRMEM || status == LUA_ERRERR) {
        lua_tinker::print_error(state, "script stopped: %s", lua_tostring(state, -1));
        lua_gc(state, LUA_GCCOLLECT, 0);
    }
    return status;
}

void stopWhenCancelled(lua_State* state) {
    stopWhenCancelledAt(state, 1);
}

void setFunction(lua_State* state, const char* name, lua_CFunction function) {
    lua_pushstring(state, name);
    lua_pushcfunction(state, function);
    lua_rawset(state, -3);
}

int raiseError(lua_State* state, const char* text) {
    return luaL_error(state, "%s", text);
}

}  // namespace hextlua
