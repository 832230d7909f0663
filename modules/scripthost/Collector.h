#pragma once

#include <lua.hpp>

// The collector's time must grow with the memory alone. Over tables with weak keys it can grow with
// the square, and nothing stops a collection that has begun. So scripts have no such tables, and as
// they can change a metatable that is in use, it is looked at again before each collection: the
// host starts them all, from its hook or by refusing memory.

namespace scripthost {

/// Takes the collector of a fresh state over. A Lua function: it may raise.
int takeCollector(lua_State* lua);

/// Keeps the metatable at `index` in view. May raise.
void noteMetatable(lua_State* lua, int index);

/// True for a metatable whose tables have weak keys; `index` is not relative.
bool hasWeakKeys(lua_State* lua, int index);

/// Makes the keys of all tables strong. Allocates and raises nothing; `guard` is the state that
/// takeCollector made for it.
void dropWeakKeys(lua_State* guard) noexcept;

/// Collects when the memory in use has doubled.
void collectWhenDue(lua_State* lua);

}  // namespace scripthost
