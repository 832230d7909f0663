#pragma once

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

namespace corvane::system {

/// Starts programs with nothing to read, no other descriptor of this process, a session of their
/// own, no signal blocked and none ignored.
class Spawn {
public:
    /// What the program writes goes to the descriptor `output`, or nowhere for -1; its errors go
    /// nowhere.
    explicit Spawn(int output) {
        posix_spawn_file_actions_init(&files_);
        // First, because it may be one of the standard descriptors that are opened below.
        if (output >= 0) fault_ |= posix_spawn_file_actions_adddup2(&files_, output, STDOUT_FILENO);
        fault_ |= posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDWR, 0);
        if (output < 0)
            fault_ |= posix_spawn_file_actions_adddup2(&files_, STDIN_FILENO, STDOUT_FILENO);
        fault_ |= posix_spawn_file_actions_adddup2(&files_, STDIN_FILENO, STDERR_FILENO);
        fault_ |= posix_spawn_file_actions_addclosefrom_np(&files_, STDERR_FILENO + 1);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setflags(
            &attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);
    }
    Spawn(const Spawn&) = delete;
    Spawn& operator=(const Spawn&) = delete;
    ~Spawn() {
        posix_spawnattr_destroy(&attributes_);
        posix_spawn_file_actions_destroy(&files_);
    }

    /// The process of the program whose full path is the first argument, or -1 when it cannot be
    /// started. A null pointer ends the arguments.
    pid_t start(char* const* arguments) const {
        pid_t process = -1;
        const bool started = fault_ == 0 && ::posix_spawn(&process, arguments[0], &files_,
                                                          &attributes_, arguments, environ) == 0;
        return started ? process : -1;
    }

private:
    int fault_ = 0;  // not 0 when there was no memory for all of this
    posix_spawn_file_actions_t files_;
    posix_spawnattr_t attributes_;
};

}  // namespace corvane::system
