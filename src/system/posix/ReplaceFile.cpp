#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/random.h>
#include <unistd.h>

#include "system/Files.h"
#include "system/posix/FileOperations.h"

namespace corvane::system {
namespace {

constexpr int kMostLinks = 40;
constexpr int kMostNames = 16;
constexpr mode_t kPermissions = 0777;
constexpr mode_t kGroup = 0070;

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == path.npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// The path of the file itself: links in its last part are followed even when they lead to nothing
// yet, so that a link stays a link.
std::optional<std::string> followLinks(std::string path) {
    for (int i = 0; i < kMostLinks; ++i) {
        std::array<char, PATH_MAX> buffer;
        const ssize_t length = ::readlink(path.c_str(), buffer.data(), buffer.size());
        if (length < 0) return path;
        if (static_cast<std::size_t>(length) == buffer.size()) return std::nullopt;
        const std::string target(buffer.data(), static_cast<std::size_t>(length));
        if (target.starts_with('/')) {
            path = target;
        } else {
            path = folderOf(path);
            path += '/';
            path += target;
        }
    }
    return std::nullopt;
}

constexpr std::string_view kTemporaryStart = ".corvane-";
constexpr std::string_view kTemporaryEnd = ".tmp";
constexpr std::size_t kTemporaryDigits = 16;

std::string temporaryName(std::uint64_t number) {
    std::array<char, kTemporaryDigits + 1> digits;
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(number));
    return std::string(kTemporaryStart) + digits.data() + std::string(kTemporaryEnd);
}

bool isTemporaryName(std::string_view name) {
    return name.size() == kTemporaryStart.size() + kTemporaryDigits + kTemporaryEnd.size() &&
           name.starts_with(kTemporaryStart) && name.ends_with(kTemporaryEnd);
}

// A new file beside the target, removed again unless it has taken the target's place. It is locked
// while its writer lives.
class TemporaryFile {
public:
    TemporaryFile(const std::string& folder, mode_t mode)
        : file_(create(folder, mode)), lock_(file_.isOpen() ? duplicate() : -1) {}
    ~TemporaryFile() {
        if (!path_.empty()) fileOperations().unlink(path_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool isOpen() const { return file_.isOpen(); }
    int descriptor() const { return file_.get(); }
    // The error of the attempt to make it, or to move it.
    int error() const { return error_; }

    bool moveTo(const std::string& target) {
        error_ = 0;
        if (!file_.close()) return false;
        if (fileOperations().rename(path_.c_str(), target.c_str()) != 0) {
            error_ = errno;
            return false;
        }
        path_.clear();
        return true;
    }

private:
    int create(const std::string& folder, mode_t mode) {
        for (int i = 0; i < kMostNames; ++i) {
            std::uint64_t number = 0;
            if (::getrandom(&number, sizeof number, 0) != sizeof number) break;
            const std::string path = folder + '/' + temporaryName(number);
            Descriptor file(openFile(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, mode));
            error_ = errno;
            if (!file.isOpen() && error_ != EEXIST) return -1;
            // Another save may have taken it for a dead one's before it was locked.
            if (!file.isOpen() || isTaken(file.get())) continue;
            path_ = path;
            return file.release();
        }
        return -1;
    }

    // Locks the file. Where a file system knows no locks, nobody takes it either.
    static bool isTaken(int descriptor) {
        if (fileOperations().lock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
            return true;
        struct stat status;
        return ::fstat(descriptor, &status) == 0 && status.st_nlink == 0;
    }

    // The lock has to outlive the closing, which comes before the move.
    int duplicate() const { return ::fcntl(file_.get(), F_DUPFD_CLOEXEC, 0); }

    std::string path_;
    int error_ = 0;
    Descriptor file_;
    Descriptor lock_;
};

// Removes the temporary file of a writer that is gone.
void removeDead(const std::string& path) {
    const Descriptor file(openFile(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK));
    struct stat status;
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return;
    FileOperations& operations = fileOperations();
    if (operations.lock(file.get(), LOCK_EX | LOCK_NB) == 0) operations.unlink(path.c_str());
}

void removeAllDead(const std::string& folder) {
    struct Close {
        void operator()(DIR* open) const { ::closedir(open); }
    };
    const std::unique_ptr<DIR, Close> open(::opendir(folder.c_str()));
    while (const dirent* entry = open ? ::readdir(open.get()) : nullptr) {
        if (isTemporaryName(entry->d_name)) removeDead(folder + '/' + entry->d_name);
    }
}

// Gives the new file the old one's owner and mode before it has any content. A process that may not
// give it the old group must not open it to the members of another one.
bool takeOver(int descriptor, const struct stat& old) {
    constexpr auto kSame = static_cast<uid_t>(-1);
    FileOperations& operations = fileOperations();
    mode_t mode = old.st_mode & kPermissions;
    const bool sameOwner = operations.changeOwner(descriptor, old.st_uid, old.st_gid) == 0;
    const bool sameGroup = sameOwner || operations.changeOwner(descriptor, kSame, old.st_gid) == 0;
    if (sameOwner) mode = old.st_mode & (kPermissions | S_ISUID | S_ISGID | S_ISVTX);
    if (!sameGroup) mode &= ~kGroup | ((mode & S_IRWXO) << 3);
    return operations.changeMode(descriptor, mode) == 0;
}

bool flush(int descriptor) {
    // Some file systems have nothing to flush and say so.
    return fileOperations().sync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP;
}

// Makes the rename itself last. The new file is in place whatever comes of it.
void flushFolder(const std::string& folder) {
    const Descriptor descriptor(openFile(folder.c_str(), O_RDONLY | O_DIRECTORY));
    if (descriptor.isOpen()) flush(descriptor.get());
}

// A folder that takes no new file, a sticky one that keeps other people's files where they are, or
// a file that is a mount point.
bool isDenied(int error) {
    return error == EACCES || error == EPERM || error == EROFS || error == EBUSY;
}

bool writeTo(int descriptor, const ByteSource& content) {
    return content([descriptor](std::string_view bytes) { return writeAll(descriptor, bytes); });
}

bool writeInPlace(const std::string& path, const ByteSource& content) {
    Descriptor file(openFile(path.c_str(), O_WRONLY | O_NOFOLLOW));
    struct stat old;
    if (!file.isOpen() || ::fstat(file.get(), &old) != 0 || !S_ISREG(old.st_mode)) return false;
    off_t size = 0;
    content([&size](std::string_view bytes) {
        size += static_cast<off_t>(bytes.size());
        return true;
    });
    // Room is reserved first, so that a full disk shows before the old content is touched.
    if (size > old.st_size && fileOperations().reserve(file.get(), size) != 0) {
        static_cast<void>(!fileOperations().truncate(file.get(), old.st_size));
        return false;
    }
    return writeTo(file.get(), content) && fileOperations().truncate(file.get(), size) == 0 &&
           flush(file.get()) && file.close();
}

}  // namespace

bool replaceFile(std::u16string_view path, std::string_view bytes) {
    return replaceFile(path, [bytes](const ByteSink& sink) { return sink(bytes); });
}

bool replaceFile(std::u16string_view path, const ByteSource& content) {
    const std::optional<std::string> target = followLinks(nativePath(path));
    if (!target || target->empty() || target->ends_with('/')) return false;
    struct stat old;
    const bool exists = ::lstat(target->c_str(), &old) == 0;
    if (exists ? !S_ISREG(old.st_mode) : errno != ENOENT) return false;
    // A rename would not mind that the file itself is protected.
    if (exists && ::faccessat(AT_FDCWD, target->c_str(), W_OK, AT_EACCESS) != 0) return false;

    const std::string folder = folderOf(*target);
    TemporaryFile file(folder, exists ? S_IRUSR | S_IWUSR : mode_t{0666});
    if (file.isOpen()) {
        if (exists && !takeOver(file.descriptor(), old)) return false;
        if (!writeTo(file.descriptor(), content) || !flush(file.descriptor())) return false;
        if (file.moveTo(*target)) {
            flushFolder(folder);
            removeAllDead(folder);
            return true;
        }
    }
    return exists && isDenied(file.error()) && writeInPlace(*target, content);
}

}  // namespace corvane::system
