// Whether a script compiles, for tools that look at scripts without running them.

#include <cstdio>
#include <lua.hpp>
#include <memory>

#include <corvane/base/ModuleExport.h>

namespace {

struct StateDeleter {
    void operator()(lua_State* lua) const { lua_close(lua); }
};

}  // namespace

/// 1 when the text, `size` bytes of Lua, compiles. Else 0, with the line from 1, or 0 without one,
/// and what is wrong, cut to `capacity` bytes with its terminator. Nothing of the text runs.
CORVANE_MODULE_EXPORT int CorvaneCheckScript(const char* text, std::size_t size, int* line,
                                             char* message, std::size_t capacity) {
    *line = 0;
    const std::unique_ptr<lua_State, StateDeleter> lua(luaL_newstate());
    const char* fault = "not enough memory";
    if (lua) {
        // The first line of a script may be a system's, as the host has it.
        if (size > 0 && *text == '#') {
            while (size > 0 && *text != '\n')
                ++text, --size;
        }
        if (luaL_loadbufferx(lua.get(), text, size, "=", "t") == LUA_OK) return 1;
        if (lua_type(lua.get(), -1) == LUA_TSTRING) fault = lua_tostring(lua.get(), -1);
        int end = 0;
        // ":12: message": the chunk's name is empty.
        if (std::sscanf(fault, ":%d: %n", line, &end) == 1 && end > 0) fault += end;
    }
    std::snprintf(message, capacity, "%s", fault);
    return 0;
}
