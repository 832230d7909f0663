#pragma once

#include <string>
#include <string_view>

namespace corvane::system {

/// A path as the system calls take it: UTF-8 with "/" as its separator. Text with a zero unit in it
/// names no file and gives an empty path, which every call refuses.
std::string nativePath(std::u16string_view path);

}  // namespace corvane::system
