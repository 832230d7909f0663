#include <cctype>
#include <cstring>

#include "Libraries.h"
#include "Pattern.h"
#include "Run.h"

namespace scripthost {
namespace {

struct Text {
    const char* begin;
    std::size_t size;
    const char* end() const { return begin + size; }
};

Text checkText(lua_State* lua, int index) {
    Text text{};
    text.begin = luaL_checklstring(lua, index, &text.size);
    return text;
}

/// The start that an argument names, from 0: negative ones count from the end.
std::size_t startAt(lua_State* lua, int index, std::size_t size) {
    const lua_Integer position = luaL_optinteger(lua, index, 1);
    if (position > 0) return static_cast<std::size_t>(position) - 1;
    if (position == 0 || position < -static_cast<lua_Integer>(size)) return 0;
    return size - static_cast<std::size_t>(-position);
}

bool isPlain(const Text& pattern) {
    const char* at = pattern.begin;
    while ((at += std::strcspn(at, "^$*+?.([%-")) < pattern.end())
        if (*at++) return false;
    return true;
}

const char* findPlain(lua_State* lua, const char* from, const char* end, const Text& wanted) {
    if (wanted.size == 0) return from;
    while (static_cast<std::size_t>(end - from) >= wanted.size) {
        const auto places = static_cast<std::size_t>(end - from) - wanted.size + 1;
        const void* hit = std::memchr(from, *wanted.begin, places);
        if (!hit) return nullptr;
        const char* at = static_cast<const char*>(hit);
        spendBytes(lua, static_cast<std::size_t>(at - from) + wanted.size);
        if (std::memcmp(at, wanted.begin, wanted.size) == 0) return at;
        from = at + 1;
    }
    return nullptr;
}

int pushPlace(lua_State* lua, const Text& subject, const char* from, const char* to) {
    lua_pushinteger(lua, from - subject.begin + 1);
    lua_pushinteger(lua, to - subject.begin);
    return 2;
}

int search(lua_State* lua, bool place) {
    const Text subject = checkText(lua, 1);
    const Text pattern = checkText(lua, 2);
    const std::size_t start = startAt(lua, 3, subject.size);
    lua_settop(lua, 4);
    spendBytes(lua, place ? pattern.size * 8 : 0);
    if (start <= subject.size && place && (lua_toboolean(lua, 4) || isPlain(pattern))) {
        const char* at = findPlain(lua, subject.begin + start, subject.end(), pattern);
        if (at) return pushPlace(lua, subject, at, at + pattern.size);
    } else if (start <= subject.size) {
        const bool anchored = *pattern.begin == '^';
        const std::size_t skip = anchored ? 1 : 0;
        Matcher matcher(lua, subject.begin, subject.size, pattern.begin + skip,
                        pattern.size - skip);
        for (const char* at = subject.begin + start; at <= subject.end(); ++at) {
            const char* to = matcher.matchAt(at);
            if (to && place) {
                pushPlace(lua, subject, at, to);
                return 2 + matcher.pushCaptures(nullptr, nullptr);
            }
            if (to) return matcher.pushCaptures(at, to);
            if (anchored) break;
        }
    }
    lua_pushnil(lua);
    return 1;
}

int find(lua_State* lua) {
    return search(lua, true);
}

int match(lua_State* lua) {
    return search(lua, false);
}

constexpr int kNextStart = 3;  ///< Upvalues of an iterator, after subject and pattern.
constexpr int kLastEnd = 4;

int nextMatch(lua_State* lua) {
    const Text subject = checkText(lua, lua_upvalueindex(1));
    const Text pattern = checkText(lua, lua_upvalueindex(2));
    const lua_Integer last = lua_tointeger(lua, lua_upvalueindex(kLastEnd));
    Matcher matcher(lua, subject.begin, subject.size, pattern.begin, pattern.size);
    auto start = static_cast<std::size_t>(lua_tointeger(lua, lua_upvalueindex(kNextStart)));
    for (; start <= subject.size; ++start) {
        const char* at = subject.begin + start;
        const char* to = matcher.matchAt(at);
        if (!to || to - subject.begin == last) continue;
        lua_pushinteger(lua, to - subject.begin);
        lua_copy(lua, -1, lua_upvalueindex(kNextStart));
        lua_replace(lua, lua_upvalueindex(kLastEnd));
        return matcher.pushCaptures(at, to);
    }
    return 0;
}

int matches(lua_State* lua) {
    const Text subject = checkText(lua, 1);
    checkText(lua, 2);
    const std::size_t start = startAt(lua, 3, subject.size);
    lua_settop(lua, 2);
    lua_pushinteger(lua,
                    static_cast<lua_Integer>(start <= subject.size ? start : subject.size + 1));
    lua_pushinteger(lua, -1);
    lua_pushcclosure(lua, nextMatch, 4);
    return 1;
}

constexpr int kReplacement = 3;

void addTemplate(lua_State* lua, luaL_Buffer* result, Matcher& matcher, const char* from,
                 const char* to) {
    std::size_t size = 0;
    const char* at = lua_tolstring(lua, kReplacement, &size);
    const char* end = at + size;
    spend(lua, 1 + size / 4);
    for (; at < end; ++at) {
        if (*at != '%') {
            luaL_addchar(result, *at);
        } else if (*++at == '%') {
            luaL_addchar(result, '%');
        } else if (*at == '0') {
            luaL_addlstring(result, from, static_cast<std::size_t>(to - from));
        } else if (std::isdigit(static_cast<unsigned char>(*at))) {
            matcher.pushCapture(*at - '1', from, to);
            luaL_tolstring(lua, -1, nullptr);
            lua_remove(lua, -2);
            luaL_addvalue(result);
        } else {
            luaL_error(lua, "invalid use of '%c' in replacement string", '%');
        }
    }
}

/// Adds what takes the place of a match. False when the match stays as it is.
bool addReplacement(lua_State* lua, luaL_Buffer* result, Matcher& matcher, const char* from,
                    const char* to) {
    const int type = lua_type(lua, kReplacement);
    if (type == LUA_TFUNCTION) {
        lua_pushvalue(lua, kReplacement);
        lua_call(lua, matcher.pushCaptures(from, to), 1);
    } else if (type == LUA_TTABLE) {
        matcher.pushCapture(0, from, to);
        lua_gettable(lua, kReplacement);
    } else {
        addTemplate(lua, result, matcher, from, to);
        return true;
    }
    if (!lua_toboolean(lua, -1)) {
        lua_pop(lua, 1);
        luaL_addlstring(result, from, static_cast<std::size_t>(to - from));
        return false;
    }
    if (!lua_isstring(lua, -1))
        luaL_error(lua, "invalid replacement value (a %s)", luaL_typename(lua, -1));
    luaL_addvalue(result);
    return true;
}

int substitute(lua_State* lua) {
    checkStack(lua);
    const Text subject = checkText(lua, 1);
    Text pattern = checkText(lua, 2);
    const int type = lua_type(lua, kReplacement);
    luaL_argexpected(
        lua,
        type == LUA_TNUMBER || type == LUA_TSTRING || type == LUA_TFUNCTION || type == LUA_TTABLE,
        kReplacement, "string/function/table");
    const lua_Integer most = luaL_optinteger(lua, 4, static_cast<lua_Integer>(subject.size) + 1);
    const bool anchored = *pattern.begin == '^';
    const std::size_t skip = anchored ? 1 : 0;
    Matcher matcher(lua, subject.begin, subject.size, pattern.begin + skip, pattern.size - skip);
    luaL_Buffer result;
    luaL_buffinit(lua, &result);
    const char* at = subject.begin;
    const char* last = nullptr;
    lua_Integer count = 0;
    bool changed = false;
    while (count < most) {
        const char* to = matcher.matchAt(at);
        if (to && to != last) {
            ++count;
            changed |= addReplacement(lua, &result, matcher, at, to);
            at = last = to;
        } else if (at < subject.end()) {
            luaL_addchar(&result, *at++);
        } else {
            break;
        }
        if (anchored) break;
    }
    if (changed) {
        luaL_addlstring(&result, at, static_cast<std::size_t>(subject.end() - at));
        luaL_pushresult(&result);
    } else {
        lua_pushvalue(lua, 1);
    }
    lua_pushinteger(lua, count);
    return 2;
}

}  // namespace

const luaL_Reg kPatternFunctions[] = {{"find", find},
                                      {"gmatch", matches},
                                      {"gsub", substitute},
                                      {"match", match},
                                      {nullptr, nullptr}};

}  // namespace scripthost
