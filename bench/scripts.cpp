// Calls of the project's script through the bridge, each beside the same work on the bare Lua C API.
#include "plant/model.h"
#include "platform/hxcom.h"
#include "platform/script.h"
#include "scripts/script_host.h"
#include "tolmar/system.h"

#include <benchmark/benchmark.h>
#include <lua.hpp>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr const char* script = R"lua(
function sortTreeNodes(ids)
  local sorted, n = {}, #ids
  for i = 1, n do sorted[i] = ids[n + 1 - i] end
  return sorted
end
function getNodeName(arg)
  local id, get = arg.objid, plant.attribute
  get(id, "item") get(id, "itype") get(id, "size1") get(id, "size2") get(id, "end1")
  get(id, "end2") get(id, "sch") get(id, "rating") get(id, "material")
  return get(id, "name")
end
local rows = {}
for i = 1, 10 do rows[i] = {key = "key" .. i, value = "value" .. i, description = "label" .. i} end
function getReference(arg) return rows end
function getReferenceRvm(arg) return plant.attributes(arg.objid) end)lua";

constexpr const char* model = R"({"format":"tessaro-plant","version":1,"databases":[{"name":"M","root":1}],"objects":[
{"id":1,"class":"HextWorld","name":"W"},{"id":8,"class":"HxDbPipeSpec","in":1,"attrs":{"item":"ELBOW","itype":"LR",
"smrtln":"Arc","specname":"A1A","standard":"GB","stanserial":"1","end1":"BW","end2":"BW","size1":"100","size2":"100",
"sch":"40","rating":"150","thick":"6","radius":"152","angle":"90","material":"20","tag":"T","note":"","serial":"1",
"name":"elbow"}}]})";

