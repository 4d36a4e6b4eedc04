#include "max/script.h"

#include "max/names.h"
#include "platform/hxcom.h"
#include "platform/left_out.h"

#include <lua.hpp>

#include <algorithm>
#include <cmath>
#include <limits>

namespace maxfile {

namespace {

constexpr const char* scriptFile = "\\plugins\\maxoutplugins.lua";

// The three numbers of the table at a stack index; false when one is missing or not finite.
bool readPoint(lua_State* state, int table, HxGePoint3D& point) {
    double numbers[3];
    if (!lua_istable(state, table) || !hextlua::getNumbers(state, table, numbers, 3) ||
        !std::all_of(std::begin(numbers), std::end(numbers), [](double n) { return std::isfinite(n); })) {
        return false;
    }
    point = {numbers[0], numbers[1], numbers[2]};
    return true;
}

// A text member of the table at a stack index, left on the stack.
std::string_view pushField(lua_State* state, int table, const char* key) {
    lua_pushstring(state, key);
    lua_rawget(state, table);
    const char* text = lua_tostring(state, -1);
    return text != nullptr ? std::string_view(text) : std::string_view();
}

}  // namespace

MaxScript::MaxScript() : compiled_((std::string(HextSystem::hextEnv()) + scriptFile).c_str()) {}

void MaxScript::reportMissing(const char* function) {
    if (missing_.insert(function).second) {
        reportLeftOut({nullptr, function, "script function"}, "maxoutplugins.lua does not define it");
    }
}

// One call of a script function of the object.
class ScriptedObject::Call {
public:
    Call(ScriptedObject& owner, const char* function, bool takesId = true)
        : owner_(owner), function_(function), call_(owner.scriptor_.getLua(0), function) {
        if (!call_.found()) {
            owner.script_.reportMissing(function);
        } else if (takesId) {
            lua_pushnumber(state(), static_cast<lua_Number>(owner.object_.objectId().toInt()));
        }
        if (!call_.run() && call_.found()) {
            owner.report("script result", std::string("the script function ") + function + " failed");
        }
    }

    lua_State* state() const { return call_.state(); }
    const lua_tinker::ScriptCall& result() const { return call_; }

    // Visits the entries 1, 2, ... of the resulting table, each at the stack index given; `visit` gives false for an
    // entry that it cannot use. Anything but a table has none.
    template <typename Visit>
    void forEach(const Visit& visit) {
        if (!call_.isTable() && !lua_isnil(state(), call_.result())) {
            owner_.report("script result", std::string(function_) + " gave no table");
        }
        const int count = call_.isTable() ? static_cast<int>(lua_objlen(state(), call_.result())) : 0;
        int skipped = 0;
        for (int i = 1; i <= count; ++i) {
            lua_rawgeti(state(), call_.result(), i);
            const int entry = lua_gettop(state());
            skipped += visit(entry) ? 0 : 1;
            lua_settop(state(), entry - 1);
        }
        if (skipped > 0) {
            owner_.report("entry", std::to_string(skipped) + " entries of the result of " + function_ +
                                       " have not the form that is wanted");
        }
    }

private:
    ScriptedObject& owner_;
    const char* function_;
    lua_tinker::ScriptCall call_;
};

ScriptedObject::ScriptedObject(MaxScript& script, const HxDbSmrtlnEntity& object)
    : script_(script), object_(object),
      isLoaded_(script.compiled().isCompiled() && script.compiled().run(scriptor_.getLua(0)) == 0) {}

void ScriptedObject::report(const char* what, const std::string& why) const {
    reportLeftOut({&object_, objectName(object_), what}, why);
}

bool ScriptedObject::isObjChangeMesh() {
    return Call(*this, "isObjChangeMesh").result().truth();
}

bool ScriptedObject::getObjCenterPt(HxGePoint3D& center) {
    const Call call(*this, "getObjCenterPt");
    if (!call.result().isTable()) {
        return false;
    }
    const bool isPoint = readPoint(call.state(), call.result().result(), center);
    if (!isPoint) {
        report("insertion point", "getObjCenterPt gave a table that does not hold three numbers");
    }
    return isPoint;
}

std::vector<HxGePoint3D> ScriptedObject::changeObj4Spline() {
    std::vector<HxGePoint3D> points;
    Call call(*this, "changeObj4Spline");
    call.forEach([&](int entry) {
        HxGePoint3D point;
        const bool isPoint = readPoint(call.state(), entry, point);
        if (isPoint) {
            points.push_back(point);
        }
        return isPoint;
    });
    return points;
}

int ScriptedObject::getPartNum() {
    const double number = Call(*this, "getPartNum", false).result().number();
    return number >= 1 ? static_cast<int>(std::min<double>(number, std::numeric_limits<int>::max())) : 0;
}

std::string ScriptedObject::getObjsize() {
    return std::string(Call(*this, "getObjsize").result().text());
}

void ScriptedObject::maxOutdata(const std::function<void(const PropertyRow&)>& visit) {
    Call call(*this, "maxOutdata");
    call.forEach([&](int entry) {
        if (!lua_istable(call.state(), entry)) {
            return false;
        }
        PropertyRow row;
        row.value = pushField(call.state(), entry, "value");
        row.key = pushField(call.state(), entry, "key");
        row.description = pushField(call.state(), entry, "description");
        visit(row);
        return true;
    });
}

}  // namespace maxfile
