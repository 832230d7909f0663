#pragma once

#include <memory>

#include <corvane/base/Export.h>
#include <corvane/dfx/ILogSink.h>

namespace dfx {

/// The execution log of the process: tagged messages from the add-in and its modules, for people
/// who look into what a run did. It is silent unless the environment switches it on:
///
/// - QOR_EXECUTION_LOG is the path of the log file, at most 259 units long. Without it, or with a
///   longer one, there is no log.
/// - QOR_EXECUTION_LEVEL is a decimal number, the mask of the levels that pass; what follows the
///   digits is ignored. Without it all four pass. The mask is no threshold: 8 passes errors alone,
///   12 warnings and errors, 0 nothing, -1 everything.
///
/// A message is in the file as its prefix ("DEBUG\t\t: ", "INFO\t\t: ", "WARNING\t: ",
/// "ERROR\t\t: ", or "NONE\t\t: " for another level) and its text, in UTF-8; a lone surrogate
/// becomes U+FFFD. Nothing else is added: **a message that should end its line brings its own line
/// end.** Prefix and text reach the file in one write, before the call returns. A file that cannot
/// be opened or written reports nothing, and after a message that was lost for want of disk or
/// memory all further ones are dropped.
///
/// Messages may come from any thread and do not mix. setLevel must not race with them.
class CORVANE_EXPORT Logger {
public:
    /// The logger of the process. The first call builds it, and so reads the environment and
    /// empties the log file. It gives up its sink when the process ends, and drops what
    /// the destructors of statics log after that; no other thread may log then.
    ///
    /// The first call throws when QOR_EXECUTION_LEVEL begins with no number (std::invalid_argument)
    /// or with one beyond 32 bits (std::out_of_range); there is no logger then, and the next call
    /// tries everything again.
    static Logger& instance();

    /// A copy writes to the same file and has a mask of its own.
    Logger(const Logger& source);
    Logger& operator=(const Logger& source);
    ~Logger();

    ///@{
    /// Logs a zero-terminated message at that level; see print.
    void info(const char16_t* message) const;
    void error(const char16_t* message) const;
    ///@}

    /// Logs a zero-terminated message when its level and the mask have a bit in common. This is the
    /// way for debug messages and warnings. A null message is dropped.
    void print(const ILogSink::LOGLEVEL& level, const char16_t* message) const;

    /// Replaces the mask, whatever the environment said.
    void setLevel(const int& level);

private:
    Logger(std::shared_ptr<ILogSink> sink, int level);

    std::shared_ptr<ILogSink> sink_;
    int mask_;
};

/// A sink over the file that QOR_EXECUTION_LOG names now, emptied; an empty handle when the
/// variable names none. A file that cannot be opened gives a sink that drops everything.
CORVANE_EXPORT std::shared_ptr<ILogSink> createLoggingSink();

}  // namespace dfx