// An installation root with the script above, and the model above, for the whole program.
class World {
public:
    World() : root_(std::filesystem::temp_directory_path() / ("tessaro-bench-" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(root_ / "plugins");
        std::ofstream(root_ / "plugins" / "nvoutplugins.lua") << script;
        tolmar::setInstallationRoot(root_.string());
        model_ = plant::loadModelText(model);
        plant::setCurrentModel(model_.model.get());
        if (!model_ || getScriptHost(true) == nullptr) {
            std::abort();
        }
    }
    ~World() {
        destroyScriptHost();
        plant::setCurrentModel(nullptr);
        std::filesystem::remove_all(root_);
    }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

private:
    std::filesystem::path root_;
    plant::LoadResult model_;
};

int constantText(lua_State* state) {
    benchmark::DoNotOptimize(lua_tonumber(state, 1));
    benchmark::DoNotOptimize(lua_tostring(state, 2));
    lua_pushlstring(state, "elbow", 5);
    return 1;
}

// A bare state with the same script, in which plant.attribute gives a constant.
class BareState {
public:
    BareState() : state_(luaL_newstate()) {
        luaL_openlibs(state_);
        lua_createtable(state_, 0, 1);
        lua_pushcfunction(state_, constantText);
        lua_setfield(state_, -2, "attribute");
        lua_setglobal(state_, "plant");
        if (luaL_dostring(state_, script) != 0) {
            std::abort();
        }
    }
    ~BareState() { lua_close(state_); }
    BareState(const BareState&) = delete;
    BareState& operator=(const BareState&) = delete;
    lua_State* get() { return state_; }

private:
    lua_State* state_;
};

void tenInTenOutFloor(benchmark::State& run) {
    BareState bare;
    lua_State* state = bare.get();
    for (auto _ : run) {
        lua_getglobal(state, "sortTreeNodes");
        lua_createtable(state, 10, 0);
        for (int i = 1; i <= 10; ++i) {
            lua_pushnumber(state, i);
            lua_rawseti(state, -2, i);
        }
        lua_pcall(state, 1, 1, 0);
        for (int i = 1; i <= 10; ++i) {
            lua_rawgeti(state, -1, i);
            benchmark::DoNotOptimize(lua_tonumber(state, -1));
            lua_pop(state, 1);
        }
        lua_pop(state, 1);
    }
}

void tenInTenOut(benchmark::State& run) {
    std::vector<HxDbObjectId> ids;
    for (int i = 1; i <= 10; ++i) {
        ids.emplace_back(i);
    }
    std::vector<HxDbObjectId> sorted;
    for (auto _ : run) {
        sorted.clear();
        sortTreeNodes(ids, sorted);
        benchmark::DoNotOptimize(sorted.data());
    }
}

void pushIdTable(lua_State* state) {
    lua_createtable(state, 0, 1);
    lua_pushnumber(state, 8);
    lua_setfield(state, -2, "objid");
}

void idInTenCallsBackFloor(benchmark::State& run) {
    BareState bare;
    lua_State* state = bare.get();
    for (auto _ : run) {
        lua_getglobal(state, "getNodeName");
        pushIdTable(state);
        lua_pcall(state, 1, 1, 0);
        benchmark::DoNotOptimize(lua_tostring(state, -1));
        lua_pop(state, 1);
    }
}

void idInTenCallsBack(benchmark::State& run) {
    for (auto _ : run) {
        benchmark::DoNotOptimize(getNodeName(HxDbObjectId(8), false));
    }
}

void idInTenRowsOutFloor(benchmark::State& run) {
    BareState bare;
    lua_State* state = bare.get();
    constexpr std::array fields = {"key", "value", "description"};
    for (auto _ : run) {
        lua_getglobal(state, "getReference");
        pushIdTable(state);
        lua_pcall(state, 1, 1, 0);
        for (int i = 1; i <= 10; ++i) {
            lua_rawgeti(state, -1, i);
            for (const char* field : fields) {
                lua_getfield(state, -1, field);
                benchmark::DoNotOptimize(lua_tostring(state, -1));
                lua_pop(state, 1);
            }
            lua_pop(state, 1);
        }
        lua_pop(state, 1);
    }
}

void idInTenRowsOut(benchmark::State& run) {
    ParamList list;
    for (auto _ : run) {
        callGetReference(HxDbObjectId(8), list);
        benchmark::DoNotOptimize(list.entries().data());
    }
}

void twentyAttributesThroughTheScript(benchmark::State& run) {
    ParamList list;
    for (auto _ : run) {
        getReferenceRvm(HxDbObjectId(8), list);
        benchmark::DoNotOptimize(list.entries().data());
    }
}

// A fresh state for one object, as MAXOUT needs it: the script read and compiled anew, and compiled once.
void freshStateFromFile(benchmark::State& run) {
    const std::string path = HextSystem::getFullHextName("plugins/nvoutplugins.lua");
    for (auto _ : run) {
        HextGlibScriptor scriptor;
        benchmark::DoNotOptimize(lua_tinker::dofile(scriptor.getLua(0), path.c_str()));
    }
}

void freshStateFromCompiledScript(benchmark::State& run) {
    const CompiledScript compiled(HextSystem::getFullHextName("plugins/nvoutplugins.lua"));
    for (auto _ : run) {
        HextGlibScriptor scriptor;
        benchmark::DoNotOptimize(compiled.run(scriptor.getLua(0)));
    }
}

void freshStateFloor(benchmark::State& run) {
    for (auto _ : run) {
        const BareState bare;
    }
}

BENCHMARK(tenInTenOutFloor);
BENCHMARK(tenInTenOut);
BENCHMARK(idInTenCallsBackFloor);
BENCHMARK(idInTenCallsBack);
BENCHMARK(idInTenRowsOutFloor);
BENCHMARK(idInTenRowsOut);
BENCHMARK(twentyAttributesThroughTheScript);
BENCHMARK(freshStateFloor);
BENCHMARK(freshStateFromFile);
BENCHMARK(freshStateFromCompiledScript);

}  // namespace

int main(int count, char** arguments) {
    const World world;
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
