#include "Run.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "Collector.h"

namespace scripthost {
namespace {

/// Instructions between two looks at the limits. Few, because one instruction can be slow: it may
/// compare or look through megabytes.
constexpr int kPeriod = 100;
constexpr std::uint64_t kBytesInAStep = 32;

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

void noteReturn(lua_State* lua, lua_Debug* record) {
    lua_Debug caller;
    if (lua_getstack(lua, 1, &caller)) return;
    lua_getinfo(lua, "Sl", record);
    runOf(lua).returnLine =
        std::strcmp(record->source, kScriptChunk) == 0 ? record->currentline : 0;
}

void hook(lua_State* lua, lua_Debug* record) {
    if (record->event == LUA_HOOKRET) {
        noteReturn(lua, record);
    } else {
        spend(lua, kPeriod);
        collectWhenDue(lua);
    }
}

void setHook(lua_State* lua, int period) {
    lua_sethook(lua, hook, LUA_MASKCOUNT | LUA_MASKRET, period);
}

}  // namespace

Run& runOf(lua_State* lua) {
    return **static_cast<Run**>(lua_getextraspace(lua));
}

void setRun(lua_State* lua, Run& run) {
    *static_cast<Run**>(lua_getextraspace(lua)) = &run;
}

void watch(lua_State* lua) {
    setHook(lua, kPeriod);
}

int scriptLine(lua_State* lua) noexcept {
    if (const int line = firstLine(lua, 0, kInnermost)) return line;
    const int depth = depthOf(lua);
    return firstLine(lua, std::max(kInnermost, depth - kOutermost), depth);
}

void raiseLimit(lua_State* lua) {
    // A handler or a closing variable that runs while the error goes up fails at once.
    setHook(lua, 1);
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
