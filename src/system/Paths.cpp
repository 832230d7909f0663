#include "system/Paths.h"

#include <algorithm>

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

}  // namespace corvane::system
