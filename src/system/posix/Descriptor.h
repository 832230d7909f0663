#pragma once

#include <cstddef>
#include <string_view>
#include <sys/stat.h>
#include <utility>

namespace corvane::system {

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

}  // namespace corvane::system
