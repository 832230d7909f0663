// A small engine in machine code: objects that are counted, and functions that fail, call back and
// take long.

#include <chrono>
#include <lua.hpp>
#include <thread>

namespace {

int alive = 0;

int closeObject(lua_State*) {
    --alive;
    return 0;
}

int makeObject(lua_State* lua) {
    ++alive;
    lua_newuserdatauv(lua, 8, 0);
    luaL_setmetatable(lua, "sharedengine.object");
    return 1;
}

int fail(lua_State* lua) {
    return luaL_error(lua, "the engine fails");
}

int call(lua_State* lua) {
    lua_call(lua, 0, 0);
    return 0;
}

int rest(lua_State*) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1050));
    return 0;
}

constexpr luaL_Reg kFunctions[] = {
    {"make", makeObject}, {"fail", fail}, {"call", call}, {"rest", rest}, {nullptr, nullptr}};

}  // namespace

extern "C" __attribute__((visibility("default"))) int aliveObjects() {
    return alive;
}

extern "C" __attribute__((visibility("default"))) int luaopen_sharedengine(lua_State* lua) {
    luaL_newmetatable(lua, "sharedengine.object");
    lua_pushcfunction(lua, closeObject);
    lua_setfield(lua, -2, "__gc");
    luaL_newlib(lua, kFunctions);
    return 1;
}
