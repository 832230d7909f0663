#include "system/posix/NativePath.h"

#include "system/Paths.h"
#include "system/Unicode.h"

namespace corvane::system {

std::string nativePath(std::u16string_view path) {
    if (path.find(u'\0') != path.npos) return {};
    return toUtf8(normalise(path));
}

}  // namespace corvane::system
