#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "system/Files.h"
#include "system/posix/Descriptor.h"
#include "system/posix/NativePath.h"

namespace corvane::system {
namespace {

constexpr std::size_t kSmallestRead = 4096;

}  // namespace

std::optional<std::string> readFile(std::u16string_view path, std::size_t limit) {
    const Descriptor file(openFile(nativePath(path).c_str(), O_RDONLY));
    struct stat status;
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > limit) return std::nullopt;

    // The size is a hint: the file may grow meanwhile, and what the kernel makes up reports none.
    std::string bytes;
    std::size_t length = 0;
    bytes.resize(std::max(size + 1, kSmallestRead));
    while (true) {
        const ssize_t count = ::read(file.get(), bytes.data() + length, bytes.size() - length);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        length += static_cast<std::size_t>(count);
        if (length > limit) return std::nullopt;
        if (length == bytes.size()) bytes.resize(length * 2);
    }
    bytes.resize(length);
    return bytes;
}

}  // namespace corvane::system
