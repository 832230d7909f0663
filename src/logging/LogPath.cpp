#include "logging/LogPath.h"

#include "system/Paths.h"

namespace corvane::logging {

std::u16string logPath(std::u16string_view partPath) {
    const std::u16string_view file = system::fileName(partPath);
    const std::size_t dot = file.rfind(u'.');
    std::u16string name = u"Corvane_";
    if (dot != file.npos) name += file.substr(0, dot);
    return system::join(system::parentFolder(partPath), name + u".corvanelog");
}

}  // namespace corvane::logging
