#include "Libraries.h"

#include <climits>
#include <iterator>
#include <memory>
#include <new>
#include <optional>

#include "LuaLibrary.h"
#include "Run.h"

// Lua's own functions are kept where their work is small for each call or bounded by the memory
// that they fill. Others are replaced, or count the bytes of their arguments first.

namespace scripthost {
namespace {

/// A library of Lua, with the names in it that are kept.
struct Library {
    const char* name;
    lua_CFunction open;
    std::initializer_list<const char*> kept;
    std::initializer_list<const luaL_Reg*> own;
};

const Library kLibraries[] = {
    {"_G",
     luaopen_base,
     {"_VERSION", "assert", "error", "ipairs", "next", "pairs", "rawequal", "rawget", "rawlen",
      "rawset", "select", "tonumber", "tostring", "type"},
     {kBaseFunctions}},
    {LUA_STRLIBNAME,
     luaopen_string,
     {"byte", "char", "format", "len", "lower", "pack", "packsize", "reverse", "sub", "unpack",
      "upper"},
     {kStringFunctions, kPatternFunctions}},
    {LUA_TABLIBNAME, luaopen_table, {"pack"}, {kTableFunctions}},
    {LUA_MATHLIBNAME,
     luaopen_math,
     {"abs",  "acos",   "asin",       "atan", "ceil",       "cos", "deg",        "exp",  "floor",
      "fmod", "huge",   "log",        "max",  "maxinteger", "min", "mininteger", "modf", "pi",
      "rad",  "random", "randomseed", "sin",  "sqrt",       "tan", "tointeger",  "type", "ult"},
     {}},
    {LUA_UTF8LIBNAME,
     luaopen_utf8,
     {"char", "charpattern", "codepoint", "codes", "len", "offset"},
     {}},
    {LUA_COLIBNAME,
     luaopen_coroutine,
     {"isyieldable", "running", "status", "yield"},
     {kCoroutineFunctions}},
};

/// What texts do in arithmetic.
constexpr std::initializer_list<const char*> kTextEvents = {"__add", "__sub", "__mul",  "__mod",
                                                            "__pow", "__div", "__idiv", "__unm"};

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

struct CloseState {
    void operator()(lua_State* lua) const { lua_close(lua); }
};

/// Leaves the tables of all libraries on the stack, and the metatable of texts at the top.
int openAll(lua_State* lua) {
    for (const Library& library : kLibraries) {
        lua_pushcfunction(lua, library.open);
        lua_pushstring(lua, library.name);
        lua_call(lua, 1, 1);
    }
    lua_pushliteral(lua, "");
    lua_getmetatable(lua, -1);
    lua_replace(lua, -2);
    return static_cast<int>(std::size(kLibraries)) + 1;
}

struct Kept {
    Kept() {
        const std::unique_ptr<lua_State, CloseState> state(luaL_newstate());
        lua_State* lua = state.get();
        if (!lua) throw std::bad_alloc();
        lua_pushcfunction(lua, openAll);
        if (lua_pcall(lua, 0, LUA_MULTRET, 0) != LUA_OK) throw std::bad_alloc();
        textEvents.emplace(lua, kTextEvents);
        for (std::size_t i = std::size(kLibraries); i-- > 0;) {
            lua_pop(lua, 1);
            libraries[i].emplace(lua, kLibraries[i].kept);
        }
    }

    std::optional<LuaLibrary> libraries[std::size(kLibraries)];
    std::optional<LuaLibrary> textEvents;
};

const Kept& kept() {
    static const Kept once;
    return once;
}

/// Members of a library, so that its table need not grow step by step.
constexpr int kUsualSize = 32;

void open(lua_State* lua, const Library& library, const LuaLibrary& ofLua) {
    lua_createtable(lua, 0, kUsualSize);
    if (library.open == luaopen_base) {
        lua_pushvalue(lua, -1);
        lua_rawseti(lua, LUA_REGISTRYINDEX, LUA_RIDX_GLOBALS);
    }
    ofLua.fill(lua);
    for (const luaL_Reg* functions : library.own)
        luaL_setfuncs(lua, functions, 0);
    // Where Lua looks for the names of functions that it has errors to report of.
    luaL_getsubtable(lua, LUA_REGISTRYINDEX, LUA_LOADED_TABLE);
    lua_pushvalue(lua, -2);
    lua_setfield(lua, -2, library.name);
    lua_pop(lua, 1);
    lua_setglobal(lua, library.name);
}

/// Has `text:upper()` and the like, and arithmetic with texts.
void openTexts(lua_State* lua) {
    lua_pushliteral(lua, "");
    lua_createtable(lua, 0, static_cast<int>(kTextEvents.size()) + 1);
    kept().textEvents->fill(lua);
    lua_getglobal(lua, LUA_STRLIBNAME);
    lua_setfield(lua, -2, "__index");
    lua_setmetatable(lua, -2);
    lua_pop(lua, 1);
}

/// Lua seeds its random numbers for each state.
void seedRandom(lua_State* lua) {
    lua_getglobal(lua, LUA_MATHLIBNAME);
    lua_getfield(lua, -1, "randomseed");
    lua_call(lua, 0, 0);
    lua_pop(lua, 1);
}

void charge(lua_State* lua) {
    for (const auto& [library, name, arguments] : kCharged) {
        lua_getglobal(lua, library);
        lua_getfield(lua, -1, name);
        lua_pushinteger(lua, arguments);
        lua_pushcclosure(lua, charged, 2);
        lua_setfield(lua, -2, name);
        lua_pop(lua, 1);
    }
}

}  // namespace

void learnLibraries() {
    kept();
}

int openLibraries(lua_State* lua) {
    for (std::size_t i = 0; i < std::size(kLibraries); ++i)
        open(lua, kLibraries[i], *kept().libraries[i]);
    openTexts(lua);
    seedRandom(lua);
    charge(lua);
    return 0;
}

}  // namespace scripthost
