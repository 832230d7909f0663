#pragma once

#include <string_view>

/// Whether a whole text fits a pattern: "?" means any one character, "*" for any number of
/// them. Case of ASCII letters does not count.
bool fitsName(std::string_view pattern, std::string_view name);

/// The same for a path: "?" and "*" match no "/", which only "**" does; case counts.
bool fitsPath(std::string_view pattern, std::string_view path);

/// True for a text with one of these signs.
bool isPattern(std::string_view text);
