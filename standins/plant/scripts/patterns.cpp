// The pattern functions of the string library. They match as the language's own do, but look now and then whether the
// user has asked to stop: a pattern with several repetitions can take hours on a long text.
//
// Nothing here has a destructor, since a script error jumps over it.
#include "plant/scripts/state.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace hextlua {

namespace {

// The matcher calls itself once for each repeated item of a pattern.
constexpr std::size_t longestPattern = 4096;
constexpr const char* specialCharacters = "^$*+?.([%-";
constexpr char escape = '%';
constexpr std::ptrdiff_t unfinished = -1;
constexpr std::ptrdiff_t onlyPlace = -2;
// About a millisecond.
constexpr std::size_t stepsBetweenLooks = 100'000;

unsigned char byteOf(char c) {
    return static_cast<unsigned char>(c);
}

struct ByteClass {
    char letter;
    int (*isOf)(int byte);
};
constexpr ByteClass byteClasses[] = {
    {'a', std::isalpha},  {'c', std::iscntrl},
    {'d', std::isdigit},  {'l', std::islower},
    {'p', std::ispunct},  {'s', std::isspace},
    {'u', std::isupper},  {'w', std::isalnum},
    {'x', std::isxdigit}, {'z', [](int byte) { return byte == 0 ? 1 : 0; }},
};

// Whether a byte is of the class that a letter behind "%" stands for, or with a capital, is not; any other character
// stands for itself.
bool isOfClass(int byte, int letter) {
    for (const ByteClass& known : byteClasses) {
        if (known.letter == std::tolower(letter)) {
            return (known.isOf(byte) != 0) != (std::isupper(letter) != 0);
        }
    }
    return letter == byte;
}

// Whether a byte is in the set from "[" at `set` to "]" at `last`.
bool isInSet(int byte, const char* set, const char* last) {
    const bool isWanted = set[1] != '^';
    set += isWanted ? 0 : 1;
    while (++set < last) {
        if (*set == escape) {
            ++set;
            if (isOfClass(byte, byteOf(*set))) {
                return isWanted;
            }
        } else if (set[1] == '-' && set + 2 < last) {
            set += 2;
            if (byteOf(set[-2]) <= byte && byte <= byteOf(*set)) {
                return isWanted;
            }
        } else if (byteOf(*set) == byte) {
            return isWanted;
        }
    }
    return !isWanted;
}

// Matches patterns against one text. A pattern ends at its first zero byte; `match` and its parts take a place in the
// text and one in the pattern, and give where the match ends, null when there is none.
class Matcher {
public:
    Matcher(lua_State* state, const char* text, std::size_t length) : state_(state), text_(text), end_(text + length) {}

    const char* end() const { return end_; }
    const char* matchAt(const char* at, const char* pattern) {
        captureCount_ = 0;
        return match(at, pattern);
    }

    // Pushes all captures; the whole match when there are none and `start` is given.
    int pushCaptures(const char* start, const char* end) {
        const int count = captureCount_ == 0 && start != nullptr ? 1 : captureCount_;
        luaL_checkstack(state_, count, "too many captures");
        for (int i = 0; i < count; ++i) {
            pushCapture(i, start, end);
        }
        return count;
    }

    void pushCapture(int number, const char* start, const char* end) {
        if (number >= captureCount_) {
            if (number != 0) {
                luaL_error(state_, "invalid capture index");
            }
            lua_pushlstring(state_, start, static_cast<std::size_t>(end - start));
            return;
        }
        const Capture& capture = captures_[number];
        if (capture.length == unfinished) {
            luaL_error(state_, "unfinished capture");
        }
        if (capture.length == onlyPlace) {
            lua_pushinteger(state_, capture.start - text_ + 1);
        } else {
            lua_pushlstring(state_, capture.start, static_cast<std::size_t>(capture.length));
        }
    }

private:
    struct Capture {
        const char* start;
        std::ptrdiff_t length;
    };

    void count(std::ptrdiff_t steps) {
        steps_ += static_cast<std::size_t>(steps);
        if (steps_ >= stepsBetweenLooks) {
            steps_ = 0;
            stopWhenCancelled(state_);
        }
    }

    // Where the single item of a pattern ends.
    const char* itemEnd(const char* pattern) {
        const char first = *pattern++;
        if (first == escape) {
            if (*pattern == '\0') {
                luaL_error(state_, "malformed pattern (ends with '%%')");
            }
            return pattern + 1;
        }
        if (first != '[') {
            return pattern;
        }
        pattern += *pattern == '^' ? 1 : 0;
        do {
            if (*pattern == '\0') {
                luaL_error(state_, "malformed pattern (missing ']')");
            }
            if (*pattern++ == escape && *pattern != '\0') {
                ++pattern;
            }
        } while (*pattern != ']');
        return pattern + 1;
    }

