#pragma once

#include <cstddef>
#include <sys/types.h>

namespace corvane::system {

/// The system calls by which files are opened, changed and moved. All code of this folder makes
/// them through fileOperations(), so that a test can set an object of its own: one that fails a
/// certain call, or one that notes what was synced and forgets the rest. Arguments, results and
/// errno are those of the calls.
class FileOperations {
public:
    virtual ~FileOperations() = default;

    virtual int open(const char* path, int flags, mode_t mode);
    virtual ssize_t write(int descriptor, const void* bytes, std::size_t count);
    virtual int sync(int descriptor);
    virtual int truncate(int descriptor, off_t size);
    /// Makes sure of room on the disk; the error's number is the result, as in posix_fallocate.
    virtual int reserve(int descriptor, off_t size);
    virtual int close(int descriptor);
    virtual int rename(const char* from, const char* to);
    virtual int unlink(const char* path);
};

/// The operations of this process.
FileOperations& fileOperations();

/// Sets them; null for those of the system, as at the start. The object is the caller's. Not while
/// another thread works with files.
void setFileOperations(FileOperations* operations);

}  // namespace corvane::system
