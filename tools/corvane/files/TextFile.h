#pragma once

#include <optional>
#include <string>

#include <corvane/text/CStringW.h>

/// The bytes of a file; nothing when it is no file that can be read.
std::optional<std::string> bytesOfFile(const CStringW& path);

/// Replaces a file as a whole, or makes it. False when that fails; the old file is then left as it
/// was.
bool replaceFile(const CStringW& path, const std::string& bytes);

/// The text of a well-formed XML file in UTF-8; nothing when it is none, with the reason and its
/// place in `problem`.
std::optional<std::string> xmlOfFile(const CStringW& path, CStringW& problem);
