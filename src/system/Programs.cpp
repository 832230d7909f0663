#include "system/Programs.h"

#include <algorithm>

#include "system/Files.h"

namespace corvane::system {
namespace {

bool isControl(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

}  // namespace

std::optional<std::u16string> pathArgument(std::u16string_view path) {
    if (path.starts_with(u'-') || !pathExists(path)) return std::nullopt;
    std::u16string full = fullPath(path);
    if (full.empty() || std::ranges::any_of(full, isControl)) return std::nullopt;
    return full;
}

}  // namespace corvane::system
