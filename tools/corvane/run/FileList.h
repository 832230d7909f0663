#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The files that a person names on a command line.
struct FileList {
    std::vector<std::string> files;  ///< Each once, in the order given.
    std::vector<std::string> problems;
    std::vector<std::string>
        notes;  ///< What a person may not have meant: a file named more than once.
};

/// Each argument is a file; a folder, which means the files in it and below whose names end
/// in one of `endings`, by name; a pattern ("parts/*.stl", "parts/**"), which means the files
/// that fit it, by name; or "@LIST", a text file of such arguments, one a line, where empty lines
/// and those that begin with "#" do not count. Paths in a list are relative to where the program
/// runs. A folder, pattern or list without a file is a problem, and so is a folder that cannot be
/// read; a file that is not there is taken.
FileList expandFiles(std::span<const std::string> arguments,
                     std::span<const std::string_view> endings);
