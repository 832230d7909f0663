#include "Answer.h"

#include <cmath>
#include <new>

#include <corvane/host/RunContext.h>

namespace partengine {

using corvane::part::OpenResult;
using corvane::part::Part;
using corvane::part::Vector;

namespace {

constexpr const char* kKeptType = "corvane.part.kept";
/// A vector shorter than this has no direction that could be trusted.
constexpr double kShortest = 1e-9;

int endKept(lua_State* lua) {
    static_cast<Kept*>(luaL_checkudata(lua, 1, kKeptType))->reset();
    return 0;
}

void open(Kept& kept, Failure& failure) {
    const CStringW path = corvane::CurrentPartPath();
    if (path.IsEmpty()) return failure.set("this run has no part");
    const corvane::RunContext* context = corvane::CurrentRunContext();
    const std::string units = context ? context->partUnits.ToUtf8() : std::string();
    OpenResult opened = Part::open(path.ToUtf8(), units);
    if (!opened.part) return failure.set(opened.error.c_str());
    kept = std::move(opened.part);
}

double coordinate(lua_State* lua, int vector, const char* name, int place) {
    if (lua_getfield(lua, vector, name) == LUA_TNIL) {
        lua_pop(lua, 1);
        lua_geti(lua, vector, place);
    }
    const double value = lua_tonumber(lua, -1);
    if (lua_type(lua, -1) != LUA_TNUMBER || !std::isfinite(value) || std::abs(value) > 1e100)
        luaL_error(lua, "a direction is three numbers {x, y, z}");
    lua_pop(lua, 1);
    return value;
}

}  // namespace

void openKept(lua_State* lua) {
    if (luaL_newmetatable(lua, kKeptType)) {
        lua_pushcfunction(lua, endKept);
        lua_setfield(lua, -2, "__gc");
        lua_pushboolean(lua, 0);  // a script must not reach __gc
        lua_setfield(lua, -2, "__metatable");
    }
    lua_pop(lua, 1);
}

Kept& newKept(lua_State* lua) {
    // An empty one holds nothing that would be lost if Lua raised before it has its metatable.
    Kept* const slot = new (lua_newuserdatauv(lua, sizeof(Kept), 0)) Kept;
    luaL_setmetatable(lua, kKeptType);
    return *slot;
}

const Part& partOf(lua_State* lua) {
    auto& kept = *static_cast<Kept*>(lua_touserdata(lua, lua_upvalueindex(1)));
    if (!kept) {
        Failure failure;
        guarded(failure, [&] { open(kept, failure); });
        if (failure.failed) luaL_error(lua, "%s", failure.text);
    }
    return *static_cast<const Part*>(kept.get());
}

bool takeDirection(lua_State* lua, int index, const char* field, Vector& vector) {
    if (lua_getfield(lua, index, field) == LUA_TNIL) {
        lua_pop(lua, 1);
        return false;
    }
    if (!lua_istable(lua, -1)) luaL_error(lua, "a direction is three numbers {x, y, z}");
    const int at = lua_gettop(lua);
    const Vector given{coordinate(lua, at, "x", 1), coordinate(lua, at, "y", 2),
                       coordinate(lua, at, "z", 3)};
    const double length = std::hypot(given.x, given.y, given.z);
    if (length < kShortest) luaL_error(lua, "a direction needs a length");
    vector = {given.x / length, given.y / length, given.z / length};
    lua_pop(lua, 1);
    return true;
}

}  // namespace partengine
