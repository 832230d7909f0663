#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include <corvane/base/Types.h>

namespace corvane::emulation {

/// The program that documents are opened with, by its full path, or nothing. On POSIX the
/// environment variable CORVANE_HELP_OPENER names it, by its full path or by a name in PATH;
/// without the variable it is "xdg-open".
std::optional<std::u16string> documentOpener();

/// Opens a file or a folder in whatever the user opens such a one with, and does not wait for that
/// to end. False when the path is missing or no plain argument, or when the opener is missing or
/// reports a failure within two seconds.
bool openDocument(std::u16string_view path);

/// The viewer for compiled help files. The first request settles it: what is found is kept, and
/// when there is none every later request fails without another look.
///
/// On POSIX it is a program: the one that the default value of the registry key
/// "CLSID\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\InprocServer32" below HKEY_CLASSES_ROOT names, by
/// its full path or by a name in PATH, of at most 129 units; else the first of "xchm",
/// "kchmviewer" and "uchmviewer" in PATH. "xchm" takes the topic by its option, the other two show
/// only the file, and every other program gets two arguments, file and topic.
class HelpViewer {
public:
    /// The one of the process.
    static HelpViewer& ofProcess();

    /// What a viewer that has not been settled would find now: a full path, or nothing.
    static std::optional<std::u16string> installed();

    /// Shows a topic of a help file and does not wait for the viewer to be closed. False when there
    /// is no viewer, it cannot be started, the file is missing or no plain argument, or the topic
    /// is negative. Safe on any thread.
    bool show(std::u16string_view file, QorLong topic);

private:
    std::optional<std::u16string> settled();

    static inline std::mutex mutex_;
    std::optional<std::u16string> program_;
    bool failed_ = false;
};

}  // namespace corvane::emulation
