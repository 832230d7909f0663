#pragma once

#include <lua.hpp>

namespace partengine {

/// What looks for holes, walls and the like; the end is marked as Lua does. Their first upvalue
/// keeps the part.
extern const luaL_Reg kFeatureFunctions[];

}  // namespace partengine
