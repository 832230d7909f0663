#include "Libraries.h"

#include <climits>
#include <cstring>

#include "Run.h"

// Lua's own functions are kept where their work is small for each call or bounded by the memory
// that they fill. Others are replaced, or count the bytes of their arguments first.

namespace scripthost {
namespace {

/// Functions of Lua that are kept: the names, separated by blanks.
struct Library {
    const char* name;
    lua_CFunction open;
    const char* kept;
    std::initializer_list<const luaL_Reg*> own;
};

const Library kLibraries[] = {
    {"_G",
     luaopen_base,
     " _G _VERSION assert error ipairs next pairs rawequal rawget rawlen rawset select tonumber "
     "tostring type ",
     {kBaseFunctions}},
    {LUA_STRLIBNAME,
     luaopen_string,
     " byte char format len lower pack packsize reverse sub unpack upper ",
     {kStringFunctions, kPatternFunctions}},
    {LUA_TABLIBNAME, luaopen_table, " pack ", {kTableFunctions}},
    {LUA_MATHLIBNAME,
     luaopen_math,
     " abs acos asin atan ceil cos deg exp floor fmod huge log max maxinteger min mininteger modf "
     "pi rad random randomseed sin sqrt tan tointeger type ult ",
     {}},
    {LUA_UTF8LIBNAME, luaopen_utf8, " char charpattern codepoint codes len offset ", {}},
    {LUA_COLIBNAME, luaopen_coroutine, " isyieldable running status yield ", {kCoroutineFunctions}},
};

/// Functions whose work grows with the length of their first arguments.
const struct {
    const char* library;
    const char* name;
    int arguments;
} kCharged[] = {
    {LUA_STRLIBNAME, "format", INT_MAX}, {LUA_STRLIBNAME, "lower", 1},
    {LUA_STRLIBNAME, "upper", 1},        {LUA_STRLIBNAME, "reverse", 1},
    {LUA_STRLIBNAME, "pack", INT_MAX},   {LUA_STRLIBNAME, "packsize", 1},
    {LUA_STRLIBNAME, "unpack", 1},       {LUA_UTF8LIBNAME, "len", 1},
};

int charged(lua_State* lua) {
    const lua_Integer most = lua_tointeger(lua, lua_upvalueindex(2));
    std::uint64_t bytes = 0;
    for (int i = 1; i <= lua_gettop(lua) && i <= most; ++i)
        if (lua_type(lua, i) == LUA_TSTRING) bytes += lua_rawlen(lua, i);
    spendBytes(lua, bytes);
    checkStack(lua);
    return lua_tocfunction(lua, lua_upvalueindex(1))(lua);
}

bool isKept(const Library& library, const char* name) {
    const std::size_t length = std::strlen(name);
    for (const char* at = library.kept; (at = std::strstr(at, name)) != nullptr; at += length)
        if (at[-1] == ' ' && at[length] == ' ') return true;
    return false;
}

void keepOnly(lua_State* lua, const Library& library) {
    lua_pushnil(lua);
    while (lua_next(lua, -2)) {
        lua_pop(lua, 1);
        if (isKept(library, lua_tostring(lua, -1))) continue;
        lua_pushvalue(lua, -1);
        lua_pushnil(lua);
        lua_rawset(lua, -4);
    }
}

void open(lua_State* lua, const Library& library) {
    lua_pushcfunction(lua, library.open);
    lua_pushstring(lua, library.name);
    lua_call(lua, 1, 1);
    keepOnly(lua, library);
    for (const luaL_Reg* functions : library.own)
        luaL_setfuncs(lua, functions, 0);
    // Where Lua looks for the names of functions that it has errors to report of.
    luaL_getsubtable(lua, LUA_REGISTRYINDEX, LUA_LOADED_TABLE);
    lua_pushvalue(lua, -2);
    lua_setfield(lua, -2, library.name);
    lua_pop(lua, 1);
    lua_setglobal(lua, library.name);
}

}  // namespace

int openLibraries(lua_State* lua) {
    for (const Library& library : kLibraries)
        open(lua, library);
    for (const auto& [library, name, arguments] : kCharged) {
        lua_getglobal(lua, library);
        lua_getfield(lua, -1, name);
        lua_pushinteger(lua, arguments);
        lua_pushcclosure(lua, charged, 2);
        lua_setfield(lua, -2, name);
        lua_pop(lua, 1);
    }
    return 0;
}

}  // namespace scripthost
