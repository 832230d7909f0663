// The engine as scripts see it: the table `mesh` with part(), the part of the run. There is no way
// to open another file: scripts are not trusted, and may not find out what the machine holds.
//
// Lua reports an error by jumping over the frames between: no object with a destructor lives in a
// frame that raises, and no exception leaves a frame that Lua calls. So all work is done in
// functions that answer with plain values, and only the outermost frame raises.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <lua.hpp>
#include <memory>
#include <optional>
#include <utility>

#include "Measures.h"
#include "MeshReader.h"

#ifdef _WIN32
#define MESHENGINE_EXPORT __declspec(dllexport)
#else
#define MESHENGINE_EXPORT __attribute__((visibility("default")))
#endif

namespace {

using meshengine::Mesh;

constexpr const char* kPartType = "mesh.part";
constexpr const char* kPartVariable = "CORVANE_PART";

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

bool load(const char* path, Mesh*& mesh, Failure& failure) noexcept {
    return guarded(failure, [&] {
        meshengine::ReadResult result = meshengine::readMesh(path);
        if (result.mesh) {
            mesh = std::make_unique<Mesh>(std::move(*result.mesh)).release();
        } else {
            failure.set(result.error.c_str());
        }
    });
}

int openPart(lua_State* lua) {
    const char* path = std::getenv(kPartVariable);
    if (!path || !*path) return luaL_error(lua, "this run has no part");
    auto** slot = static_cast<Mesh**>(lua_newuserdatauv(lua, sizeof(Mesh*), 0));
    *slot = nullptr;
    luaL_setmetatable(lua, kPartType);
    Failure failure;
    if (!load(path, *slot, failure)) return luaL_error(lua, "%s", failure.text);
    return 1;
}

/// The part that a method was called on.
const Mesh& self(lua_State* lua) {
    const Mesh* mesh = *static_cast<Mesh**>(luaL_checkudata(lua, 1, kPartType));
    if (!mesh) luaL_error(lua, "this part is closed");
    return *mesh;
}

int close(lua_State* lua) {
    auto** slot = static_cast<Mesh**>(luaL_checkudata(lua, 1, kPartType));
    delete *slot;
    *slot = nullptr;
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
int minimumWall(lua_State* lua) {
    return pushNumber(lua, meshengine::minimumWall);
}
int area(lua_State* lua) {
    return pushNumber(lua, meshengine::surfaceArea);
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
    {"size", size},     {"volume", volume},        {"area", area},    {"triangles", triangles},
    {"closed", closed}, {"min_wall", minimumWall}, {nullptr, nullptr}};

constexpr luaL_Reg kFunctions[] = {{"part", openPart}, {nullptr, nullptr}};

}  // namespace

extern "C" MESHENGINE_EXPORT int luaopen_mesh(lua_State* lua) {
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
