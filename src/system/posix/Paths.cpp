#include "system/Paths.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <sys/stat.h>

#include "system/Files.h"
#include "system/Unicode.h"
#include "system/posix/FileOperations.h"

namespace corvane::system {

const char16_t kSeparator = u'/';

bool isSeparator(char16_t unit) {
    return unit == u'/' || unit == u'\\';
}

std::size_t lastSeparator(std::string_view path) {
    // In UTF-8 these bytes are part of no other character.
    for (std::size_t i = path.size(); i-- > 0;) {
        if (path[i] == '/' || path[i] == '\\') return i;
    }
    return std::string_view::npos;
}

namespace {

// A byte that is no UTF-8 is the lone surrogate with this distance.
constexpr char16_t kEscapes = 0xDC00;

bool isEscape(char16_t unit) {
    return unit >= kEscapes + 0x80 && unit <= kEscapes + 0xFF;
}

std::string nativeBytes(std::u16string_view path) {
    std::string bytes;
    std::size_t from = 0;
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (!isEscape(path[i]) || (i > 0 && isHighSurrogate(path[i - 1]))) continue;
        appendUtf8(bytes, path.substr(from, i - from));
        bytes += static_cast<char>(path[i] - kEscapes);
        from = i + 1;
    }
    appendUtf8(bytes, path.substr(from));
    return bytes;
}

}  // namespace

std::string nativePath(std::u16string_view path) {
    // Most paths are ASCII, and the same files are looked at from rule to rule.
    std::string bytes(path.size(), '\0');
    char16_t bits = 0;
    bool hasZero = false;
    for (std::size_t i = 0; i < path.size(); ++i) {
        bits |= path[i];
        hasZero |= path[i] == 0;
        bytes[i] = static_cast<char>(path[i]);
    }
    if (hasZero) return {};
    if (bits >= 0x80) bytes = nativeBytes(path);
    // In UTF-8 this byte is part of no other character.
    std::ranges::replace(bytes, '\\', '/');
    return bytes;
}

std::u16string pathOfBytes(std::string_view bytes) {
    std::u16string path;
    while (!bytes.empty()) {
        std::size_t length = 1;
        while (length <= std::min<std::size_t>(4, bytes.size()) && !isUtf8(bytes.substr(0, length)))
            ++length;
        if (length <= std::min<std::size_t>(4, bytes.size())) {
            appendFromUtf8(path, bytes.substr(0, length));
        } else {
            length = 1;
            path += static_cast<char16_t>(kEscapes + static_cast<unsigned char>(bytes.front()));
        }
        bytes.remove_prefix(length);
    }
    return path;
}

namespace {

bool isFolder(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

bool pathExists(std::u16string_view path) {
    struct stat status;
    return ::stat(nativePath(path).c_str(), &status) == 0;
}

bool folderExists(std::u16string_view path) {
    return isFolder(nativePath(path));
}

std::u16string fullPath(std::u16string_view path) {
    std::u16string own = normalise(path);
    if (own.starts_with(kSeparator)) return own;
    std::error_code gone;
    const std::string current = std::filesystem::current_path(gone).string();
    return gone ? std::u16string() : join(fromUtf8(current), own);
}

bool createFolders(std::u16string_view path) {
    const std::string native = nativePath(path);
    if (native.empty() || native.front() != '/') return false;
    std::size_t end = 0;
    while (end != native.npos) {
        end = native.find('/', end + 1);
        const std::string prefix = native.substr(0, end);
        // What failed may still be there: on a read-only file system mkdir says so before it looks.
        if (::mkdir(prefix.c_str(), 0777) != 0 && !isFolder(prefix)) return false;
    }
    return true;
}

std::vector<std::u16string> namesIn(std::u16string_view folder) {
    std::vector<std::u16string> names;
    std::error_code failed;
    std::filesystem::directory_iterator entry(nativePath(folder), failed);
    for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed))
        names.push_back(fromUtf8(entry->path().filename().string()));
    std::ranges::sort(names);
    return names;
}

std::u16string commonDataFolder() {
    return u"/var/lib";
}

namespace {

// Coarser than the clock of any local file system.
constexpr time_t kSettlingSeconds = 2;

std::int64_t nanoseconds(const timespec& time) {
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

FileStamp FileStamp::now(std::u16string_view path) {
    FileStamp stamp;
    struct stat status;
    stamp.exists_ = ::stat(nativePath(path).c_str(), &status) == 0;
    if (!stamp.exists_) return stamp;
    stamp.volume_ = status.st_dev;
    stamp.number_ = status.st_ino;
    stamp.size_ = status.st_size;
    stamp.modified_ = nanoseconds(status.st_mtim);
    stamp.changed_ = nanoseconds(status.st_ctim);
    // The clock by which the system stamps files, and the quickest to ask.
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &time);
    stamp.settled_ = time.tv_sec - status.st_ctim.tv_sec > kSettlingSeconds;
    return stamp;
}

bool FileStamp::proves(const FileStamp& later) const {
    if (look_ != 0 && look_ == later.look_) return true;
    return settled_ && exists_ == later.exists_ && volume_ == later.volume_ &&
           number_ == later.number_ && size_ == later.size_ && modified_ == later.modified_ &&
           changed_ == later.changed_;
}

}  // namespace corvane::system
