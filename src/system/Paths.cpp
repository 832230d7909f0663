#include "system/Paths.h"

#include <algorithm>
#include <cstddef>

#include "system/Files.h"
#include "system/Programs.h"
#include "system/Unicode.h"

namespace corvane::system {

std::size_t lastSeparator(std::u16string_view path) {
    for (std::size_t i = path.size(); i-- > 0;) {
        if (isSeparator(path[i])) return i;
    }
    return std::u16string_view::npos;
}

std::u16string_view fileName(std::u16string_view path) {
    const std::size_t separator = lastSeparator(path);
    return separator == path.npos ? path : path.substr(separator + 1);
}

std::u16string_view parentFolder(std::u16string_view path) {
    const std::size_t separator = lastSeparator(path);
    return separator == path.npos ? std::u16string_view() : path.substr(0, separator);
}

std::u16string join(std::u16string_view folder, std::u16string_view name) {
    std::u16string path;
    path.reserve(folder.size() + 1 + name.size());
    path.append(folder).append(1, kSeparator).append(name);
    return path;
}

std::u16string normalise(std::u16string_view path) {
    std::u16string own(path);
    std::replace_if(own.begin(), own.end(), isSeparator, kSeparator);
    return own;
}

bool matchesPattern(std::u16string_view name, std::u16string_view pattern) {
    // When a unit does not fit, only the last "*" needs to take one more: the ones before it have
    // found their earliest place already.
    std::size_t at = 0;
    std::size_t wanted = 0;
    std::size_t star = pattern.npos;
    std::size_t starEnd = 0;
    while (at < name.size()) {
        if (wanted < pattern.size() && pattern[wanted] == u'*') {
            star = wanted++;
            starEnd = at;
        } else if (wanted < pattern.size() &&
                   (pattern[wanted] == u'?' || toLower(pattern[wanted]) == toLower(name[at]))) {
            ++wanted;
            ++at;
        } else if (star != pattern.npos) {
            wanted = star + 1;
            at = ++starEnd;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', wanted) == pattern.npos;
}

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
