#include <filesystem>
#include <sys/stat.h>

#include "system/Files.h"
#include "system/Paths.h"
#include "system/Unicode.h"
#include "system/posix/NativePath.h"

namespace corvane::system {
namespace {

bool isFolder(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

bool pathExists(std::u16string_view path) {
    struct stat status;
    return ::stat(nativePath(path).c_str(), &status) == 0;
}

bool folderExists(std::u16string_view path) {
    return isFolder(nativePath(path));
}

std::u16string fullPath(std::u16string_view path) {
    std::u16string own = normalise(path);
    if (own.starts_with(kSeparator)) return own;
    std::error_code gone;
    const std::string current = std::filesystem::current_path(gone).string();
    return gone ? std::u16string() : join(fromUtf8(current), own);
}

bool createFolders(std::u16string_view path) {
    const std::string native = nativePath(path);
    if (native.empty() || native.front() != '/') return false;
    std::size_t end = 0;
    while (end != native.npos) {
        end = native.find('/', end + 1);
        const std::string prefix = native.substr(0, end);
        // What failed may still be there: on a read-only file system mkdir says so before it looks.
        if (::mkdir(prefix.c_str(), 0777) != 0 && !isFolder(prefix)) return false;
    }
    return true;
}

std::u16string commonDataFolder() {
    return u"/var/lib";
}

}  // namespace corvane::system
