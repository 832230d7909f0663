#include <cstring>

#include "Libraries.h"
#include "Run.h"

namespace scripthost {
namespace {

/// Lua's own repeats an empty string as often as it is told.
int repeat(lua_State* lua) {
    std::size_t size = 0;
    std::size_t gap = 0;
    const char* text = luaL_checklstring(lua, 1, &size);
    const lua_Integer count = luaL_checkinteger(lua, 2);
    const char* separator = luaL_optlstring(lua, 3, "", &gap);
    const std::size_t unit = size + gap;
    if (count <= 0 || unit == 0) {
        lua_pushliteral(lua, "");
        return 1;
    }
    if (static_cast<lua_Unsigned>(count) > static_cast<std::size_t>(LUA_MAXINTEGER) / unit)
        return luaL_error(lua, "resulting string too large");
    const std::size_t total = unit * static_cast<std::size_t>(count) - gap;
    spendBytes(lua, total);
    luaL_Buffer result;
    char* to = luaL_buffinitsize(lua, &result, total);
    for (lua_Integer i = 0; i < count; ++i) {
        std::memcpy(to, text, size);
        to += size;
        if (i + 1 == count) break;
        std::memcpy(to, separator, gap);
        to += gap;
    }
    luaL_pushresultsize(&result, total);
    return 1;
}

}  // namespace

const luaL_Reg kStringFunctions[] = {{"rep", repeat}, {nullptr, nullptr}};

}  // namespace scripthost
