#include "Run.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "Collector.h"
#include "HostThread.h"

namespace scripthost {
namespace {

/// Address of the error value of a limit; it takes no memory to raise.
char limitTag;

/// The frames of a deep recursion that are looked at on either side. Lua walks to each from the
/// innermost one, so that a look at all would take the square of their number.
constexpr int kInnermost = 200;
constexpr int kOutermost = 20;

int firstLine(lua_State* lua, int level, int end) {
    lua_Debug record;
    for (; level < end && lua_getstack(lua, level, &record); ++level) {
        lua_getinfo(lua, "Sl", &record);
        if (std::strcmp(record.source, kScriptChunk) == 0 && record.currentline > 0)
            return record.currentline;
    }
    return 0;
}

int depthOf(lua_State* lua) {
    lua_Debug record;
    int within = 0;
    int beyond = 1;
    for (; lua_getstack(lua, beyond, &record); beyond *= 2)
        within = beyond;
    while (beyond - within > 1) {
        const int middle = within + (beyond - within) / 2;
        (lua_getstack(lua, middle, &record) ? within : beyond) = middle;
    }
    return beyond;
}

void hook(lua_State* lua, lua_Debug*) {
    if (!runOf(lua).limits.resume(lua)) raiseLimit(lua);
    collectWhenDue(lua);
}

}  // namespace

Run& runOf(lua_State* lua) {
    return **static_cast<Run**>(lua_getextraspace(lua));
}

void setRun(lua_State* lua, Run& run) {
    *static_cast<Run**>(lua_getextraspace(lua)) = &run;
}

void armHook(lua_State* lua) noexcept {
    lua_sethook(lua, hook, LUA_MASKCOUNT, 1);
}

void disarmHook(lua_State* lua) noexcept {
    lua_sethook(lua, nullptr, 0, 0);
}

void checkStack(lua_State* lua) {
    if (stackPosition() < runOf(lua).stackFloor) luaL_error(lua, "C stack overflow");
}

int scriptLine(lua_State* lua) noexcept {
    if (const int line = firstLine(lua, 0, kInnermost)) return line;
    const int depth = depthOf(lua);
    return firstLine(lua, std::max(kInnermost, depth - kOutermost), depth);
}

void raiseLimit(lua_State* lua) {
    // A handler or a closing variable that runs while the error goes up fails at once.
    runOf(lua).limits.arm(lua);
    lua_pushlightuserdata(lua, &limitTag);
    lua_error(lua);
    std::abort();
}

void stopIfOver(lua_State* lua, int status) {
    Limits& limits = runOf(lua).limits;
    if (status == LUA_ERRMEM) limits.reach(Limit::Memory);
    if (limits.reached() != Limit::None) raiseLimit(lua);
}

void spend(lua_State* lua, std::uint64_t steps) {
    if (!runOf(lua).limits.spend(steps)) raiseLimit(lua);
}

void spendBytes(lua_State* lua, std::uint64_t bytes) {
    spend(lua, 1 + bytes / kBytesInAStep);
}

}  // namespace scripthost
