#pragma once

#include <lua.hpp>

namespace scripthost {

/// Makes the global `db`: the look-ups of the rule database that the context of the run names, by
/// which scripts read it. May raise.
void openDatabase(lua_State* lua);

}  // namespace scripthost
