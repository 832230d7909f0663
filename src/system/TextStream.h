#pragma once

#include <cstdio>
#include <string_view>

namespace corvane::system {

/// A C stream over a new text file in UTF-8 with a byte-order mark, in place of the file's earlier
/// content. Null when the file cannot be opened or is a folder, a pipe or a socket. A symbolic link
/// is followed. The stream has no buffer, goes on at the end of the file whoever else writes to it,
/// and is not handed on to child processes. The caller closes it.
std::FILE* openTextStream(std::u16string_view path);

/// Hands a text to the system in one write, which no other thread or process divides. The stream is
/// one of openTextStream. A lone surrogate becomes U+FFFD. What cannot be written is lost.
void writeText(std::FILE* stream, std::u16string_view text);

}  // namespace corvane::system
