#pragma once

#include <initializer_list>
#include <lua.hpp>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace scripthost {

/// What is kept of a library of Lua: functions of C code, texts and numbers. They are the same in
/// every state, so they are read once, from a state that is there for nothing else. To open a
/// library in each state and drop the rest takes twice the time.
class LuaLibrary {
public:
    /// Reads the members with these names of the table at the top of the stack. Raises nothing of
    /// Lua's, and may throw std::bad_alloc. The names are not copied.
    LuaLibrary(lua_State* lua, std::initializer_list<const char*> names);

    /// Sets them in the table at the top of the stack. A part of a Lua function: it may raise.
    void fill(lua_State* lua) const;

private:
    using Constant = std::variant<lua_Integer, lua_Number, std::string>;

    void read(lua_State* lua, const char* name);

    std::vector<luaL_Reg> functions_;
    std::vector<luaL_Reg> sharing_;  ///< Functions that share a block of memory of their own.
    std::string shared_;             ///< Its bytes.
    std::vector<std::pair<const char*, Constant>> constants_;
};

}  // namespace scripthost
