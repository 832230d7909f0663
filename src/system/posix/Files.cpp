#include "system/Files.h"

#include <cerrno>
#include <cwchar>
#include <fcntl.h>
#include <limits>
#include <string>
#include <unistd.h>

#include "system/Unicode.h"
#include "system/posix/FileOperations.h"

namespace corvane::system {

namespace {

// For what reports no size.
constexpr std::size_t kFirstRead = 4096;

}  // namespace

std::optional<std::string> readFile(std::u16string_view path, std::size_t limit) {
    const Descriptor file(openFile(nativePath(path).c_str(), O_RDONLY));
    struct stat status;
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > limit) return std::nullopt;

    // The size is a hint: the file may grow meanwhile, and what the kernel makes up reports none.
    std::string bytes;
    std::size_t length = 0;
    bytes.resize(size > 0 ? size + 1 : kFirstRead);
    while (true) {
        const ssize_t count = ::read(file.get(), bytes.data() + length, bytes.size() - length);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        length += static_cast<std::size_t>(count);
        if (length > limit) return std::nullopt;
        // A read that had room for more ends the file. What the kernel makes up gives pieces.
        if (size > 0 && length == size) break;
        if (length == bytes.size()) bytes.resize(length * 2);
    }
    bytes.resize(length);
    return bytes;
}

namespace {

class RegularFile final : public InputFile {
public:
    explicit RegularFile(const char* path) : file_(openFile(path, O_RDONLY)) {
        struct stat status;
        regular_ = file_.isOpen() && ::fstat(file_.get(), &status) == 0 && S_ISREG(status.st_mode);
        if (regular_) size_ = static_cast<std::uint64_t>(status.st_size);
    }

    bool isRegular() const { return regular_; }

    std::uint64_t size() const override { return size_; }

    bool read(std::uint64_t offset, std::span<char> bytes) const override {
        while (!bytes.empty()) {
            if (offset > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max()))
                return false;
            const ssize_t count =
                ::pread(file_.get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return false;
            bytes = bytes.subspan(static_cast<std::size_t>(count));
            offset += static_cast<std::uint64_t>(count);
        }
        return true;
    }

private:
    Descriptor file_;
    bool regular_ = false;
    std::uint64_t size_ = 0;
};

}  // namespace

std::unique_ptr<InputFile> InputFile::open(std::u16string_view path) {
    auto file = std::make_unique<RegularFile>(nativePath(path).c_str());
    if (!file->isRegular()) return nullptr;
    return file;
}

namespace {

class EmptiedFile final : public OutputFile {
public:
    explicit EmptiedFile(int descriptor) : file_(descriptor) {}

    bool isOpen() const { return file_.isOpen(); }
    bool write(std::string_view bytes) override { return writeAll(file_.get(), bytes); }

private:
    Descriptor file_;
};

}  // namespace

std::unique_ptr<OutputFile> OutputFile::open(std::u16string_view path) {
    auto file = std::make_unique<EmptiedFile>(openEmptied(nativePath(path).c_str()));
    if (!file->isOpen()) return nullptr;
    return file;
}

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

std::FILE* openTextStream(std::u16string_view path) {
    Descriptor file(openEmptied(nativePath(path).c_str()));
    if (!file.isOpen() || !writeAll(file.get(), kByteOrderMark)) return nullptr;
    std::FILE* stream = ::fdopen(file.get(), "w");
    if (!stream) return nullptr;
    file.release();
    // A buffer would divide what is longer than itself.
    std::setvbuf(stream, nullptr, _IONBF, 0);
    // The first wide text would turn the stream into one that refuses all bytes after it.
    std::fwide(stream, -1);
    return stream;
}

void writeText(std::FILE* stream, std::string_view text) {
    writeAll(::fileno(stream), text);
}

}  // namespace corvane::system
