#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "support/TemporaryFolder.h"

/// Writes a shell script that does what `body` says and then leaves "name|argument|argument" and
/// what `body` wrote to file descriptor 3 for startedIn(folder).
inline std::string writeProgram(const TemporaryFolder& folder, const std::string& name,
                                const std::string& body = "") {
    const std::string log = folder.path("log");
    folder.write(name, "#!/bin/sh\nexec 3>" + log + ".$$\n(IFS='|'; echo \"${0##*/}|$*\" >&3)\n" +
                           body + "\n/bin/mv " + log + ".$$ " + log + "\n");
    std::filesystem::permissions(folder.path(name), std::filesystem::perms::owner_all);
    return folder.path(name);
}

/// What the last program has left, once it is there; empty when none ends within ten seconds.
inline std::string startedIn(const TemporaryFolder& folder) {
    for (int i = 0; i < 2000 && !folder.exists("log"); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    const std::string text = folder.read("log");
    std::filesystem::remove(folder.path("log"));
    return text;
}
