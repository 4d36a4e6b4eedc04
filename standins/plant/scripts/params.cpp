// From a script's result table to a list of attributes.
#include "plant/scripts/state.h"

#include <algorithm>
#include <cmath>

namespace hextlua {

namespace {

constexpr double firstBeyondInt64 = 9223372036854775808.0;

bool isInt64(double number) {
    return number >= -firstBeyondInt64 && number < firstBeyondInt64 && number == std::floor(number);
}

std::string_view textAt(lua_State* state, int index) {
    std::size_t length = 0;
    const char* text = lua_tolstring(state, index, &length);
    return text != nullptr ? std::string_view(text, length) : std::string_view();
}

class TableReader {
public:
    TableReader(lua_State* state, int table, ParamList& out)
        : state_(state), table_(table > 0 ? table : lua_gettop(state) + 1 + table), fields_(lua_gettop(state)),
          out_(out) {
        lua_pushliteral(state_, "key");
        lua_pushliteral(state_, "value");
        lua_pushliteral(state_, "description");
    }
    ~TableReader() { lua_settop(state_, fields_); }
    TableReader(const TableReader&) = delete;
    TableReader& operator=(const TableReader&) = delete;

    void read() {
        readRowsInOrder();
        readLaterRows();
        readMembers();
    }

private:
    // Takes rows as long as their keys come as 1, 2, 3 ..., which is how arrays lie, and notes all other keys.
    void readRowsInOrder() {
        double expected = 1;
        lua_pushnil(state_);
        while (lua_next(state_, table_) != 0) {
            if (lua_type(state_, -2) == LUA_TNUMBER) {
                const double index = lua_tonumber(state_, -2);
                if (index == expected && later_.empty()) {
                    expected += 1;
                    addRow();
                } else {
                    noteRow(index);
                }
            } else {
                noteMember();
            }
            lua_pop(state_, 1);
        }
    }

    void noteRow(double index) {
        if (index >= 1 && isInt64(index)) {
            later_.push_back(index);
        } else {
            out_.countSkipped();
        }
    }

    void noteMember() {
        if (lua_type(state_, -2) == LUA_TSTRING && !lua_istable(state_, -1)) {
            members_.push_back(textAt(state_, -2));
        } else {
            out_.countSkipped();
        }
    }

    void readLaterRows() {
        std::sort(later_.begin(), later_.end());
        for (const double index : later_) {
            lua_pushnumber(state_, index);
            lua_rawget(state_, table_);
            addRow();
            lua_pop(state_, 1);
        }
    }

    void readMembers() {
        std::sort(members_.begin(), members_.end());
        for (const std::string_view key : members_) {
            pushText(state_, key);
            lua_rawget(state_, table_);
            addValue(key, -1, {});
            lua_pop(state_, 1);
        }
    }

    // The row is on top of the stack and stays there.
    void addRow() {
        const int row = lua_gettop(state_);
        if (lua_istable(state_, row)) {
            pushFields(row);
            if (lua_isstring(state_, row + 1) != 0) {
                addValue(textAt(state_, row + 1), row + 2, textAt(state_, row + 3));
                lua_settop(state_, row);
                return;
            }
            lua_settop(state_, row);
        }
        out_.countSkipped();
    }

    // Key, value and description: by name, or by place in a row without the name "key".
    void pushFields(int row) {
        for (int field = 1; field <= 3; ++field) {
            lua_pushvalue(state_, fields_ + field);
            lua_rawget(state_, row);
        }
        if (lua_isnil(state_, row + 1)) {
            lua_settop(state_, row);
            for (int place = 1; place <= 3; ++place) {
                lua_rawgeti(state_, row, place);
            }
        }
    }

    void addValue(std::string_view key, int value, std::string_view description) {
        switch (lua_type(state_, value)) {
        case LUA_TSTRING:
            return out_.addText(key, textAt(state_, value), description);
        case LUA_TNUMBER:
            return addNumber(key, lua_tonumber(state_, value), description);
        case LUA_TBOOLEAN:
            return out_.addText(key, lua_toboolean(state_, value) != 0 ? "true" : "false", description);
        default:
            return out_.addText(key, {}, description);
        }
    }

    void addNumber(std::string_view key, double number, std::string_view description) {
        if (isInt64(number)) {
            out_.addInteger(key, static_cast<std::int64_t>(number), description);
        } else {
            out_.addDouble(key, number, description);
        }
    }

    lua_State* state_;
    int table_;
    int fields_;  // the names of a row's fields stand on the stack behind this index
    ParamList& out_;
    std::vector<double> later_;
    std::vector<std::string_view> members_;  // the table keeps the texts
};

}  // namespace

bool getParams(lua_State* state, int table, ParamList& out, int) {
    out.clear();
    if (!lua_istable(state, table)) {
        return false;
    }
    const CLocale locale;
    TableReader(state, table, out).read();
    return true;
}

HxDbObjectId toObjectId(double number) {
    return isInt64(number) ? HxDbObjectId(static_cast<std::int64_t>(number)) : HxDbObjectId();
}

}  // namespace hextlua
