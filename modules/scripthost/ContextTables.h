#pragma once

#include <lua.hpp>

namespace scripthost {

/// The global that tells of the part. An engine may have the same name; see adoptPart.
inline constexpr const char* kPartName = "part";

/// Makes the globals `params` and `part` from the context of the run, and `db`, which looks up in
/// the context's database. A Lua function: it may raise.
int openContext(lua_State* lua);

/// True when the value at the top of the stack is the table `part` of the host.
bool isHostPart(lua_State* lua);

/// Gives the engine's table at the top of the stack the fields of the host's table `part`.
void adoptPart(lua_State* lua);

}  // namespace scripthost
