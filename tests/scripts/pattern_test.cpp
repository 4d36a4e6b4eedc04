// The pattern functions for scripts give what the language's own give, which a state without them is asked for.
#include "fixture.h"
#include "support/comma_locale.h"

#include <clocale>
#include <random>

namespace {

// Runs the call in a state of the bare language and in one for scripts; both as text.
class BothStates {
public:
    BothStates() : plain_(luaL_newstate()) {
        luaL_openlibs(plain_);
        for (lua_State* state : {plain_, host_.getLua(0)}) {
            const char* asText = R"(
function asText(call)
  local out = {}
  local function add(...) for i = 1, select("#", ...) do out[#out + 1] = tostring((select(i, ...))) end end
  add(pcall(assert(loadstring("return " .. call))))
  return table.concat(out, "|")
end
function each(text, pattern) local all = {} for a, b in text:gmatch(pattern) do all[#all + 1] = tostring(a) .. ":" .. tostring(b) end
  return table.concat(all, ",") end)";
            EXPECT_EQ(luaL_loadstring(state, asText), 0);
            EXPECT_EQ(lua_pcall(state, 0, 0, 0), 0);
        }
    }
    ~BothStates() { lua_close(plain_); }
    BothStates(const BothStates&) = delete;
    BothStates& operator=(const BothStates&) = delete;

    void expectSame(const std::string& call) {
        const std::string wanted = textOf(plain_, call);
        EXPECT_EQ(textOf(host_.getLua(0), call), wanted) << call;
        differing_ += wanted.compare(0, 5, "false") == 0 ? 0 : 1;
    }
    // Calls so far that were no errors.
    int good() const { return differing_; }

private:
    static std::string textOf(lua_State* state, const std::string& call) {
        lua_getglobal(state, "asText");
        lua_pushlstring(state, call.data(), call.size());
        EXPECT_EQ(lua_pcall(state, 1, 1, 0), 0) << call << ": " << lua_tostring(state, -1);
        std::size_t length = 0;
        const char* text = lua_tolstring(state, -1, &length);
        std::string result(text, length);
        lua_pop(state, 1);
        return result;
    }

    lua_State* plain_;
    HextGlibScriptor host_;
    int differing_ = 0;
};

TEST(Patterns, MatchAsTheLanguageDoes) {
    const char* calls[] = {
        R"lua(("  key = value "):match("^%s*(%w+)%s*=%s*(.-)%s*$"))lua",
        R"lua(("a.b.c"):find(".", 1, true))lua",
        R"lua(("a.b.c"):find("b", -3))lua",
        R"lua(("abc"):find("", 10))lua",
        R"lua(("abc"):find("", -10))lua",
        R"lua(("abc"):find("c", 3, false))lua",
        R"lua(string.find("a\0b", "b"))lua",
        R"lua(("a\0b"):find("%z"))lua",
        R"lua(("x(a(b)c)y"):match("%b()"))lua",
        R"lua(("THE (quick) fox"):find("%f[%a]%a+%f[%A]"))lua",
        R"lua(("hello hello"):match("(%w+) %1"))lua",
        R"lua(("abc"):match("()b()"))lua",
        R"lua(each("k1=v1, k2=v2", "(%w+)=(%w+)"))lua",
        R"lua(each("abc", ""))lua",
        R"lua(each("^a^a", "^a"))lua",
        R"lua(("abc"):gsub("", "-"))lua",
        R"lua(("abc"):gsub("^a", "x"))lua",
        R"lua(("hello world"):gsub("o", "0", 1))lua",
        R"lua(("hello world"):gsub("(o)(.)", "%2%1%0%%"))lua",
        R"lua(("abc"):gsub("%w", {a = 1, b = false, c = "C"}))lua",
        R"lua(("abc"):gsub("%w", function(c) return c ~= "b" and c:upper() or nil end))lua",
        R"lua(("abc"):gsub("%w", function() return {} end))lua",
        R"lua(("abc"):gsub("%w", print, -1))lua",
        R"lua(("abc"):gsub("%w", true))lua",
        R"lua(("abc"):gsub("%w", "%9"))lua",
        R"lua(("abc"):gsub("%w", "%"))lua",
        R"lua((123):rep(2):gsub(2, 3))lua",
        R"lua(string.gsub(12, 1, 2))lua",
        R"lua(string.match("x", "%"))lua",
        R"lua(string.match("x", "[x"))lua",
        R"lua(string.match("x", "(x"))lua",
        R"lua(string.match("x", "x)"))lua",
        R"lua(string.match("x", "%1"))lua",
        R"lua(string.match("x", "%b"))lua",
        R"lua(string.match("x", "%f"))lua",
        R"lua(string.match("]-^x", "[]%-^]*"))lua",
        R"lua(string.match("x", ("()"):rep(33)))lua",
        R"lua(string.gfind("ab", "%w")())lua",
    };
    BothStates states;
    for (const char* call : calls) {
        states.expectSame(call);
    }
    EXPECT_GT(states.good(), 20);
}

TEST(Patterns, MatchAnythingAsTheLanguageDoes) {
    constexpr std::string_view patternLetters = "aab.%%[]^$*+-?()1fwWsb-z";
    constexpr std::string_view textLetters = "aab ]-^1.z";
    BothStates states;
    std::mt19937 random(7);
    const auto textOf = [&random](std::string_view letters, std::size_t most) {
        std::string text;
        for (std::size_t left = random() % most; left > 0; --left) {
            text += letters[random() % letters.size()];
        }
        return "\"" + text + "\"";
    };
    constexpr const char* functions[] = {"string.find(", "string.match(", "each(", "string.gsub("};
    for (int i = 0; i < 20'000 && !testing::Test::HasFailure(); ++i) {
        const std::size_t function = random() % std::size(functions);
        const std::string more = function == 3 ? ", " + textOf("%01xa", 4) : "";
        states.expectSame(functions[function] + textOf(textLetters, 10) + ", " + textOf(patternLetters, 8) + more +
                          ")");
    }
    EXPECT_GT(states.good(), 5000);
}

TEST_F(ScriptTest, NumbersHaveAPointInEveryLocale) {
    const CommaLocale locale(root.path());
    if (!locale.isThere()) {
        GTEST_SKIP() << "this machine cannot make a locale";
    }
    ASSERT_NE(std::setlocale(LC_ALL, ""), nullptr);
    char written[8];
    std::snprintf(written, sizeof written, "%.1f", 1.5);
    load(R"(
text = tostring(1.5) .. " " .. 2.5 .. " " .. string.format("%.1f", 3.5)
read = tonumber("4.5") + "1.5"
order = ("a" < "B") and "language" or "bytes"
function getNodeName() return 1.5 end
function getReference() return {{"a", 2.5}, {3.5, "x"}} end)");
    const std::string name = getNodeName(HxDbObjectId(8), true);
    const std::string text = global("text");
    const std::string order = global("order");
    lua_tinker::ScriptCall call(getScriptHost(false), "getNodeName");
    call.run();
    const double number = call.number();
    ParamList list;
    callGetReference(HxDbObjectId(8), list);
    const std::string key(list[1].key);
    std::setlocale(LC_ALL, "C");
    EXPECT_STREQ(written, "1,5") << "the locale is one with a comma";
    EXPECT_EQ(text, "1.5 2.5 3.5");
    EXPECT_EQ(global("read"), "6");
    EXPECT_EQ(order, "bytes");
    EXPECT_EQ(name, "1.5");
    EXPECT_EQ(number, 1.5);
    EXPECT_EQ(key, "3.5");
}

}  // namespace
