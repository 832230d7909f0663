#pragma once

#include <filesystem>
#include <vector>

#include <corvane/text/CStringW.h>

/// How a file or folder is found.
enum class Presence { Missing, Unreadable, Readable };

/// Any text as a path: what is no text of any system names no file and raises nothing.
std::filesystem::path placeOf(const CStringW& path);

Presence presenceOfFile(const CStringW& path);
Presence presenceOfFolder(const CStringW& path);

/// Names of the files in a folder, in order; empty when it cannot be read.
std::vector<CStringW> filesIn(const CStringW& folder);

/// True when the file can be written. A file that is there keeps its content; one that is not is
/// not there afterwards either.
bool isWritable(const CStringW& path);
