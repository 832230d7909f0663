#include "platform/posix/Descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace corvane::platform {

bool Descriptor::isFileOrDevice() const {
    struct stat status;
    return isOpen() && ::fstat(number_, &status) == 0 &&
           (S_ISREG(status.st_mode) || S_ISCHR(status.st_mode));
}

bool Descriptor::close() {
    const int number = std::exchange(number_, -1);
    // The descriptor is gone after EINTR too: a second close could hit another thread's file.
    return number < 0 || ::close(number) == 0 || errno == EINTR;
}

int openFile(const char* path, int flags, mode_t mode) {
    int number;
    do {
        number = ::open(path, flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode);
    } while (number < 0 && errno == EINTR);
    return number;
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

}  // namespace corvane::platform
