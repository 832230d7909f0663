#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::system {

/// True when the path names a file or a folder that can be seen.
bool pathExists(std::u16string_view path);
bool folderExists(std::u16string_view path);

/// The path from the root on: a relative one continues the current folder. Empty when that is gone.
std::u16string fullPath(std::u16string_view path);

/// Makes a folder with its missing parents. True when it is there afterwards. A relative or empty
/// path is refused.
bool createFolders(std::u16string_view path);

/// Names of what is in a folder, in order of their code units; none when it cannot be read.
std::vector<std::u16string> namesIn(std::u16string_view folder);

/// The machine's common folder for application data, without a closing separator: /var/lib on
/// POSIX.
std::u16string commonDataFolder();

/// What a file may hold at most before a read refuses it. Text files of this system are far
/// smaller.
inline constexpr std::size_t kLargestFile = std::size_t{1} << 31;

/// The bytes of a regular file; nothing when it is missing, is no regular file, cannot be read or
/// is larger than `limit`.
std::optional<std::string> readFile(std::u16string_view path, std::size_t limit = kLargestFile);

/// A regular file that is open for reading in any place. Closes itself.
class InputFile {
public:
    /// An empty pointer when it is missing, is no regular file or cannot be read.
    static std::unique_ptr<InputFile> open(std::u16string_view path);

    virtual ~InputFile() = default;
    /// The size of the file when it was opened, in bytes.
    virtual std::uint64_t size() const = 0;
    /// Fills `bytes` from `offset` on. False when the file ends before, or cannot be read.
    virtual bool read(std::uint64_t offset, std::span<char> bytes) const = 0;
};

/// Replaces the content of a file, or makes it. Writes a temporary file in the same folder, flushes
/// it to the disk and renames it over the old one, whose mode and (where permitted) ownership it
/// takes; a symbolic link is followed first. Where the folder lets no file be made or replaced, the
/// file is written in place. Temporary files that killed saves have left in the folder are removed.
/// What is no regular file or may not be written is refused. On failure
/// the result is false, and the old file is left whole unless it had to be written in place.
bool replaceFile(std::u16string_view path, std::string_view bytes);

/// Takes the next bytes of a content. False when they cannot be kept: what follows is not needed.
using ByteSink = std::function<bool(std::string_view)>;
/// Hands a content to a sink, piece by piece, and says whether the sink took all of it. The content
/// is the same each time.
using ByteSource = std::function<bool(const ByteSink&)>;

/// The same for a content that is never in memory as a whole.
bool replaceFile(std::u16string_view path, const ByteSource& content);

/// A file that is open for writing and readable by others meanwhile. Closes itself.
class OutputFile {
public:
    /// Makes the file or empties it. An empty pointer when it cannot be opened or is a folder, a
    /// pipe or a socket.
    static std::unique_ptr<OutputFile> open(std::u16string_view path);

    virtual ~OutputFile() = default;
    /// Hands the bytes to the system in one write, at the end of the file whatever else writes to
    /// it. False when they did not all arrive.
    virtual bool write(std::string_view bytes) = 0;
};

/// What tells one state of a file from another without reading it.
class FileStamp {
public:
    /// The state of the file at a path now, or within a SteadyFilesScope at the first look. That it
    /// is missing is a state too.
    static FileStamp of(std::u16string_view path);
    /// The state now, in a scope too.
    static FileStamp now(std::u16string_view path);

    /// True when the file that had this stamp is sure to be unchanged under the other one, or both
    /// are the same look. A file that was written right before it was stamped may change again
    /// within one tick of the file system's clock, so its stamp proves nothing.
    bool proves(const FileStamp& later) const;

    bool exists() const { return exists_; }

private:
    std::uint64_t look_ = 0;  // of a scope, or none
    bool exists_ = false;
    bool settled_ = true;
    std::uint64_t volume_ = 0;
    std::uint64_t number_ = 0;
    std::int64_t size_ = 0;
    std::int64_t modified_ = 0;  // nanoseconds, by the file system's clock
    std::int64_t changed_ = 0;
};

/// A C stream over a new text file in UTF-8 with a byte-order mark, in place of the file's earlier
/// content. Null when the file cannot be opened or is a folder, a pipe or a socket. A symbolic link
/// is followed. The stream has no buffer, goes on at the end of the file whatever else writes to
/// it, and is not handed on to child processes. The caller closes it.
std::FILE* openTextStream(std::u16string_view path);

/// Hands a text in UTF-8 to the system in one write, which no other thread or process divides. The
/// stream is one of openTextStream. What cannot be written is lost.
void writeText(std::FILE* stream, std::string_view text);

}  // namespace corvane::system
