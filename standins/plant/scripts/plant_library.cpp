// The library `plant`: what scripts may read of the object behind an id. An id that does not open reads as an object
// without anything.
#include "plant/scripts/state.h"

#include "platform/bom_record.h"
#include "platform/hxcom.h"
#include "platform/smrtln.h"
#include "tolmar/text.h"

namespace hextlua {

namespace {

const HxDbObject* openArgument(lua_State* state) {
    HxDbObject* object = nullptr;
    const HxDbObjectId id = toObjectId(luaL_checknumber(state, 1));
    return id.isValid() && hxdbOpenObject(id, object, 3) == Hext::eOk ? object : nullptr;
}

std::span<const smrtln::BomRecord> recordsOf(const HxDbObject* object) {
    return object != nullptr ? smrtln::getObjectBomRecords(object) : std::span<const smrtln::BomRecord>();
}

int pushOrEmpty(lua_State* state, const char* text) {
    lua_pushstring(state, tolmar::textOrEmpty(text));
    return 1;
}

// The value in the text form that the exports read.
void pushValue(lua_State* state, const smrtln::BomRecord& record) {
    const KVParams params = smrtln::toKVParams(record);
    if (params.valueType == KVParams::Text) {
        pushOrEmpty(state, params.value.text);
        return;
    }
    std::string& text = contextOf(state).text;
    text.clear();
    appendKvText(text, params);
    pushText(state, text);
}

// plant.attribute(id, key)
int attribute(lua_State* state) {
    std::size_t length = 0;
    const char* text = luaL_checklstring(state, 2, &length);
    const std::string_view key(text, length);
    const auto keys = smrtln::bomKeys();
    for (const smrtln::BomRecord& record : recordsOf(openArgument(state))) {
        if (keys[record.key] == key) {
            pushValue(state, record);
            return 1;
        }
    }
    return pushOrEmpty(state, "");
}

// Sets a field of the row on top of the stack; `name` is the index of the field's name on the stack.
void setFromTop(lua_State* state, int row, int name) {
    lua_pushvalue(state, name);
    lua_insert(state, -2);
    lua_rawset(state, row);
}

// plant.attributes(id)
int attributes(lua_State* state) {
    const auto records = recordsOf(openArgument(state));
    lua_settop(state, 1);
    lua_pushliteral(state, "key");
    lua_pushliteral(state, "value");
    lua_pushliteral(state, "description");
    lua_createtable(state, static_cast<int>(records.size()), 0);
    int row = 0;
    for (const smrtln::BomRecord& record : records) {
        const KVParams params = smrtln::toKVParams(record);
        lua_createtable(state, 0, 3);
        pushText(state, params.key);
        setFromTop(state, 6, 2);
        pushValue(state, record);
        setFromTop(state, 6, 3);
        pushText(state, params.description);
        setFromTop(state, 6, 4);
        lua_rawseti(state, 5, ++row);
    }
    return 1;
}

// plant.displayName(id)
int displayName(lua_State* state) {
    const HxDbObject* object = openArgument(state);
    return pushOrEmpty(state, object != nullptr ? object->getDisplayName() : nullptr);
}

// plant.className(id)
int className(lua_State* state) {
    const HxDbObject* object = openArgument(state);
    return pushOrEmpty(state, object != nullptr ? object->isA()->name() : nullptr);
}

// plant.owner(id)
int owner(lua_State* state) {
    const HxDbObject* object = openArgument(state);
    const HxDbObjectId id = object != nullptr ? object->getOwnerId() : HxDbObjectId();
    if (!id.isValid()) {
        lua_pushnil(state);
    } else {
        lua_pushnumber(state, static_cast<lua_Number>(id.toInt()));
    }
    return 1;
}

}  // namespace

void openPlantLibrary(lua_State* state) {
    lua_createtable(state, 0, 5);
    setFunction(state, "attribute", guarded<attribute>);
    setFunction(state, "attributes", guarded<attributes>);
    setFunction(state, "displayName", guarded<displayName>);
    setFunction(state, "className", guarded<className>);
    setFunction(state, "owner", guarded<owner>);
    lua_setglobal(state, "plant");
}

}  // namespace hextlua
