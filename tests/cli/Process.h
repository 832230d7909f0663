#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "support/TemporaryFolder.h"

/// What a program left behind.
struct ProcessResult {
    int status = -1;  ///< -1 when it did not end by itself.
    std::string out;
    std::string err;
};

/// Runs a program with this process's environment. `terminal`, a path, takes the place of standard
/// output and standard error when it is not empty.
inline ProcessResult runProcess(std::vector<std::string> command,
                                const std::string& terminal = {}) {
    const TemporaryFolder folder;
    const std::string out = terminal.empty() ? folder.path("out") : terminal;
    const std::string err = terminal.empty() ? folder.path("err") : terminal;
    const int flags = O_WRONLY | O_NOCTTY | (terminal.empty() ? O_CREAT | O_TRUNC : 0);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), flags, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err.c_str(), flags, 0600);

    std::vector<char*> arguments;
    for (std::string& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    pid_t child = 0;
    ProcessResult result;
    if (posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0) {
        int ended = 0;
        waitpid(child, &ended, 0);
        if (WIFEXITED(ended)) result.status = WEXITSTATUS(ended);
    }
    posix_spawn_file_actions_destroy(&actions);
    if (terminal.empty()) {
        result.out = folder.read("out");
        result.err = folder.read("err");
    }
    return result;
}
