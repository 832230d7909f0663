#include "Collector.h"

#include <algorithm>
#include <cstring>

#include "Run.h"

namespace scripthost {
namespace {

/// Stack of the guard: the metatables in use as keys, and the field's name, because making a text
/// could need memory.
constexpr int kMetatables = 1;
constexpr int kFieldName = 2;
constexpr const char* kField = "__mode";

/// Small, because an engine's objects can hold far more than Lua sees.
constexpr std::uint64_t kLeastToCollect = 131'072;

char guardKey;

bool saysWeakKeys(lua_State* lua, int index) {
    return lua_type(lua, index) == LUA_TSTRING && std::strchr(lua_tostring(lua, index), 'k');
}

}  // namespace

int takeCollector(lua_State* lua) {
    lua_State* guard = lua_newthread(lua);
    lua_rawsetp(lua, LUA_REGISTRYINDEX, &guardKey);
    lua_newtable(guard);
    lua_newtable(guard);
    lua_pushliteral(guard, "k");
    lua_setfield(guard, -2, kField);
    lua_setmetatable(guard, kMetatables);
    lua_pushstring(guard, kField);
    lua_gc(lua, LUA_GCSTOP);
    Limits& limits = runOf(lua).limits;
    limits.guard = guard;
    limits.setCollectAt(std::max(2 * limits.memory(), kLeastToCollect));
    return 0;
}

void noteMetatable(lua_State* lua, int index) {
    lua_State* guard = runOf(lua).limits.guard;
    lua_pushvalue(lua, index);
    lua_pushboolean(lua, 1);
    lua_pushvalue(guard, kMetatables);
    lua_xmove(guard, lua, 1);
    lua_insert(lua, -3);
    lua_rawset(lua, -3);
    lua_pop(lua, 1);
}

bool hasWeakKeys(lua_State* lua, int index) {
    lua_pushstring(lua, kField);
    lua_rawget(lua, index);
    const bool weak = saysWeakKeys(lua, -1);
    lua_pop(lua, 1);
    return weak;
}

void dropWeakKeys(lua_State* guard) noexcept {
    if (!guard) return;
    lua_pushnil(guard);
    while (lua_next(guard, kMetatables)) {
        lua_pop(guard, 1);
        const int metatable = lua_gettop(guard);
        lua_pushvalue(guard, kFieldName);
        lua_rawget(guard, metatable);
        if (saysWeakKeys(guard, -1)) {
            lua_pushvalue(guard, kFieldName);
            lua_pushnil(guard);
            lua_rawset(guard, metatable);
        }
        lua_settop(guard, metatable);
    }
}

void collectWhenDue(lua_State* lua) {
    Limits& limits = runOf(lua).limits;
    if (limits.memory() < limits.collectAt()) return;
    dropWeakKeys(limits.guard);
    lua_gc(lua, LUA_GCCOLLECT);
    limits.setCollectAt(std::max(2 * limits.memory(), kLeastToCollect));
}

}  // namespace scripthost
