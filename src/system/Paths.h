#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane::system {

/// The separator that paths are joined with: "/" on POSIX.
extern const char16_t kSeparator;

/// True for what cuts a path: "/" and "\" on POSIX, so that a rule file written elsewhere works.
bool isSeparator(char16_t unit);

/// The position of the last separator, or npos.
std::size_t lastSeparator(std::u16string_view path);
/// The same in 8-bit text of the process's code page.
std::size_t lastSeparator(std::string_view path);

/// What follows the last separator; the whole path when there is none.
std::u16string_view fileName(std::u16string_view path);

/// What precedes the last separator; empty when there is none.
std::u16string_view parentFolder(std::u16string_view path);

/// `folder`, one separator, `name`. No look at what `folder` ends in.
std::u16string join(std::u16string_view folder, std::u16string_view name);

/// The path with every separator in the platform's own form: what the system calls take. Every
/// operation of this layer that takes a path does this itself.
std::u16string normalise(std::u16string_view path);

/// True when the whole name fits the pattern, in which "*" stands for any run of units, an empty
/// one too, and "?" for exactly one; case is ignored.
bool matchesPattern(std::u16string_view name, std::u16string_view pattern);

/// The path with these bytes as its name. On POSIX a name need not be UTF-8: each byte that is none
/// becomes a lone surrogate, which the operations on files turn back into that byte.
std::u16string pathOfBytes(std::string_view bytes);

/// The argument that hands a file or a folder to a program: its full path. Nothing when there is no
/// such one, or when a program could mistake the path for something else: it begins with "-" or
/// holds a control character. Text from a file or from a caller reaches a program in no other way.
std::optional<std::u16string> pathArgument(std::u16string_view path);

}  // namespace corvane::system
