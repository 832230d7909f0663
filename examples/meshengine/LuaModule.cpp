// The engine as scripts see it: the table `mesh` with part(), the part of the run. There is no way
// to open another file: scripts are not trusted, and may not find out what the machine holds.
//
// Lua reports an error by jumping over the frames between: no object with a destructor lives in a
// frame that raises, and no exception leaves a frame that Lua calls. So all work is done in
// functions that answer with plain values, and only the outermost frame raises.

#include <cstdio>
#include <exception>
#include <lua.hpp>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <type_traits>

#include <corvane/base/ModuleExport.h>
#include <corvane/host/RunContext.h>

#include "Measures.h"
#include "PartFile.h"

namespace {

using meshengine::Mesh;
using Part = std::shared_ptr<const Mesh>;

constexpr const char* kPartType = "mesh.part";

struct Failure {
    bool failed = false;
    char text[512] = "";

    void set(const char* reason) noexcept {
        failed = true;
        std::snprintf(text, sizeof text, "%s", reason);
    }
};

/// Runs `work` and turns what it throws into a failure.
template <typename Work>
bool guarded(Failure& failure, Work work) noexcept {
    try {
        work();
    } catch (const std::exception& error) {
        failure.set(error.what());
    } catch (...) {
        failure.set("unknown failure");
    }
    return !failure.failed;
}

bool load(Part& part, Failure& failure) noexcept {
    return guarded(failure, [&] {
        const CStringW path = corvane::CurrentPartPath();
        std::string error = "this run has no part";
        if (!path.IsEmpty()) part = meshengine::readPart(path.ToUtf8(), error);
        if (!part) failure.set(error.c_str());
    });
}

int openPart(lua_State* lua) {
    // An empty one holds nothing that would be lost if Lua raised before it has its metatable.
    Part* slot = new (lua_newuserdatauv(lua, sizeof(Part), 0)) Part;
    luaL_setmetatable(lua, kPartType);
    Failure failure;
    if (!load(*slot, failure)) return luaL_error(lua, "%s", failure.text);
    return 1;
}

/// The part that a method was called on.
const Mesh& self(lua_State* lua) {
    const Mesh* mesh = static_cast<Part*>(luaL_checkudata(lua, 1, kPartType))->get();
    if (!mesh) luaL_error(lua, "this part is closed");
    return *mesh;
}

int close(lua_State* lua) {
    static_cast<Part*>(luaL_checkudata(lua, 1, kPartType))->reset();
    return 0;
}

/// Pushes a measure; one that the part does not have is nil.
template <typename Measure>
int pushNumber(lua_State* lua, Measure measure) {
    const Mesh& mesh = self(lua);
    Failure failure;
    double value = 0.0;
    bool there = false;
    const bool done = guarded(failure, [&] {
        const std::optional<double> result = measure(mesh);
        there = result.has_value();
        value = result.value_or(0.0);
    });
    if (!done) return luaL_error(lua, "%s", failure.text);
    if (there) {
        lua_pushnumber(lua, value);
    } else {
        lua_pushnil(lua);
    }
    return 1;
}

int size(lua_State* lua) {
    const meshengine::Vector extent = meshengine::boundingSize(self(lua));
    for (std::size_t axis = 0; axis < 3; ++axis)
        lua_pushnumber(lua, extent[axis]);
    return 3;
}

int volume(lua_State* lua) {
    return pushNumber(lua, meshengine::enclosedVolume);
}
int area(lua_State* lua) {
    return pushNumber(lua, meshengine::surfaceArea);
}

void pushPoint(lua_State* lua, const meshengine::Vector& point) {
    lua_createtable(lua, 3, 0);
    for (const int axis : {0, 1, 2}) {
        lua_pushnumber(lua, point[static_cast<std::size_t>(axis)]);
        lua_rawseti(lua, -2, axis + 1);
    }
}

/// Pushes the thickness and the points on both sides; nil when the part has no wall to measure.
int thinnest(lua_State* lua) {
    const Mesh& mesh = self(lua);
    Failure failure;
    std::optional<meshengine::Wall> wall;
    static_assert(std::is_trivially_destructible_v<decltype(wall)>);
    if (!guarded(failure, [&] { wall = meshengine::thinnestWall(mesh); }))
        return luaL_error(lua, "%s", failure.text);
    if (!wall) {
        lua_pushnil(lua);
        return 1;
    }
    lua_pushnumber(lua, wall->thickness);
    lua_createtable(lua, 2, 0);
    pushPoint(lua, wall->from);
    lua_rawseti(lua, -2, 1);
    pushPoint(lua, wall->to);
    lua_rawseti(lua, -2, 2);
    return 2;
}

int triangles(lua_State* lua) {
    lua_pushinteger(lua, static_cast<lua_Integer>(self(lua).triangles.size()));
    return 1;
}

int closed(lua_State* lua) {
    const Mesh& mesh = self(lua);
    Failure failure;
    bool value = false;
    const bool done = guarded(failure, [&] { value = meshengine::isClosed(mesh); });
    if (!done) return luaL_error(lua, "%s", failure.text);
    lua_pushboolean(lua, value);
    return 1;
}

constexpr luaL_Reg kMethods[] = {
    {"size", size},     {"volume", volume},     {"area", area},    {"triangles", triangles},
    {"closed", closed}, {"thinnest", thinnest}, {nullptr, nullptr}};

constexpr luaL_Reg kFunctions[] = {{"part", openPart}, {nullptr, nullptr}};

}  // namespace

CORVANE_MODULE_EXPORT int luaopen_mesh(lua_State* lua) {
    if (luaL_newmetatable(lua, kPartType)) {
        lua_pushcfunction(lua, close);
        lua_setfield(lua, -2, "__gc");
        luaL_newlib(lua, kMethods);
        lua_setfield(lua, -2, "__index");
        lua_pushboolean(lua, 0);  // a script must not reach __gc
        lua_setfield(lua, -2, "__metatable");
    }
    lua_pop(lua, 1);
    luaL_newlib(lua, kFunctions);
    return 1;
}
