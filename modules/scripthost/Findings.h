#pragma once

#include <lua.hpp>

namespace scripthost {

/// Makes the global `result`, by which a script reports findings and notes. A Lua function: it may
/// raise.
int openResult(lua_State* lua);

/// Reports the reason that a script returned together with false: a text, or a table as
/// `result.finding` takes it. Without a reason it reports that the rule is not met, unless a
/// finding has said so already. A Lua function: it raises when the reason is neither.
int reportReason(lua_State* lua);

}  // namespace scripthost
