#include <cstdio>
#include <cstring>

#include "Collector.h"
#include "Compile.h"
#include "Libraries.h"
#include "Run.h"

namespace scripthost {
namespace {

/// Bytes of print that one run may put out.
constexpr std::size_t kMostPrinted = 65'536;

int finishProtected(lua_State* lua, int status, lua_KContext before) {
    stopIfOver(lua, status);
    if (status == LUA_OK || status == LUA_YIELD) return lua_gettop(lua) - static_cast<int>(before);
    lua_pushboolean(lua, 0);
    lua_pushvalue(lua, -2);
    return 2;
}

/// Before a protected call that may yield; see armHook.
void prepareProtected(lua_State* lua) {
    checkStack(lua);
    if (lua_isyieldable(lua)) runOf(lua).limits.settle();
}

int protectedCall(lua_State* lua) {
    prepareProtected(lua);
    luaL_checkany(lua, 1);
    lua_pushboolean(lua, 1);
    lua_insert(lua, 1);
    const int status = lua_pcallk(lua, lua_gettop(lua) - 2, LUA_MULTRET, 0, 0, finishProtected);
    return finishProtected(lua, status, 0);
}

/// Stands before a script's message handler. After a limit that would run while no instructions
/// are counted.
int handleMessage(lua_State* lua) {
    if (runOf(lua).limits.reached() != Limit::None) return 1;
    lua_pushvalue(lua, lua_upvalueindex(1));
    lua_insert(lua, 1);
    lua_call(lua, lua_gettop(lua) - 1, 1);
    return 1;
}

int protectedCallWithHandler(lua_State* lua) {
    prepareProtected(lua);
    const int arguments = lua_gettop(lua) - 2;
    luaL_checktype(lua, 2, LUA_TFUNCTION);
    lua_pushvalue(lua, 2);
    lua_pushcclosure(lua, handleMessage, 1);
    lua_replace(lua, 2);
    lua_pushboolean(lua, 1);
    lua_pushvalue(lua, 1);
    lua_rotate(lua, 3, 2);
    const int status = lua_pcallk(lua, arguments, LUA_MULTRET, 2, 2, finishProtected);
    return finishProtected(lua, status, 2);
}

/// A finalizer runs while no instructions are counted, so a script has none.
int setMetatable(lua_State* lua) {
    const int type = lua_type(lua, 2);
    luaL_checktype(lua, 1, LUA_TTABLE);
    luaL_argexpected(lua, type == LUA_TNIL || type == LUA_TTABLE, 2, "nil or table");
    if (luaL_getmetafield(lua, 1, "__metatable") != LUA_TNIL)
        return luaL_error(lua, "cannot change a protected metatable");
    lua_settop(lua, 2);
    if (type == LUA_TTABLE) {
        lua_pushliteral(lua, "__gc");
        if (lua_rawget(lua, 2) != LUA_TNIL)
            return luaL_error(lua, "scripts have no finalizers ('__gc')");
        if (hasWeakKeys(lua, 2))
            return luaL_error(lua, "scripts have no tables with weak keys ('__mode')");
        noteMetatable(lua, 2);
        lua_settop(lua, 2);
    }
    lua_setmetatable(lua, 1);
    return 1;
}

/// A script does not see the metatable of an engine's object: there it could change a finalizer.
int getMetatable(lua_State* lua) {
    luaL_checkany(lua, 1);
    const bool own = lua_istable(lua, 1) || lua_isstring(lua, 1);
    if (luaL_getmetafield(lua, 1, "__metatable") != LUA_TNIL) return 1;
    if (!own || !lua_getmetatable(lua, 1)) lua_pushnil(lua);
    return 1;
}

constexpr int kPieceSlot = 5;

/// Hands out what a script's reader function gives; it stays in its slot for as long.
const char* readPiece(lua_State* lua, void* text, std::size_t* size) {
    auto& rest = *static_cast<std::string_view*>(text);
    if (!rest.empty()) return takePiece(lua, rest, size);
    luaL_checkstack(lua, 2, "too many nested functions");
    lua_pushvalue(lua, 1);
    lua_call(lua, 0, 1);
    if (lua_isnil(lua, -1)) {
        lua_pop(lua, 1);
        *size = 0;
        return nullptr;
    }
    if (!lua_isstring(lua, -1)) luaL_error(lua, "reader function must return a string");
    lua_replace(lua, kPieceSlot);
    const char* given = lua_tolstring(lua, kPieceSlot, size);
    rest = {given, *size};
    return takePiece(lua, rest, size);
}

/// Text chunks only: binary ones can break the interpreter.
int load(lua_State* lua) {
    const bool hasEnvironment = !lua_isnone(lua, 4);
    const char* mode = luaL_optstring(lua, 3, "t");
    if (!std::strchr(mode, 't')) mode = "";
    std::size_t size = 0;
    const char* text = lua_tolstring(lua, 1, &size);
    const char* name = luaL_optstring(lua, 2, text ? text : "=(load)");
    int status = LUA_OK;
    if (!*mode) {
        lua_pushliteral(lua, "only text chunks can be loaded");
        status = LUA_ERRSYNTAX;
    } else if (text) {
        status = compileText(lua, {text, size}, name);
    } else {
        luaL_checktype(lua, 1, LUA_TFUNCTION);
        checkStack(lua);
        lua_settop(lua, kPieceSlot);
        std::string_view rest;
        status = lua_load(lua, readPiece, &rest, name, "t");
    }
    stopIfOver(lua, status);
    if (status != LUA_OK) {
        lua_pushnil(lua);
        lua_insert(lua, -2);
        return 2;
    }
    if (hasEnvironment) {
        lua_pushvalue(lua, 4);
        if (!lua_setupvalue(lua, -2, 1)) lua_pop(lua, 1);
    }
    return 1;
}

/// Control characters, also those of two bytes, could drive a terminal.
bool isControl(const char* text, std::size_t at) {
    const auto unit = static_cast<unsigned char>(text[at]);
    if (unit < 0x20) return unit != '\t' && unit != '\n';
    const bool second = at > 0 && static_cast<unsigned char>(text[at - 1]) == 0xC2;
    return unit == 0x7F || (second && unit >= 0x80 && unit < 0xA0);
}

void addPrintable(luaL_Buffer* line, const char* text, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
        luaL_addchar(line, isControl(text, i) ? '?' : text[i]);
}

/// To standard error, because standard output is the host's, and without control characters.
int print(lua_State* lua) {
    checkStack(lua);
    const int count = lua_gettop(lua);
    for (int i = 1; i <= count; ++i) {
        std::size_t size = 0;
        luaL_tolstring(lua, i, &size);
        spendBytes(lua, size * 8);
        lua_replace(lua, i);
    }
    luaL_Buffer line;
    luaL_buffinit(lua, &line);
    for (int i = 1; i <= count; ++i) {
        std::size_t size = 0;
        const char* text = lua_tolstring(lua, i, &size);
        if (i > 1) luaL_addchar(&line, '\t');
        addPrintable(&line, text, size);
    }
    luaL_addchar(&line, '\n');
    luaL_pushresult(&line);
    std::size_t size = 0;
    const char* text = lua_tolstring(lua, -1, &size);
    std::size_t& printed = runOf(lua).printed;
    if (printed + size <= kMostPrinted) {
        std::fwrite(text, 1, size, stderr);
        printed += size;
    } else if (printed < kMostPrinted) {
        std::fputs("(the script prints more than is shown)\n", stderr);
        printed = kMostPrinted;
    }
    return 0;
}

}  // namespace

const luaL_Reg kBaseFunctions[] = {{"getmetatable", getMetatable},
                                   {"load", load},
                                   {"pcall", protectedCall},
                                   {"print", print},
                                   {"setmetatable", setMetatable},
                                   {"xpcall", protectedCallWithHandler},
                                   {nullptr, nullptr}};

}  // namespace scripthost
