#include "system/Programs.h"

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

#include "system/Environment.h"
#include "system/Paths.h"
#include "system/posix/NativePath.h"

namespace corvane::system {
namespace {

constexpr char16_t kBetweenFolders = u':';
// Where an environment without PATH has its programs, as for the system's own look-up.
constexpr std::u16string_view kStandardFolders = u"/bin:/usr/bin";

bool isProgram(std::u16string_view path) {
    const std::string native = nativePath(path);
    struct stat status;
    return native.starts_with('/') && ::stat(native.c_str(), &status) == 0 &&
           S_ISREG(status.st_mode) && ::access(native.c_str(), X_OK) == 0;
}

}  // namespace

std::optional<std::u16string> findProgram(std::u16string_view name) {
    if (name.empty()) return std::nullopt;
    if (lastSeparator(name) != name.npos)
        return isProgram(name) ? std::optional(normalise(name)) : std::nullopt;
    const std::u16string folders =
        environmentVariable(u"PATH").value_or(std::u16string(kStandardFolders));
    for (std::u16string_view rest = folders; !rest.empty();) {
        const std::size_t end = std::min(rest.find(kBetweenFolders), rest.size());
        std::u16string path = join(rest.substr(0, end), name);
        if (end > 0 && isProgram(path)) return path;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return std::nullopt;
}

}  // namespace corvane::system
