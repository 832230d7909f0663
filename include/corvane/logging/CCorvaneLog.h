#pragma once

#include <cstdio>

#include <corvane/base/Export.h>
#include <corvane/base/Types.h>
#include <corvane/text/CStringW.h>

/// The run log of a part: a text file beside the part, one open at a time in a process. It is UTF-8
/// with a byte-order mark, and a line reads
///
///     [14:7:9] [WallRule.cpp:42] the message
///
/// with the local time, and file and line of the source that logs. No failure is reported: where a
/// log cannot be opened, all later messages are dropped. Each operation may run while no log is
/// open. Opening and closing must not race with other calls; lines from several threads do not mix.
class CORVANE_EXPORT CCorvaneLog {
public:
    /// Opens the log of a part: "Corvane_bracket.corvanelog" in the folder of "bracket.prt". An
    /// older log of that name is replaced. Does nothing while a log is open, or for an empty path.
    ///
    /// The part's name is cut at its last ".", and is empty when it has none. The path should be a
    /// full one: without a folder in it the log lies in the root folder.
    static void CreateLogFile(CStringW partPath);

    /// Opens this very file as the log, replaced. Does nothing for an empty path. It does not close
    /// the log that is open: call CloseLogFile first, or its stream is the caller's to close.
    static void OpenLogFile(CStringW logPath);

    /// The stream of the log, null while none is open. It belongs to this class and ends with
    /// CloseLogFile: closing it otherwise is a fault. What is written to it directly is UTF-8
    /// bytes, and better whole lines than pieces, since it has no buffer.
    static std::FILE* GetLogFile();

    /// Writes one line and hands it to the system at once, in one write. The message is plain text
    /// and written whole, zero units and control characters too; a lone surrogate becomes U+FFFD.
    /// An empty message writes nothing. `sourceFile` is what `__FILE__` gives; its folders are left
    /// out. For a file in the root folder the line has no prefix.
    static void PrintMessage(CStringW message, const char* sourceFile, QorLong line);

    /// Closes the log, so that another part's can be opened.
    static void CloseLogFile();

private:
    static std::FILE* CorvaneLogFile;
};
