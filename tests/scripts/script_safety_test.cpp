// Scripts that would bring the program down, hang it or eat its memory.
#include "fixture.h"
#include "scripts/script_presence.h"
#include "tolmar/system.h"

namespace {

TEST_F(ScriptTest, AnErrorInOneCallLeavesTheNextOnesWell) {
    load(R"(
local calls = 0
function getReference()
  calls = calls + 1
  if calls == 2 then return {{"a", nil .. "x"}} end
  if calls == 3 then error() end
  return {{"call", calls}}
end)");
    EXPECT_EQ(reference(), "call=1;");
    EXPECT_EQ(reference(), "");
    EXPECT_EQ(reference(), "");
    EXPECT_EQ(reference(), "call=4;");
    EXPECT_EQ(ui.printed, "plugins/nvoutplugins.lua:5: attempt to concatenate a nil value\n"
                          "plugins/nvoutplugins.lua:6: error object is a nil value\n");
    ASSERT_EQ(tolmar::runReport().passed().size(), 2U);
    EXPECT_EQ(tolmar::runReport().passed()[0].what, "attributes");
    EXPECT_EQ(lua_gettop(getScriptHost(false)), 0);
}

// Told once, however often it is tried, and never where there is no script at all.
TEST_F(ScriptTest, AScriptThatDoesNotLoadStandsInTheReport) {
    const auto rows = [] {
        std::string text;
        for (const tolmar::PassedOver& row : tolmar::runReport().passed()) {
            text += row.what + " " + row.name + ": " + row.why + "\n";
        }
        return text;
    };
    getScriptHost(true);
    EXPECT_EQ(rows(), "");
    const std::pair<const char*, const char*> scripts[] = {
        {"x = = 1", "plugins/nvoutplugins.lua:1: unexpected symbol near '='"},
        {"error('why', 0)", "why"},
        {"error({})", "an error"},
    };
    for (const auto& [text, why] : scripts) {
        tolmar::runReport().clear();
        load(text);
        getScriptHost(true);
        EXPECT_EQ(rows(), std::string("script plugins/nvoutplugins.lua: does not load: ") + why + "\n");
    }
    tolmar::runReport().clear();
    root.write("a.lua", "error('why', 0)");
    const CompiledScript compiled((root.path() / "a.lua").c_str());
    for (int i = 0; i < 2; ++i) {
        HextGlibScriptor scriptor;
        EXPECT_NE(compiled.run(scriptor.getLua(0)), 0);
    }
    EXPECT_EQ(rows(), "script a.lua: does not load: why\n");
}

TEST_F(ScriptTest, EndlessRecursionIsAnError) {
    const char* bodies[] = {
        "local function f() return 1 + f() end return f()",
        "local t = setmetatable({}, {__index = function(t, k) return t[k + 1] end}) return t[1]",
        "local function f() return coroutine.wrap(f)() end return f()",
        "local function f(s) return (s:gsub('.', f)) end return f('x')",
        "return loadstring(string.rep('(', 100000))()",
        "return loadstring('return ' .. string.rep('-', 1000000) .. '1')()",
        "return ('a'):rep(200000):find(('.-'):rep(200000) .. 'b')",
        "local function f() return xpcall(error, f) end return f()",
        "local t = {} for i = 1, 1000000 do t = {t} end return t[1][1].x.y",
        "return unpack({}, 1, 1e8)",
        "return require('a' .. ('/'):rep(100000))",
    };
    for (const char* body : bodies) {
        ui.printed.clear();
        load(std::string("function getReference() return {{'done', 1}} end function getNodeName() ") + body + " end");
        EXPECT_EQ(getNodeName(HxDbObjectId(8), true), "") << body;
        EXPECT_EQ(reference(), "done=1;") << body;
    }
}

TEST_F(ScriptTest, TheLongestPatternFitsOnTheStack) {
    load(R"(
local subject = ("a"):rep(4096)
for _, item in ipairs{"a-", "a?", "a*"} do assert(subject:find(item:rep(2048))) end
function getNodeName() return tostring(("x"):rep(9000):find(("x"):rep(5000))) .. tostring(("%."):find("%.", 1, true)) end)");
    EXPECT_EQ(ui.printed, "");
    EXPECT_EQ(getNodeName(HxDbObjectId(8), true), "11");
}

TEST_F(ScriptTest, CancelStopsAScriptThatLoops) {
    const char* bodies[] = {
        "while true do end",
        "while true do pcall(function() while true do end end) end",
        "while true do xpcall(function() while true do end end, function() while true do end end) end",
        "while true do coroutine.resume(coroutine.create(function() while true do end end)) end",
        "local t = setmetatable({}, {__index = function() while true do end end}) while true do pcall(next, t.x) end",
        "local f f = function() local ok = pcall(f) while true do end end f()",
        "table.sort({3, 2, 1}, function() while true do end end)",
        "return (('a'):rep(3000):find(('.-'):rep(20) .. 'b'))",
        "return ('a'):rep(3000):match(('a*'):rep(20) .. 'b')",
        "return ('a'):rep(3000):gsub(('(a?)'):rep(30) .. '.*.*.*.*.*b', '')",
        "for x in ('a'):rep(3000):gmatch(('.-'):rep(20) .. '%f[b]') do end",
        "return ('('):rep(1e6):find('%b()', 1)",
    };
    for (const char* body : bodies) {
        ui.cancelAt = 0;
        load(std::string("function getReference() return {{'done', 1}} end\nfunction getNodeName()\n") + body + " end");
        ui.printed.clear();
        ui.cancelAsked = 0;
        ui.cancelAt = 3;
        EXPECT_EQ(getNodeName(HxDbObjectId(8), true), "") << body;
        EXPECT_EQ(ui.printed, "plugins/nvoutplugins.lua:3: script stopped by cancel\n") << body;
        ui.cancelAt = 0;
        EXPECT_EQ(reference(), "done=1;") << "the next call is not stopped";
    }
}

TEST_F(ScriptTest, MemoryHasALimit) {
    const char* bodies[] = {
        "local t = {} while true do t[#t + 1] = ('x'):rep(1000) .. #t end",
        "local s = 'x' while true do s = s .. s end",
        "return ('x'):rep(1e12)",
        "return ('x'):rep(3e7)",
        "kept = kept or {} for i = 1, 1e9 do kept[i] = {} end",
    };
    for (const char* body : bodies) {
        ui.printed.clear();
        HextGlibScriptor scriptor;
        scriptor.setMemoryLimit(16 << 20);
        root.write("a.lua", std::string("function f() ") + body + " end function g() return 'well' end");
        ASSERT_EQ(scriptor.loadFile((root.path() / "a.lua").c_str(), 0), 0);
        for (int round = 0; round < 2; ++round) {
            lua_tinker::ScriptCall call(scriptor.getLua(0), "f");
            EXPECT_FALSE(call.run()) << body;
        }
        EXPECT_NE(ui.printed, "");
        lua_pushnil(scriptor.getLua(0));
        lua_setglobal(scriptor.getLua(0), "kept");
        lua_gc(scriptor.getLua(0), LUA_GCCOLLECT, 0);
        lua_tinker::ScriptCall call(scriptor.getLua(0), "g");
        EXPECT_TRUE(call.run()) << body;
        EXPECT_EQ(call.text(), "well");
    }
}

TEST_F(ScriptTest, WhatScriptsMayNotHave) {
    load(R"lua(
function f() end
local bad = {}
for _, call in ipairs{"os.exit(1)", "os.execute('true')", "os.setlocale('C')", "io.popen('true')", "io.read()",
                      "io.input()", "io.output('x')", "io.lines()", "package.loadlib('x', 'y')", "newproxy(true)",
                      "debug.sethook()", "debug.getregistry()", "io.stdin:read()", "getmetatable(io.stderr).x()",
                      "assert(loadstring(string.dump(f)))", "assert(loadstring('\\27Lua'))",
                      "assert(load(function() return '\\27Lua' end))", "assert(loadfile('none.lua'))",
                      "require('debug').getupvalue(f, 1)", "io.open('x', 'w')", "io.open('x', 'ab')",
                      "io.open('x', 'r+')", "io.tmpfile()", "os.remove('x')", "os.rename('x', 'y')", "os.tmpname()"} do
  local ok, why = pcall(assert(loadstring(call)))
  if ok then bad[#bad + 1] = call end
end
result = table.concat(bad, " ")
print("said", 1, nil) io.write("a", 2, "\n") io.stdout:write("")
where = debug.getinfo(1, "l").currentline)lua");
    EXPECT_EQ(ui.printed, "said\t1\tnil\na2\n");
    EXPECT_EQ(global("result"), "");
    EXPECT_EQ(global("where"), "16");
}

TEST_F(ScriptTest, OnlyTrustedScriptsWriteFiles) {
    root.write("there.txt", "line 1\nline 2\n");
    const std::string folder = root.path().string() + "/";
    const std::string script = "local file = io.open('" + folder + "there.txt') first = file:read() file:close()\n" +
                               "for line in io.lines('" + folder + "there.txt') do last = line end\n" +
                               "assert(io.open('" + folder + "none.txt', 'rb') == nil)\n" + "local file = io.open('" +
                               folder + "made.txt', 'w') file:write('made') file:close()\n" + "assert(os.rename('" +
                               folder + "made.txt', '" + folder + "moved.txt'))\n";
    const auto isMoved = [this] { return std::filesystem::exists(root.path() / "moved.txt"); };
    load(script);
    EXPECT_EQ(global("first"), "line 1");
    EXPECT_EQ(global("last"), "line 2");
    EXPECT_FALSE(isMoved());
    EXPECT_NE(ui.printed.find("nvoutplugins.lua:4: io.open for writing is not available"), std::string::npos)
        << ui.printed;
    tolmar::setScriptsTrusted(true);
    tolmar::setDryRun(true);
    load(script);
    EXPECT_FALSE(isMoved()) << "a dry run leaves everything as it is";
    tolmar::setDryRun(false);
    load(script);
    EXPECT_TRUE(isMoved());
    const std::string late = "function getNodeName() return (pcall(os.remove, '" + folder + "moved.txt')) end";
    load(late);
    tolmar::setScriptsTrusted(false);
    lua_tinker::ScriptCall(getScriptHost(false), "getNodeName").run();
    EXPECT_TRUE(isMoved()) << "trust that is taken back holds for a state that is there already";
}

// The platform gives paths in a place of its own, which the script's own question for a path overwrites.
TEST_F(ScriptTest, AScriptThatAsksForPathsIsReportedByItsOwnName) {
    load("here = hxcom.getHextPath('sys/other.lua') hxcom.getHextPath(('x'):rep(5000)) error('late', 0)");
    EXPECT_EQ(global("here"), (root.path() / "sys/other.lua").string());
    ASSERT_EQ(tolmar::runReport().passed().size(), 1U);
    EXPECT_EQ(tolmar::runReport().passed()[0].name, "plugins/nvoutplugins.lua");
}

TEST_F(ScriptTest, GlobalsThatRaiseErrorsAreNotAsked) {
    load(R"(
function getNodeName() return "name" end
setmetatable(_G, {__index = function(_, key) error("no global " .. key) end,
                  __newindex = function(_, key) error("no new global " .. key) end}))");
    EXPECT_TRUE(scriptHasFunction("getNodeName"));
    EXPECT_FALSE(scriptHasFunction("getReference"));
    EXPECT_EQ(getNodeName(HxDbObjectId(8), true), "name");
    EXPECT_EQ(reference(), "");
}

class SpeakingUi final : public TestUi {
public:
    void print(const std::string& text) override { std::fputs(text.c_str(), stderr); }
};

TEST_F(ScriptTest, AnErrorOutsideOfACallIsSaidAndEndsWithStatusFour) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto raise = [] {
        const SpeakingUi speaking;
        const HextGlibScriptor scriptor;
        lua_pushliteral(scriptor.getLua(0), "nobody listens");
        lua_error(scriptor.getLua(0));
    };
    EXPECT_EXIT(raise(), testing::ExitedWithCode(4), "script host: nobody listens");
}

TEST_F(ScriptTest, CallsThatWouldRunOutOfBoundsAreErrors) {
    const std::pair<const char*, const char*> cases[] = {
        {"unpack({}, -1, 2147483647)", "too many results to unpack"},
        {"unpack({}, -2147483648, 2147483647)", "too many results to unpack"},
        {"unpack({}, 1, 8001)", "too many results to unpack"},
        {"unpack(setmetatable({}, {__len = error}), 2^40)", "nothing"},
        {"assert(select('#', unpack({1, nil, 3}, 1, 3)) == 3 and select('#', unpack({}, 3, 2)) == 0)", "nothing"},
        {"table.insert({}, -2^31, 1)", "(position out of bounds)"},
        {"table.insert({}, -1, 1)", "(position out of bounds)"},
        {"local t = {1, 2} table.insert(t, 1, 0) table.insert(t, 9) assert(table.concat(t) == '0129')", "nothing"},
        {"table.insert({})", "wrong number of arguments to 'insert'"},
    };
    for (const auto& [call, why] : cases) {
        load(std::string("ok, why = pcall(function() ") + call + " end) why = ok and 'nothing' or why");
        EXPECT_NE(global("why").find(why), std::string::npos) << call << ": " << global("why");
    }
}

// Lets a message box fail as a cancelled dialog does.
class ThrowingUi final : public TestUi {
public:
    void messageBox(const std::string&, const std::string&) override { throw std::runtime_error("no screen"); }
};

TEST_F(ScriptTest, AnExceptionInAFunctionForScriptsIsAScriptError) {
    ThrowingUi throwing;
    load("ok, why = pcall(_ALERT, 'x')\nfunction getNodeName() _ALERT('y') return 'unreached' end");
    EXPECT_EQ(global("why"), "no screen");
    EXPECT_EQ(getNodeName(HxDbObjectId(8), true), "");
    EXPECT_EQ(throwing.printed, "plugins/nvoutplugins.lua:2: no screen\n");
}

TEST_F(ScriptTest, CallsLeaveNothingBehind) {
    lua_State* state = load(R"(
function getReference(a) return {{"id", a.objid}} end function getNodeName(a) return "n" end
function sortTreeNodes(t) return t end)");
    ParamList list;
    std::vector<HxDbObjectId> sorted;
    int before = 0;
    for (int i = 0; i < 20000; ++i) {
        callGetReference(HxDbObjectId(i + 1), list);
        getNodeName(HxDbObjectId(i + 1), false);
        sorted.clear();
        sortTreeNodes({HxDbObjectId(8)}, sorted);
        if (i == 100) {
            lua_gc(state, LUA_GCCOLLECT, 0);
            before = lua_gc(state, LUA_GCCOUNT, 0);
        }
    }
    lua_gc(state, LUA_GCCOLLECT, 0);
    EXPECT_LE(lua_gc(state, LUA_GCCOUNT, 0), before + 1);
    EXPECT_EQ(listed(list), "id=20000;");
}

}  // namespace
