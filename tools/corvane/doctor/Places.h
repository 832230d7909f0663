#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include <corvane/text/CStringW.h>

/// How a file or folder is found. A folder is readable when what is in it can be reached.
enum class Presence { Missing, Unreadable, Readable };

/// Any text as a path: what is no text of any system names no file and raises nothing.
std::filesystem::path placeOf(const CStringW& path);

Presence presenceOfFile(const CStringW& path);
Presence presenceOfFolder(const CStringW& path);

/// Names of the files in a folder, in order; nothing when it cannot be read.
std::optional<std::vector<CStringW>> filesIn(const CStringW& folder);

/// True when the file can be written. A file that is there keeps its content; one that is not is
/// not there afterwards either.
bool isWritable(const CStringW& path);

/// True when a file or folder that is not there can be made, with the folders that it lacks.
bool canBeMade(const CStringW& path);

/// What is where the path needs a folder; empty when nothing does.
CStringW fileInTheWayOf(const CStringW& path);
