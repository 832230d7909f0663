#pragma once

#include <lua.hpp>

namespace scripthost {

/// Reads Lua's libraries once for the process, before the first openLibraries. Throws
/// std::bad_alloc.
void learnLibraries();

/// Fills the globals of a fresh state with what scripts and Lua engines may call. A Lua function:
/// it may raise.
int openLibraries(lua_State* lua);

// The own functions of each library, which take the place of Lua's.
extern const luaL_Reg kBaseFunctions[];
extern const luaL_Reg kCoroutineFunctions[];
extern const luaL_Reg kPatternFunctions[];
extern const luaL_Reg kStringFunctions[];
extern const luaL_Reg kTableFunctions[];

}  // namespace scripthost
