#include <bit>
#include <climits>

#include "Libraries.h"
#include "Run.h"

// Lua's functions of these names loop over any length that a table claims to have, without
// counting. These count each element.

namespace scripthost {
namespace {

/// To get or to set an element can call a function, which is not counted when it is Lua's own.
constexpr std::uint64_t kStepsForElement = 5;

/// A table, or a value that behaves like one in the named ways.
void checkTable(lua_State* lua, int index, std::initializer_list<const char*> ways) {
    if (lua_istable(lua, index)) return;
    for (const char* way : ways) {
        if (luaL_getmetafield(lua, index, way) == LUA_TNIL) luaL_checktype(lua, index, LUA_TTABLE);
        lua_pop(lua, 1);
    }
}

lua_Integer lengthToChange(lua_State* lua) {
    checkTable(lua, 1, {"__index", "__newindex", "__len"});
    return luaL_len(lua, 1);
}

void copyElement(lua_State* lua, lua_Integer from, int target, lua_Integer to) {
    spend(lua, kStepsForElement);
    lua_geti(lua, 1, from);
    lua_seti(lua, target, to);
}

int insert(lua_State* lua) {
    const auto end = static_cast<lua_Integer>(static_cast<lua_Unsigned>(lengthToChange(lua)) + 1);
    lua_Integer position = end;
    const int arguments = lua_gettop(lua);
    if (arguments == 3) {
        position = luaL_checkinteger(lua, 2);
        luaL_argcheck(lua,
                      static_cast<lua_Unsigned>(position) - 1U < static_cast<lua_Unsigned>(end), 2,
                      "position out of bounds");
        for (lua_Integer i = end; i > position; --i)
            copyElement(lua, i - 1, 1, i);
    } else if (arguments != 2) {
        return luaL_error(lua, "wrong number of arguments to 'insert'");
    }
    lua_seti(lua, 1, position);
    return 0;
}

int remove(lua_State* lua) {
    const lua_Integer size = lengthToChange(lua);
    lua_Integer position = luaL_optinteger(lua, 2, size);
    if (position != size) {
        luaL_argcheck(lua,
                      static_cast<lua_Unsigned>(position) - 1U <= static_cast<lua_Unsigned>(size),
                      2, "position out of bounds");
    }
    lua_geti(lua, 1, position);
    for (; position < size; ++position)
        copyElement(lua, position + 1, 1, position);
    lua_pushnil(lua);
    lua_seti(lua, 1, position);
    return 1;
}

int move(lua_State* lua) {
    const lua_Integer first = luaL_checkinteger(lua, 2);
    const lua_Integer last = luaL_checkinteger(lua, 3);
    const lua_Integer to = luaL_checkinteger(lua, 4);
    const int target = lua_isnoneornil(lua, 5) ? 1 : 5;
    checkTable(lua, 1, {"__index"});
    checkTable(lua, target, {"__newindex"});
    if (last >= first) {
        luaL_argcheck(lua, first > 0 || last < LUA_MAXINTEGER + first, 3,
                      "too many elements to move");
        const lua_Integer count = last - first + 1;
        luaL_argcheck(lua, to <= LUA_MAXINTEGER - count + 1, 4, "destination wrap around");
        const bool apart =
            to > last || to <= first || (target != 1 && !lua_compare(lua, 1, target, LUA_OPEQ));
        for (lua_Integer i = 0; i < count; ++i) {
            const lua_Integer offset = apart ? i : count - 1 - i;
            copyElement(lua, first + offset, target, to + offset);
        }
    }
    lua_pushvalue(lua, target);
    return 1;
}

void addElement(lua_State* lua, luaL_Buffer* text, lua_Integer index) {
    spend(lua, kStepsForElement);
    lua_geti(lua, 1, index);
    if (!lua_isstring(lua, -1)) {
        luaL_error(lua, "invalid value (%s) at index %I in table for 'concat'",
                   luaL_typename(lua, -1), static_cast<LUAI_UACINT>(index));
    }
    luaL_addvalue(text);
}

int concat(lua_State* lua) {
    checkStack(lua);
    checkTable(lua, 1, {"__index", "__len"});
    const lua_Integer length = luaL_len(lua, 1);
    std::size_t size = 0;
    const char* separator = luaL_optlstring(lua, 2, "", &size);
    lua_Integer index = luaL_optinteger(lua, 3, 1);
    const lua_Integer last = luaL_optinteger(lua, 4, length);
    luaL_Buffer text;
    luaL_buffinit(lua, &text);
    for (; index < last; ++index) {
        addElement(lua, &text, index);
        luaL_addlstring(&text, separator, size);
    }
    if (index == last) addElement(lua, &text, index);
    luaL_pushresult(&text);
    return 1;
}

int unpack(lua_State* lua) {
    lua_Integer index = luaL_optinteger(lua, 2, 1);
    const lua_Integer last = lua_isnoneornil(lua, 3) ? luaL_len(lua, 1) : luaL_checkinteger(lua, 3);
    if (index > last) return 0;
    const lua_Unsigned steps = static_cast<lua_Unsigned>(last) - static_cast<lua_Unsigned>(index);
    if (steps >= INT_MAX) return luaL_error(lua, "too many results to unpack");
    spend(lua, 1 + steps * kStepsForElement);
    if (!lua_checkstack(lua, static_cast<int>(steps) + 1))
        return luaL_error(lua, "too many results to unpack");
    for (; index < last; ++index)
        lua_geti(lua, 1, index);
    lua_geti(lua, 1, last);
    return static_cast<int>(steps) + 1;
}

/// What a sort asks for at each step.
struct Order {
    Limits& limits;
    bool isOfValues;  ///< Without a function.
};

/// Whether the value at `a` is less than the one at `b`, both relative to the top.
bool isLess(lua_State* lua, const Order& order, int a, int b) {
    if (order.isOfValues) {
        const bool isText = lua_type(lua, a) == LUA_TSTRING;
        const std::uint64_t steps = isText ? 1 + lua_rawlen(lua, a) / kBytesInAStep : 1;
        if (!order.limits.spend(steps)) raiseLimit(lua);
        return lua_compare(lua, a, b, LUA_OPLT) != 0;
    }
    spend(lua, kStepsForElement);
    lua_pushvalue(lua, 2);
    lua_pushvalue(lua, a - 1);
    lua_pushvalue(lua, b - 2);
    lua_call(lua, 2, 1);
    const bool less = lua_toboolean(lua, -1) != 0;
    lua_pop(lua, 1);
    return less;
}

/// Takes the topmost value into the heap in elements `low` to `high`, at `hole` from 1 or below.
void siftDown(lua_State* lua, const Order& order, lua_Integer low, lua_Integer hole,
              lua_Integer count) {
    const lua_Integer before = low - 1;
    for (lua_Integer child = 2 * hole; child <= count; child = 2 * hole) {
        lua_geti(lua, 1, before + child);
        if (child < count) {
            lua_geti(lua, 1, before + child + 1);
            const bool right = isLess(lua, order, -2, -1);
            if (right) ++child;
            lua_remove(lua, right ? -2 : -1);
        }
        if (!isLess(lua, order, -2, -1)) {
            lua_pop(lua, 1);
            break;
        }
        lua_seti(lua, 1, before + hole);
        hole = child;
    }
    lua_seti(lua, 1, before + hole);
}

/// A heap sort: its time is bounded whatever the elements and the comparison are.
void sortByHeap(lua_State* lua, const Order& order, lua_Integer low, lua_Integer high) {
    const lua_Integer count = high - low + 1;
    for (lua_Integer i = count / 2; i >= 1; --i) {
        lua_geti(lua, 1, low + i - 1);
        siftDown(lua, order, low, i, count);
    }
    for (lua_Integer last = count; last > 1; --last) {
        lua_geti(lua, 1, low + last - 1);
        lua_geti(lua, 1, low);
        lua_seti(lua, 1, low + last - 1);
        siftDown(lua, order, low, 1, last - 1);
    }
}

/// Puts the elements at `low` and `high` in order.
void orderPair(lua_State* lua, const Order& order, lua_Integer low, lua_Integer high) {
    lua_geti(lua, 1, low);
    lua_geti(lua, 1, high);
    if (isLess(lua, order, -1, -2)) {
        lua_seti(lua, 1, low);
        lua_seti(lua, 1, high);
    } else {
        lua_pop(lua, 2);
    }
}

/// Moves what is less than the middle one of three elements before it, and what is greater behind
/// it. Gives its place. A comparison that contradicts itself is an error, as in Lua.
lua_Integer partition(lua_State* lua, const Order& order, lua_Integer low, lua_Integer high) {
    lua_geti(lua, 1, high - 1);  // the middle one is there
    lua_Integer i = low;
    lua_Integer j = high - 1;
    for (;;) {
        while (lua_geti(lua, 1, ++i), isLess(lua, order, -1, -2)) {
            if (i >= high - 1) luaL_error(lua, "invalid order function for sorting");
            lua_pop(lua, 1);
        }
        while (lua_geti(lua, 1, --j), isLess(lua, order, -3, -1)) {
            if (j < i) luaL_error(lua, "invalid order function for sorting");
            lua_pop(lua, 1);
        }
        if (j < i) break;
        lua_seti(lua, 1, i);
        lua_seti(lua, 1, j);
    }
    lua_pop(lua, 1);
    lua_seti(lua, 1, high - 1);
    lua_seti(lua, 1, i);
    return i;
}

/// Sorts as Lua does. After `depth` divisions the rest is sorted by a heap, so that no order of the
/// elements makes the time grow with the square.
void sortRange(lua_State* lua, const Order& order, lua_Integer low, lua_Integer high, int depth) {
    while (low < high) {
        orderPair(lua, order, low, high);
        if (high - low == 1) return;
        const lua_Integer middle = low + (high - low) / 2;
        orderPair(lua, order, low, middle);
        orderPair(lua, order, middle, high);
        if (high - low == 2) return;
        if (depth-- == 0) {
            sortByHeap(lua, order, low, high);
            return;
        }
        lua_geti(lua, 1, middle);
        lua_geti(lua, 1, high - 1);
        lua_seti(lua, 1, middle);
        lua_seti(lua, 1, high - 1);
        const lua_Integer place = partition(lua, order, low, high);
        const bool isLeftLess = place - low < high - place;
        isLeftLess ? sortRange(lua, order, low, place - 1, depth)
                   : sortRange(lua, order, place + 1, high, depth);
        (isLeftLess ? low : high) = isLeftLess ? place + 1 : place - 1;
    }
}

int sort(lua_State* lua) {
    checkStack(lua);
    const lua_Integer length = lengthToChange(lua);
    luaL_argcheck(lua, length < INT_MAX, 1, "array too big");
    if (!lua_isnoneornil(lua, 2)) luaL_checktype(lua, 2, LUA_TFUNCTION);
    lua_settop(lua, 2);
    luaL_checkstack(lua, 8, nullptr);
    sortRange(lua, {runOf(lua).limits, lua_isnil(lua, 2)}, 1, length,
              2 * static_cast<int>(std::bit_width(static_cast<lua_Unsigned>(length))));
    return 0;
}

}  // namespace

const luaL_Reg kTableFunctions[] = {{"concat", concat}, {"insert", insert}, {"move", move},
                                    {"remove", remove}, {"sort", sort},     {"unpack", unpack},
                                    {nullptr, nullptr}};

}  // namespace scripthost
