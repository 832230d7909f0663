#include "system/posix/FileOperations.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace corvane::system {

namespace {

// Its destructor does nothing, so a file that is closed at the end of the process finds it.
constinit FileOperations own;
FileOperations* replacement = nullptr;

}  // namespace

int FileOperations::open(const char* path, int flags, mode_t mode) {
    return ::open(path, flags, mode);
}

ssize_t FileOperations::write(int descriptor, const void* bytes, std::size_t count) {
    return ::write(descriptor, bytes, count);
}

int FileOperations::sync(int descriptor) {
    return ::fsync(descriptor);
}

int FileOperations::truncate(int descriptor, off_t size) {
    return ::ftruncate(descriptor, size);
}

int FileOperations::reserve(int descriptor, off_t size) {
    return ::posix_fallocate(descriptor, 0, size);
}

int FileOperations::close(int descriptor) {
    return ::close(descriptor);
}

int FileOperations::rename(const char* from, const char* to) {
    return ::rename(from, to);
}

int FileOperations::unlink(const char* path) {
    return ::unlink(path);
}

int FileOperations::changeOwner(int descriptor, uid_t user, gid_t group) {
    return ::fchown(descriptor, user, group);
}

int FileOperations::changeMode(int descriptor, mode_t mode) {
    return ::fchmod(descriptor, mode);
}

int FileOperations::lock(int descriptor, int operation) {
    return ::flock(descriptor, operation);
}

FileOperations& fileOperations() {
    return replacement ? *replacement : own;
}

void setFileOperations(FileOperations* operations) {
    replacement = operations;
}

namespace {

bool isFileOrDevice(int descriptor) {
    struct stat status;
    return ::fstat(descriptor, &status) == 0 &&
           (S_ISREG(status.st_mode) || S_ISCHR(status.st_mode));
}

// A terminal that is slower than its writer would refuse what it cannot take at once.
bool letWritesWait(int descriptor) {
    const int flags = ::fcntl(descriptor, F_GETFL);
    return flags >= 0 && ::fcntl(descriptor, F_SETFL, flags & ~O_NONBLOCK) == 0;
}

}  // namespace

bool Descriptor::close() {
    const int number = release();
    // The descriptor is gone after EINTR too: a second close could hit another thread's file.
    return number < 0 || fileOperations().close(number) == 0 || errno == EINTR;
}

int openFile(const char* path, int flags, mode_t mode) {
    int number;
    do {
        number = fileOperations().open(path, flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, mode);
    } while (number < 0 && errno == EINTR);
    return number;
}

int openEmptied(const char* path) {
    Descriptor file(openFile(path, O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0666));
    const bool usable = file.isOpen() && isFileOrDevice(file.get()) && letWritesWait(file.get());
    return usable ? file.release() : -1;
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = fileOperations().write(descriptor, bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

}  // namespace corvane::system
