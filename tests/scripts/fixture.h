// A project script in an installation root, with a small model behind it.
#pragma once

#include "platform/script.h"
#include "scripts/script_host.h"
#include "support/test_support.h"

#include <lua.hpp>

inline constexpr const char* scriptModel = R"(
{"id":7,"class":"HextPipeline","in":1,"name":"L-7","attrs":{"lineno":"100-A"}},
{"id":8,"class":"HxDbPipeSpec","in":7,"name":"P8","attrs":[
  {"key":"item","value":"PIPE","description":"Item"},{"key":"n","value":5},{"key":"d","value":100.0,"type":2},
  {"key":"n","value":6},{"key":"p","value":[1,2,3]},{"key":"","value":"no key"}]},
{"id":9,"class":"HxDbPipeSpec","in":7,"available":false})";

class ScriptTest : public testing::Test {
protected:
    ~ScriptTest() override { destroyScriptHost(); }

    void script(const std::string& text) const { root.write("plugins/nvoutplugins.lua", text); }
    // Loads the script afresh into a new host.
    lua_State* load(const std::string& text) {
        destroyScriptHost();
        script(text);
        return getScriptHost(true);
    }
    // What the script's global text `name` holds.
    static std::string global(const char* name) {
        lua_State* state = getScriptHost(false);
        lua_getglobal(state, name);
        const char* text = lua_tostring(state, -1);
        const std::string result = text != nullptr ? text : "(no text)";
        lua_pop(state, 1);
        return result;
    }
    // The attributes that getReference gives, one "key=value;" each, with "/description" where there is one.
    static std::string reference(std::int64_t id = 8) {
        ParamList list;
        callGetReference(HxDbObjectId(id), list);
        return listed(list);
    }
    static std::string listed(const ParamList& list) {
        std::string text;
        for (const KVParams& entry : list) {
            text += std::string(entry.key) + "=" + kvText(entry);
            text += entry.description.empty() ? ";" : "/" + std::string(entry.description) + ";";
        }
        return text;
    }

    TestRoot root;
    TestUi ui;
    TestModel model{TestModel::withObjects(scriptModel)};
};
