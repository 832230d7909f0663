#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace lint {

/// A name in a script and its place, from 1.
struct LuaName {
    std::string name;
    std::int64_t line = 0;
    std::int64_t column = 0;
};

/// The names of a Lua text that reach beyond it.
struct LuaNames {
    /// Names that are read, and neither declared nor assigned anywhere in the text. A name that is
    /// a local of another block counts as declared: what is listed here is never a false alarm.
    std::vector<LuaName> globals;
    std::vector<LuaName> parameters;  ///< The fields that are read of `params`.
};

/// Reads tokens, not the grammar: the text is one that compiles.
LuaNames namesOf(std::string_view text);

/// True for a word that Lua keeps for itself.
bool isKeyword(const std::string& word);

/// What the script host gives every script.
const std::set<std::string>& hostNames();

}  // namespace lint
