#include "system/posix/FileOperations.h"

#include <cstdio>
#include <fcntl.h>
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

FileOperations& fileOperations() {
    return replacement ? *replacement : own;
}

void setFileOperations(FileOperations* operations) {
    replacement = operations;
}

}  // namespace corvane::system
