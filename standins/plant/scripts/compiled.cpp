// Scripts compiled once and run in many states.
#include "plant/scripts/state.h"

#include <utility>

namespace {

int appendBytes(lua_State*, const void* bytes, std::size_t size, void* out) {
    try {
        static_cast<std::string*>(out)->append(static_cast<const char*>(bytes), size);
        return 0;
    } catch (...) {
        return 1;
    }
}

}  // namespace

CompiledScript::CompiledScript(const char* codePagePath) : path_(codePagePath) {
    HextGlibScriptor scriptor;
    lua_State* state = scriptor.getLua(0);
    if (hextlua::loadChunk(state, codePagePath) != 0) {
        lua_tinker::print_error(state, "%s", lua_tostring(state, -1));
        hextlua::reportUnloaded(state, codePagePath);
    } else if (lua_dump(state, appendBytes, &bytecode_) != 0) {
        bytecode_.clear();
    }
}

CompiledScript::~CompiledScript() = default;

int CompiledScript::run(lua_State* state) const {
    const int top = lua_gettop(state);
    hextlua::pushHandler(state);
    // The chunk's own name stands in the bytes.
    int status = luaL_loadbuffer(state, bytecode_.data(), bytecode_.size(), "script");
    if (status == 0) {
        status = hextlua::protectedCall(state, 0, 0, top + 1);
    }
    if (status != 0 && !std::exchange(isToldToFail_, true)) {
        hextlua::reportUnloaded(state, path_.c_str());
    }
    lua_settop(state, top);
    return status;
}
