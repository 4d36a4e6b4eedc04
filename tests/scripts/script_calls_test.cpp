// What exports ask of the project's script, and what the script may ask.
#include "fixture.h"

namespace {

TEST_F(ScriptTest, AttributesComeFromRowsAndMembers) {
    load(R"(
function getReference(arg)
  assert(type(arg) == "table" and arg.objid == 8 and next(arg, "objid") == nil)
  return {{key="a", value="x", description="label"}, {"b", 12}, {key="c", value=1.5}, {"d", true, "flag"},
          {key="e"}, {5, 9007199254740991}, {"g", -0.0}, {"h", 1e300},
          zeta="z", alpha=2, Beta=false}
end)");
    EXPECT_EQ(reference(), "a=x/label;b=12;c=1.500000;d=true/flag;e=;5=9007199254740991;g=0;h=" + kvText([] {
                               KVParams huge;
                               huge.valueType = KVParams::Double;
                               huge.value.doubleValue = 1e300;
                               return huge;
                           }()) +
                               ";Beta=false;alpha=2;zeta=z;");
    EXPECT_EQ(ui.printed, "");
    EXPECT_TRUE(tolmar::runReport().passed().empty());
}

TEST_F(ScriptTest, OddTablesGiveWhatCanBeRead) {
    load(R"(
local row = {"self", "cyclic"}; row[4] = row
local t = {[3]={"three",3}, [1]={"one",1}, [100]={"hundred",100}, [0]={"zero",0}, [-1]={"minus",1}, [1.5]={"half",1},
           [1e18]={"far",1}, [7]="no row", [8]={}, [9]={key={}}, [10]=row, [true]="flag", name="member", list={}}
t.t = t
function getReference() return setmetatable(t, {__index=function() error("not asked") end, __len=error}) end)");
    EXPECT_EQ(reference(), "one=1;three=3;self=cyclic;hundred=100;far=1;name=member;");
    ASSERT_EQ(tolmar::runReport().passed().size(), 1U);
    EXPECT_EQ(tolmar::runReport().passed()[0].id, 8);
    EXPECT_EQ(tolmar::runReport().passed()[0].why, "9 entries of the result of getReference are no attributes");
}

TEST_F(ScriptTest, OtherResultsGiveNothing) {
    for (const char* result : {"", "nil", "5", "\"text\"", "true", "print", "coroutine.create(function() end)", "{}"}) {
        load(std::string("function getReference() return ") + result + " end");
        EXPECT_EQ(reference(), "") << result;
    }
    EXPECT_EQ(ui.printed, "");
}

TEST_F(ScriptTest, AMillionEntriesAreRead) {
    load(R"(
function getReference()
  local t = {}
  for i = 1, 1000000 do t[i] = {"k" .. i, i} end
  return t
end)");
    ParamList list;
    callGetReference(HxDbObjectId(8), list);
    ASSERT_EQ(list.size(), 1000000U);
    EXPECT_EQ(list[999999].key, "k1000000");
    EXPECT_EQ(list[999999].value.int64Value, 1000000);
    EXPECT_EQ(list[0].key, "k1") << "storage does not move";
}

TEST_F(ScriptTest, NamesCustomFormAndOrder) {
    load(R"(
function getNodeName(arg) return arg.isplineobj and "line " .. arg.objid or arg.objid end
function checkExportCustom() return 0 end
function sortTreeNodes(ids)
  table.sort(ids, function(a, b) return a > b end)
  return {ids[1], "7", 0, -3, 2.5, 0/0, 1e300, {}, false, ids[#ids]}
end)");
    EXPECT_EQ(getNodeName(HxDbObjectId(9007199254740991), true), "line 9.007199254741e+15");
    EXPECT_EQ(getNodeName(HxDbObjectId(5), false), "5");
    EXPECT_TRUE(checkExportCustom()) << "0 is true in this language";
    std::vector<HxDbObjectId> sorted{HxDbObjectId(1)};
    sortTreeNodes({HxDbObjectId(8), HxDbObjectId(7), HxDbObjectId(12), HxDbObjectId(11)}, sorted);
    EXPECT_EQ(sorted, (std::vector<HxDbObjectId>{HxDbObjectId(1), HxDbObjectId(12), HxDbObjectId(7), HxDbObjectId(7)}));
    ASSERT_EQ(tolmar::runReport().passed().size(), 2U) << "the two managers that the script lost";
    EXPECT_EQ(tolmar::runReport().passed()[0].name, "P8");
    EXPECT_EQ(tolmar::runReport().passed()[1].id, 11);
}

TEST_F(ScriptTest, MissingFunctionsPrintTheirLine) {
    load("getReference = 5");
    std::vector<HxDbObjectId> sorted;
    sortTreeNodes({HxDbObjectId(8)}, sorted);
    EXPECT_TRUE(sorted.empty());
    EXPECT_EQ(ui.printed, "lua_tinker::call() attempt to call global `sortTreeNodes' (not a function)\n");
    ui.printed.clear();
    EXPECT_EQ(reference(), "");
    EXPECT_EQ(getNodeName(HxDbObjectId(8), true), "");
    EXPECT_FALSE(checkExportCustom());
    EXPECT_EQ(ui.printed, "lua_tinker::call() attempt to call global `getReference' (not a function)\n"
                          "lua_tinker::call() attempt to call global `getNodeName' (not a function)\n"
                          "lua_tinker::call() attempt to call global `checkExportCustom' (not a function)\n");
}

TEST_F(ScriptTest, AScriptThatDoesNotLoadSaysSoOnce) {
    EXPECT_EQ(getScriptHost(false), nullptr);
    EXPECT_EQ(ui.printed, "cannot open plugins/nvoutplugins.lua\n");
    EXPECT_NE(getScriptHost(false), nullptr) << "the host stays";
    EXPECT_EQ(reference(), "");
    EXPECT_EQ(getNodeName(HxDbObjectId(8), true), "");
    EXPECT_EQ(ui.printed, "cannot open plugins/nvoutplugins.lua\n");
    const std::pair<const char*, const char*> scripts[] = {
        {"x = 1\nx = = 2", "plugins/nvoutplugins.lua:2: unexpected symbol near '='\n"},
        {"\nerror('no luck')", "plugins/nvoutplugins.lua:2: no luck\n"},
        {"\x1BLuaQ", "plugins/nvoutplugins.lua: compiled chunks are not loaded\n"},
    };
    for (const auto& [text, message] : scripts) {
        ui.printed.clear();
        EXPECT_EQ(load(text), nullptr);
        EXPECT_EQ(ui.printed, message);
    }
    ui.printed.clear();
    EXPECT_NE(load("\xEF\xBB\xBF#!first line\nfunction getNodeName() error('x') end"), nullptr);
    getNodeName(HxDbObjectId(8), true);
    EXPECT_EQ(ui.printed, "plugins/nvoutplugins.lua:2: x\n");
}

TEST_F(ScriptTest, ReloadTakesTheChangedScriptAndKeepsTheState) {
    load("kept = 1\nfunction getNodeName() return 'old' .. kept end");
    script("kept = kept + 1\nfunction getNodeName() return 'new' .. kept end");
    EXPECT_NE(getScriptHost(false), nullptr);
    EXPECT_EQ(getNodeName(HxDbObjectId(8), true), "old1");
    EXPECT_NE(getScriptHost(true), nullptr);
    EXPECT_EQ(getNodeName(HxDbObjectId(8), true), "new2");
    script("broken(");
    EXPECT_EQ(getScriptHost(true), nullptr);
    EXPECT_EQ(getNodeName(HxDbObjectId(8), true), "new2");
    destroyScriptHost();
    ParamList list;
    getReferenceRvm(HxDbObjectId(8), list);
    EXPECT_FALSE(checkExportCustom());
    ui.printed.clear();
    getNodeName(HxDbObjectId(8), true);
    EXPECT_NE(ui.printed.find("plugins/nvoutplugins.lua:1:"), std::string::npos) << "only now is there a new host";
}

TEST_F(ScriptTest, PlantLibraryReadsObjects) {
    load(R"(
local rows = {}
for i, row in ipairs(plant.attributes(8)) do rows[i] = row.key .. "=" .. row.value .. "/" .. row.description end
attributes = table.concat(rows, ";")
one = plant.attribute(8, "n") .. "|" .. plant.attribute(8, "d") .. "|" .. plant.attribute(8, "N") .. "|"
names = plant.displayName(8) .. "|" .. plant.className(8) .. "|" .. plant.owner(8) .. "|" .. plant.displayName(7)
none = #plant.attributes(9) .. plant.attribute(99, "n") .. plant.displayName(0/0) .. plant.className(-1e300) ..
       tostring(plant.owner(9)) .. tostring(plant.owner(2^60))
wrong = tostring(pcall(plant.attribute, "x", "n")) .. tostring(pcall(plant.attributes)))");
    EXPECT_EQ(ui.printed, "");
    EXPECT_EQ(global("attributes"),
              "item=PIPE/Item;n=5/;d=100.000000/;n=6/;p=1.00000000\t2.00000000\t3.00000000/;=no key/");
    EXPECT_EQ(global("one"), "5|100.000000||");
    EXPECT_EQ(global("names"), "P8|HxDbPipeSpec|7|L-7");
    EXPECT_EQ(global("none"), "0nilnil");
    EXPECT_EQ(global("wrong"), "falsefalse");
    load("function getReference(a) return plant.attributes(a.objid) end");
    EXPECT_EQ(reference(7), "lineno=100-A;");
}

TEST_F(ScriptTest, FunctionsForScripts) {
    root.write("glib/VALVE.lua",
               R"(shape = {1, "two", {deep={x=1.5}}, [true]="t", f=print, co=coroutine.create(function() end)}
shape.me = shape; text = "no table"; local d = {}; bottom = d; for i = 1, 200 do d.d = {}; d = d.d end)");
    root.write("glib/BROKEN.lua", "error('broken item')");
    load(R"(
local t = hxcom.getSkeyParam("valve", 3, "shape")
copy = t[1] .. t[2] .. t[3].deep.x .. t[true] .. tostring(t.f) .. tostring(t.co) .. tostring(t.me == t)
local function count(...) return select("#", ...) end
local get = hxcom.getSkeyParam
counts = count(get("VALVE", 3)) .. count(get("VALVE", "3", "shape")) .. count(get(1, 3, "shape")) ..
         count(get("VALVE", 3, "text")) .. count(get("NONE", 3, "shape")) .. count(get("BROKEN", 3, "shape")) ..
         count(get("../plugins/nvoutplugins", 3, "get")) .. count(get("VALVE", 3, "bottom")) .. count(get("VALVE", 3, "shape"))
path = hxcom.getHextPath("\\temp\\hext")
_ALERT("one") hxcom.errorMsg("two"))");
    EXPECT_EQ(global("copy"), "1two1.5tnilniltrue");
    EXPECT_EQ(global("counts"), "000000001");
    EXPECT_EQ(global("path"), (root.path() / "temp/hext").string());
    EXPECT_EQ(ui.boxes, (std::vector<std::string>{"one", "two"}));
    EXPECT_NE(ui.printed.find("glib/BROKEN.lua:1: broken item\n"), std::string::npos);
}

TEST_F(ScriptTest, NodePrefixFromScriptThenFromProfile) {
    root.write("sys/hextProfile.ini", "[NodePrefix]\r\nHextZone=Z-\r\nHextSite=" + std::string(300, 's') + "\r\n");
    EXPECT_EQ(getNodePrefix("HextZone", nullptr, nullptr, nullptr), "Z-");
    EXPECT_EQ(getNodePrefix("HextSite", nullptr, nullptr, nullptr).size(), 255U);
    EXPECT_EQ(getNodePrefix("HextWorld", nullptr, nullptr, nullptr), "");
    EXPECT_EQ(ui.printed, "");
    destroyScriptHost();
    root.write("sys/hextInt2Str.lua", R"(function getNodePrefix(class, id, a, b)
  if class == "HextSite" then return nil elseif class == "HextWorld" then error("oh") end
  return class == "HextUnit" and "" or table.concat({class, id, tostring(a), tostring(b)}, ",")
end)");
    EXPECT_EQ(getNodePrefix("HextZone", nullptr, nullptr, "b"), "HextZone,0,nil,b");
    EXPECT_EQ(getNodePrefix("HextZone", openAs<HxDbObject>(HxDbObjectId(7)), "a", "b"), "HextZone,7,a,b");
    EXPECT_EQ(getNodePrefix("HextUnit", nullptr, nullptr, nullptr), "");
    EXPECT_EQ(getNodePrefix("HextSite", nullptr, nullptr, nullptr).size(), 255U);
    EXPECT_EQ(getNodePrefix("HextWorld", nullptr, nullptr, nullptr), "");
    EXPECT_EQ(ui.printed, "sys/hextInt2Str.lua:2: oh\n");
}

TEST_F(ScriptTest, ModulesAreFoundInTheInstallation) {
    root.write("Bin/Utils/Shared.lua", "return {name = ...}");
    root.write("plugins/own/part.lua", "loaded = (loaded or 0) + 1");
    root.write("plugins/bad.lua", "x = ");
    load(R"(
first = require("shared").name; require("own.part") require("own.part")
local ok, why = pcall(require, "bad"); bad = why
ok, why = pcall(require, "none"); none = why; cpath = package.cpath)");
    EXPECT_EQ(global("first"), "shared");
    EXPECT_EQ(global("loaded"), "1");
    EXPECT_NE(global("bad").find("plugins/bad.lua:1: unexpected symbol"), std::string::npos);
    EXPECT_EQ(global("cpath").substr(global("cpath").size() - 6), "\\?.dll");
    const std::string tried = global("none");
    EXPECT_LT(tried.find("Utils"), tried.find("sys"));
    EXPECT_LT(tried.find("sys"), tried.find("plugins"));
}

TEST_F(ScriptTest, CompiledScriptsRunInFreshStates) {
    script("n = (n or 0) + 1\nfunction isObjChangeMesh(id) return id > n end\nfunction fail() error({}) end");
    const CompiledScript compiled((root.path() / "plugins/nvoutplugins.lua").c_str());
    ASSERT_TRUE(compiled.isCompiled());
    for (int round = 0; round < 3; ++round) {
        HextGlibScriptor scriptor;
        ASSERT_EQ(compiled.run(scriptor.getLua(0)), 0);
        lua_tinker::ScriptCall call(scriptor.getLua(0), "isObjChangeMesh");
        lua_pushnumber(call.state(), 2);
        EXPECT_TRUE(call.run());
        EXPECT_TRUE(call.truth()) << "nothing is left of the round before";
        lua_tinker::ScriptCall failing(scriptor.getLua(0), "fail");
        EXPECT_FALSE(failing.run());
    }
    EXPECT_EQ(ui.printed.substr(0, ui.printed.find('\n')), "plugins/nvoutplugins.lua:3: error object is a table value");
    const CompiledScript none((root.path() / "none.lua").c_str());
    EXPECT_FALSE(none.isCompiled());
}

}  // namespace
