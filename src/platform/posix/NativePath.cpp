#include "platform/posix/NativePath.h"

#include "platform/Paths.h"
#include "platform/Unicode.h"

namespace corvane::platform {

std::string nativePath(std::u16string_view path) {
    if (path.find(u'\0') != path.npos) return {};
    return toUtf8(normalise(path));
}

}  // namespace corvane::platform
