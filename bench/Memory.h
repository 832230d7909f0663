#pragma once

#include <fstream>
#include <functional>
#include <malloc.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

/// Of the process that asks, from /proc/self/status.
inline double memory(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == name + ':' && status >> kilobytes) return kilobytes * 1024;
    }
    return 0;
}

/// By how many bytes a process of its own grows at most in `work`; negative if it fails.
inline double growth(const std::function<bool()>& work) {
    int ends[2] = {};
    if (pipe(ends) != 0) return -1;
    const pid_t child = fork();
    if (child == 0) {
        // As in a new process: what the benchmarks before it have freed would be used again and not
        // be seen, and the heap would keep large blocks, as it has learnt from them.
        malloc_trim(0);
        mallopt(M_MMAP_THRESHOLD, 128 * 1024);
        std::ofstream("/proc/self/clear_refs") << "5";
        const double before = memory("VmRSS");
        double grown = work() ? memory("VmHWM") - before : -1;
        _exit(write(ends[1], &grown, sizeof grown) == sizeof grown ? 0 : 1);
    }
    close(ends[1]);
    double grown = -1;
    if (read(ends[0], &grown, sizeof grown) != sizeof grown) grown = -1;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return grown;
}

}  // namespace bench
