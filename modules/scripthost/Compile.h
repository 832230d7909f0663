#pragma once

#include <cstddef>
#include <lua.hpp>
#include <string_view>

namespace scripthost {

/// Compiles Lua text; binary chunks are refused. Leaves the function or an error value and gives
/// the status, as lua_load does. Raises nothing. `prefix` is compiled before the text.
int compileText(lua_State* lua, std::string_view text, const char* chunk,
                std::string_view prefix = {});

/// The next piece of a text that is being compiled, taken off its front, and null at its end. For
/// a reader of lua_load: counts what it gives and may raise.
///
/// What a byte costs depends on the text: deeply nested functions or a long chain of conditions
/// take the square of their length. So the limits are looked at all along, piece by piece.
const char* takePiece(lua_State* lua, std::string_view& text, std::size_t* size);

}  // namespace scripthost
