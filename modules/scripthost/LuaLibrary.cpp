#include "LuaLibrary.h"

#include <algorithm>
#include <cstring>

namespace scripthost {
namespace {

constexpr luaL_Reg kEnd{nullptr, nullptr};

}  // namespace

LuaLibrary::LuaLibrary(lua_State* lua, std::initializer_list<const char*> names) {
    lua_pushnil(lua);
    while (lua_next(lua, -2)) {
        const char* member = lua_tostring(lua, -2);
        const auto name = std::ranges::find_if(
            names, [member](const char* wanted) { return std::strcmp(wanted, member) == 0; });
        if (name != names.end()) read(lua, *name);
        lua_pop(lua, 1);
    }
    functions_.push_back(kEnd);
    sharing_.push_back(kEnd);
}

void LuaLibrary::read(lua_State* lua, const char* name) {
    if (lua_CFunction function = lua_tocfunction(lua, -1)) {
        const bool isSharing = lua_getupvalue(lua, -1, 1) != nullptr;
        (isSharing ? sharing_ : functions_).push_back({name, function});
        if (!isSharing) return;
        shared_.assign(static_cast<const char*>(lua_touserdata(lua, -1)), lua_rawlen(lua, -1));
        lua_pop(lua, 1);
    } else if (lua_isinteger(lua, -1)) {
        constants_.emplace_back(name, lua_tointeger(lua, -1));
    } else if (lua_type(lua, -1) == LUA_TNUMBER) {
        constants_.emplace_back(name, lua_tonumber(lua, -1));
    } else if (lua_type(lua, -1) == LUA_TSTRING) {
        constants_.emplace_back(name, std::string(lua_tostring(lua, -1), lua_rawlen(lua, -1)));
    }
}

void LuaLibrary::fill(lua_State* lua) const {
    luaL_setfuncs(lua, functions_.data(), 0);
    if (!shared_.empty()) {
        std::memcpy(lua_newuserdatauv(lua, shared_.size(), 0), shared_.data(), shared_.size());
        luaL_setfuncs(lua, sharing_.data(), 1);
    }
    for (const auto& [name, value] : constants_) {
        if (const auto* integer = std::get_if<lua_Integer>(&value)) {
            lua_pushinteger(lua, *integer);
        } else if (const auto* number = std::get_if<lua_Number>(&value)) {
            lua_pushnumber(lua, *number);
        } else {
            const std::string& text = *std::get_if<std::string>(&value);
            lua_pushlstring(lua, text.data(), text.size());
        }
        lua_setfield(lua, -2, name);
    }
}

}  // namespace scripthost
