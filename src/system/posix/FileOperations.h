#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/types.h>
#include <utility>

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
    virtual int changeOwner(int descriptor, uid_t user, gid_t group);
    virtual int changeMode(int descriptor, mode_t mode);
    virtual int lock(int descriptor, int operation);
};

/// The operations of this process.
FileOperations& fileOperations();

/// Sets them; null for those of the system, as at the start. The object is the caller's. Not while
/// another thread works with files.
void setFileOperations(FileOperations* operations);

/// Owns an open file descriptor; -1 for none.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return number_; }
    bool isOpen() const { return number_ >= 0; }
    /// Hands the descriptor on to a new owner.
    int release() { return std::exchange(number_, -1); }
    /// False when closing reports that earlier writes got lost.
    bool close();

private:
    int number_;
};

/// open(2) that is not disturbed by signals, never waits for the other end of a pipe and hands
/// nothing on to child processes.
int openFile(const char* path, int flags, mode_t mode = 0);

/// Makes a file or empties it, for writes that each go to its end as it is then: another process
/// that writes there too loses nothing. -1 for what is no regular file and no device: a pipe would
/// block its writer, or end the process when its reader goes.
int openEmptied(const char* path);

/// Writes all bytes at the descriptor's position. A short write goes on with the rest.
bool writeAll(int descriptor, std::string_view bytes);

/// A path as the system calls take it: UTF-8 with "/" as its separator. Text with a zero unit in it
/// names no file and gives an empty path, which every call refuses.
std::string nativePath(std::u16string_view path);

}  // namespace corvane::system