    bool isItem(const char* at, const char* item, const char* itemEnd) const {
        if (at >= end_) {
            return false;
        }
        switch (*item) {
        case '.':
            return true;
        case escape:
            return isOfClass(byteOf(*at), byteOf(item[1]));
        case '[':
            return isInSet(byteOf(*at), item, itemEnd - 1);
        default:
            return *item == *at;
        }
    }

    const char* match(const char* at, const char* pattern) {
        for (;;) {
            count(1);
            switch (*pattern) {
            case '\0':
                return at;
            case '(':
                return pattern[1] == ')' ? beginCapture(at, pattern + 2, onlyPlace)
                                         : beginCapture(at, pattern + 1, unfinished);
            case ')':
                return endCapture(at, pattern + 1);
            case '$':
                if (pattern[1] == '\0') {
                    return at == end_ ? at : nullptr;
                }
                break;
            case escape:
                if (pattern[1] == 'b' || pattern[1] == 'f' || std::isdigit(byteOf(pattern[1])) != 0) {
                    if (!passSpecial(at, pattern)) {
                        return nullptr;
                    }
                    continue;
                }
                break;
            default:
                break;
            }
            const char* const behind = itemEnd(pattern);
            if (*behind == '*' || *behind == '+' || *behind == '-') {
                return matchRepeated(at, pattern, behind);
            }
            const bool isHere = isItem(at, pattern, behind);
            if (*behind == '?') {
                const char* found = isHere ? match(at + 1, behind + 1) : nullptr;
                if (found != nullptr) {
                    return found;
                }
                pattern = behind + 1;
            } else if (isHere) {
                ++at;
                pattern = behind;
            } else {
                return nullptr;
            }
        }
    }

    // Balanced pairs "%bxy", borders "%f[set]" and earlier captures "%1": puts both places behind; false for no match.
    bool passSpecial(const char*& at, const char*& pattern) {
        const char kind = pattern[1];
        pattern += 2;
        if (kind == 'b') {
            at = matchBalance(at, pattern);
            pattern += 2;
            return at != nullptr;
        }
        if (kind == 'f') {
            return passBorder(at, pattern);
        }
        const int number = capturedBefore(kind);
        const Capture& capture = captures_[number];
        if (capture.length < 0 || end_ - at < capture.length) {
            return false;
        }
        count(capture.length);
        const bool isSame = std::memcmp(capture.start, at, static_cast<std::size_t>(capture.length)) == 0;
        at += capture.length;
        return isSame;
    }

    int capturedBefore(char digit) {
        const int number = digit - '1';
        if (number < 0 || number >= captureCount_ || captures_[number].length == unfinished) {
            luaL_error(state_, "invalid capture index");
        }
        return number;
    }

    bool passBorder(const char* at, const char*& pattern) {
        if (*pattern != '[') {
            luaL_error(state_, "missing '[' after '%%f' in pattern");
        }
        const char* const set = pattern;
        pattern = itemEnd(set);
        const int before = at == text_ ? 0 : byteOf(at[-1]);
        return !isInSet(before, set, pattern - 1) && isInSet(byteOf(*at), set, pattern - 1);
    }

    const char* matchBalance(const char* at, const char* pair) {
        if (pair[0] == '\0' || pair[1] == '\0') {
            luaL_error(state_, "unbalanced pattern");
        }
        if (at >= end_ || *at != pair[0]) {
            return nullptr;
        }
        const char* const start = at;
        for (int open = 1; ++at < end_;) {
            if (*at == pair[1]) {
                if (--open == 0) {
                    break;
                }
            } else if (*at == pair[0]) {
                ++open;
            }
        }
        count(at - start);
        return at < end_ ? at + 1 : nullptr;
    }

    const char* matchRepeated(const char* at, const char* item, const char* behind) {
        if (*behind == '-') {
            return matchFewest(at, item, behind);
        }
        if (*behind == '*') {
            return matchMost(at, item, behind);
        }
        return isItem(at, item, behind) ? matchMost(at + 1, item, behind) : nullptr;
    }

    const char* matchMost(const char* at, const char* item, const char* behind) {
        std::ptrdiff_t times = 0;
        while (isItem(at + times, item, behind)) {
            ++times;
        }
        count(times);
        for (; times >= 0; --times) {
            if (const char* found = match(at + times, behind + 1)) {
                return found;
            }
        }
        return nullptr;
    }

