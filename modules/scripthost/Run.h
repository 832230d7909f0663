#pragma once

#include <cstddef>
#include <cstdint>
#include <lua.hpp>
#include <string>

#include <corvane/text/CStringW.h>

#include "Limits.h"
#include "Lookup.h"

// What the functions that scripts call know of the run that they belong to.
//
// Lua reports an error by jumping over the frames between: nothing with a destructor lives in a
// frame of this module that Lua calls, and no exception leaves one.

namespace scripthost {

/// The name under which the script's text is compiled and reported.
inline constexpr const char* kScriptName = "script";
inline constexpr const char* kScriptChunk = "=script";

struct Run {
    explicit Run(const Budget& budget) : limits(budget) {}

    Limits limits;
    std::uintptr_t stackFloor = 0;  ///< Where functions with large frames end; see checkStack.
    int returnLine = 0;             ///< Line in the script of the last return to the host, or 0.
    int faultLine = 0;              ///< Line in the script that an error came through, or 0.
    std::size_t printed = 0;        ///< Bytes of print so far.
    int closing = 0;                ///< Depth of coroutines that close one another.

    int findings = 0;     ///< Reported so far, notes apart.
    int findingLine = 0;  ///< Of the first one: the script's line, or 0, and its message.
    std::string findingMessage;

    // What a frame must not own that raises.
    std::string text;
    Lookup lookup;
};

/// Keeps the text that `make` gives in the run, in UTF-8. False when memory is short.
template <typename Make>
bool keepText(Run& run, Make make) noexcept {
    try {
        run.text = CStringW(make()).ToUtf8();
        return true;
    } catch (...) {
        return false;
    }
}

/// The run that a state or any of its coroutines belongs to.
Run& runOf(lua_State* lua);
void setRun(lua_State* lua, Run& run);

/// Has the limits looked at by a state's next instruction.
///
/// Lua allows this from a signal, which may come at any moment. From another thread two things are
/// different: a running function's record may be given back or reused while its mark is set.
/// Limits::allocate holds the former off. Of the latter, one member is at the place of the mark
/// that a C function uses, in protected calls that can yield; they call Limits::settle first.
void armHook(lua_State* lua) noexcept;
void disarmHook(lua_State* lua) noexcept;

/// The line of the innermost running function of the script, from 1; 0 when there is none.
int scriptLine(lua_State* lua) noexcept;

/// Raises an error when little is left of the thread's stack. For functions with large frames that
/// call back; what Lua needs for all its levels of calls in C is left.
void checkStack(lua_State* lua);

/// Raises the error that no script can catch.
[[noreturn]] void raiseLimit(lua_State* lua);

/// Raises it when a limit has been reached. `status` is that of a protected call just made: an
/// exhausted memory must not be caught either.
void stopIfOver(lua_State* lua, int status = LUA_OK);

/// Takes steps of work that Lua does not count itself, before it is done.
void spend(lua_State* lua, std::uint64_t steps);
/// The same for a look through so many bytes.
inline constexpr std::uint64_t kBytesInAStep = 32;
void spendBytes(lua_State* lua, std::uint64_t bytes);

}  // namespace scripthost
