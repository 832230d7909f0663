#include "logging/LogPath.h"

#include "platform/Paths.h"

namespace corvane::logging {

std::u16string logPath(std::u16string_view partPath) {
    const std::u16string_view file = platform::fileName(partPath);
    const std::size_t dot = file.rfind(u'.');
    std::u16string name = u"Corvane_";
    if (dot != file.npos) name += file.substr(0, dot);
    return platform::join(platform::parentFolder(partPath), name + u".corvanelog");
}

}  // namespace corvane::logging