    const char* matchFewest(const char* at, const char* item, const char* behind) {
        for (;; ++at) {
            if (const char* found = match(at, behind + 1)) {
                return found;
            }
            if (!isItem(at, item, behind)) {
                return nullptr;
            }
        }
    }

    const char* beginCapture(const char* at, const char* pattern, std::ptrdiff_t length) {
        if (captureCount_ >= LUA_MAXCAPTURES) {
            luaL_error(state_, "too many captures");
        }
        captures_[captureCount_++] = {at, length};
        const char* found = match(at, pattern);
        captureCount_ -= found == nullptr ? 1 : 0;
        return found;
    }

    const char* endCapture(const char* at, const char* pattern) {
        int number = captureCount_ - 1;
        while (number >= 0 && captures_[number].length != unfinished) {
            --number;
        }
        if (number < 0) {
            luaL_error(state_, "invalid pattern capture");
        }
        captures_[number].length = at - captures_[number].start;
        const char* found = match(at, pattern);
        if (found == nullptr) {
            captures_[number].length = unfinished;
        }
        return found;
    }

    lua_State* state_;
    const char* text_;
    const char* end_;
    std::size_t steps_ = 0;
    int captureCount_ = 0;
    Capture captures_[LUA_MAXCAPTURES];
};

Matcher matcherOf(lua_State* state, int index) {
    std::size_t length = 0;
    const char* text = luaL_checklstring(state, index, &length);
    return {state, text, length};
}

const char* checkPattern(lua_State* state, bool isPlain = false) {
    std::size_t length = 0;
    const char* pattern = luaL_checklstring(state, 2, &length);
    if (length > longestPattern && !isPlain) {
        luaL_argerror(state, 2, "pattern too long");
    }
    return pattern;
}

// Where a search begins: the third argument counts from 1, and from the end when it is negative.
std::ptrdiff_t startOfSearch(lua_State* state, std::ptrdiff_t length) {
    const std::ptrdiff_t given = luaL_optinteger(state, 3, 1);
    return std::clamp<std::ptrdiff_t>(given < 0 ? given + length : given - 1, 0, length);
}

int findPlain(lua_State* state, const char* text, std::size_t length, std::ptrdiff_t start) {
    std::size_t soughtLength = 0;
    const char* sought = lua_tolstring(state, 2, &soughtLength);
    const void* found = ::memmem(text + start, length - static_cast<std::size_t>(start), sought, soughtLength);
    if (found == nullptr) {
        lua_pushnil(state);
        return 1;
    }
    const std::ptrdiff_t place = static_cast<const char*>(found) - text;
    lua_pushinteger(state, place + 1);
    lua_pushinteger(state, place + static_cast<std::ptrdiff_t>(soughtLength));
    return 2;
}

// The first match at or behind a place, by an unanchored search where the pattern has no "^".
int search(lua_State* state, std::ptrdiff_t start, bool givesPlace) {
    Matcher matcher = matcherOf(state, 1);
    const char* const text = lua_tostring(state, 1);
    const char* pattern = lua_tostring(state, 2);
    const bool isAnchored = *pattern == '^';
    pattern += isAnchored ? 1 : 0;
    for (const char* at = text + start; at <= matcher.end(); ++at) {
        if (const char* end = matcher.matchAt(at, pattern)) {
            if (!givesPlace) {
                return matcher.pushCaptures(at, end);
            }
            lua_pushinteger(state, at - text + 1);
            lua_pushinteger(state, end - text);
            return matcher.pushCaptures(nullptr, nullptr) + 2;
        }
        if (isAnchored) {
            break;
        }
    }
    lua_pushnil(state);
    return 1;
}

// string.find. A text to find may be of any length where it is taken as it is.
int scriptFind(lua_State* state) {
    std::size_t length = 0;
    const char* text = luaL_checklstring(state, 1, &length);
    const bool isPlain =
        lua_toboolean(state, 4) != 0 || std::strpbrk(luaL_checkstring(state, 2), specialCharacters) == nullptr;
    checkPattern(state, isPlain);
    const std::ptrdiff_t start = startOfSearch(state, static_cast<std::ptrdiff_t>(length));
    return isPlain ? findPlain(state, text, length, start) : search(state, start, true);
}

int scriptMatch(lua_State* state) {
    std::size_t length = 0;
    luaL_checklstring(state, 1, &length);
    checkPattern(state);
    return search(state, startOfSearch(state, static_cast<std::ptrdiff_t>(length)), false);
}

// Upvalues: text, pattern, where the next search begins.
int nextMatch(lua_State* state) {
    Matcher matcher = matcherOf(state, lua_upvalueindex(1));
    const char* const text = lua_tostring(state, lua_upvalueindex(1));
    const char* const pattern = lua_tostring(state, lua_upvalueindex(2));
    for (const char* at = text + lua_tointeger(state, lua_upvalueindex(3)); at <= matcher.end(); ++at) {
        if (const char* end = matcher.matchAt(at, pattern)) {
            lua_pushinteger(state, end - text + (end == at ? 1 : 0));
            lua_replace(state, lua_upvalueindex(3));
            return matcher.pushCaptures(at, end);
        }
    }
    return 0;
}

int scriptMatches(lua_State* state) {
    luaL_checkstring(state, 1);
    checkPattern(state);
    lua_settop(state, 2);
    lua_pushinteger(state, 0);
    lua_pushcclosure(state, nextMatch, 3);
    return 1;
}

// The replacement text on the stack at 3, with "%0" to "%9" filled in.
void addText(lua_State* state, luaL_Buffer& out, Matcher& matcher, const char* start, const char* end) {
    std::size_t length = 0;
    const char* text = lua_tolstring(state, 3, &length);
    for (std::size_t i = 0; i < length; ++i) {
        if (text[i] != escape) {
            luaL_addchar(&out, text[i]);
            continue;
        }
        ++i;
        if (std::isdigit(byteOf(text[i])) == 0) {
            luaL_addchar(&out, text[i]);
        } else if (text[i] == '0') {
            luaL_addlstring(&out, start, static_cast<std::size_t>(end - start));
        } else {
            matcher.pushCapture(text[i] - '1', start, end);
            luaL_addvalue(&out);
        }
    }
}

// What a function or table gives for the match; nil and false leave it as it is.
void addValue(lua_State* state, luaL_Buffer& out, Matcher& matcher, const char* start, const char* end) {
    if (lua_isfunction(state, 3)) {
        lua_pushvalue(state, 3);
        lua_call(state, matcher.pushCaptures(start, end), 1);
    } else {
        matcher.pushCapture(0, start, end);
        lua_gettable(state, 3);
    }
    if (lua_toboolean(state, -1) == 0) {
        lua_pop(state, 1);
        lua_pushlstring(state, start, static_cast<std::size_t>(end - start));
    } else if (lua_isstring(state, -1) == 0) {
        luaL_error(state, "invalid replacement value (a %s)", luaL_typename(state, -1));
    }
    luaL_addvalue(&out);
}

void checkReplacement(lua_State* state) {
    const int type = lua_type(state, 3);
    luaL_argcheck(state, type == LUA_TNUMBER || type == LUA_TSTRING || type == LUA_TFUNCTION || type == LUA_TTABLE, 3,
                  "string/function/table expected");
}

int scriptReplace(lua_State* state) {
    Matcher matcher = matcherOf(state, 1);
    const char* at = lua_tostring(state, 1);
    const char* pattern = checkPattern(state);
    checkReplacement(state);
    const lua_Integer most = luaL_optinteger(state, 4, matcher.end() - at + 1);
    const bool isText = lua_isstring(state, 3) != 0;
    const bool isAnchored = *pattern == '^';
    pattern += isAnchored ? 1 : 0;
    luaL_Buffer out;
    luaL_buffinit(state, &out);
    lua_Integer count = 0;
    while (count < most) {
        const char* const end = matcher.matchAt(at, pattern);
        if (end != nullptr) {
            ++count;
            isText ? addText(state, out, matcher, at, end) : addValue(state, out, matcher, at, end);
        }
        if (end != nullptr && end > at) {
            at = end;
        } else if (at < matcher.end()) {
            luaL_addchar(&out, *at++);
        } else {
            break;
        }
        if (isAnchored) {
            break;
        }
    }
    luaL_addlstring(&out, at, static_cast<std::size_t>(matcher.end() - at));
    luaL_pushresult(&out);
    lua_pushinteger(state, count);
    return 2;
}

}  // namespace

void openPatterns(lua_State* state) {
    lua_getglobal(state, LUA_STRLIBNAME);
    setFunction(state, "find", scriptFind);
    setFunction(state, "match", scriptMatch);
    setFunction(state, "gmatch", scriptMatches);
    setFunction(state, "gfind", scriptMatches);
    setFunction(state, "gsub", scriptReplace);
    lua_pop(state, 1);
}

}  // namespace hextlua
