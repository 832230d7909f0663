#pragma once

#include <cstdio>
#include <exception>
#include <lua.hpp>
#include <memory>
#include <type_traits>

#include "Push.h"

// Lua reports an error by jumping over the frames between: no object with a destructor lives in a
// frame that raises, and no exception leaves a frame that Lua calls. So all work is done in
// `guarded`, which answers with plain values, and what lives on belongs to an object of Lua.
namespace partengine {

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
void guarded(Failure& failure, Work work) noexcept {
    try {
        work();
    } catch (const std::bad_alloc&) {
        failure.set("not enough memory to measure the part");
    } catch (const std::exception& error) {
        failure.set(error.what());
    } catch (...) {
        failure.set("measuring the part failed");
    }
}

/// What an object of Lua keeps alive.
using Kept = std::shared_ptr<const void>;

void openKept(lua_State* lua);
/// Pushes an object that keeps nothing yet; Lua ends it.
Kept& newKept(lua_State* lua);

/// The part of the run, read at the first call. Raises when there is none or it cannot be read.
const corvane::part::Part& partOf(lua_State* lua);

/// Pushes what `get` gives of the part: a reference into the part, or a value. `get` may throw, and
/// may set the failure that it is given.
template <typename Get>
int answer(lua_State* lua, Get get) {
    const corvane::part::Part& part = partOf(lua);
    using Given = std::invoke_result_t<Get, const corvane::part::Part&, Failure&>;
    using Value = std::remove_cvref_t<Given>;
    static_assert(std::is_trivially_destructible_v<Get>);
    Failure failure;
    if constexpr (std::is_reference_v<Given>) {
        const Value* value = nullptr;
        guarded(failure, [&] { value = &get(part, failure); });
        if (failure.failed) return luaL_error(lua, "%s", failure.text);
        push(lua, *value);
    } else if constexpr (std::is_trivially_destructible_v<Value>) {
        Value value{};
        guarded(failure, [&] { value = get(part, failure); });
        if (failure.failed) return luaL_error(lua, "%s", failure.text);
        push(lua, value);
    } else {
        Kept& kept = newKept(lua);
        guarded(failure, [&] { kept = std::make_shared<const Value>(get(part, failure)); });
        if (failure.failed) return luaL_error(lua, "%s", failure.text);
        push(lua, *static_cast<const Value*>(kept.get()));
    }
    return 1;
}

/// The vector in a field of the table at `index`: three numbers, or fields x, y and z. False when
/// the field is not there. Raises for a vector without direction and for what is no vector.
bool takeDirection(lua_State* lua, int index, const char* field, corvane::part::Vector& vector);

}  // namespace partengine
