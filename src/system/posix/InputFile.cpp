#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <unistd.h>

#include "system/Files.h"
#include "system/posix/Descriptor.h"
#include "system/posix/NativePath.h"

namespace corvane::system {
namespace {

class DescriptorFile final : public InputFile {
public:
    explicit DescriptorFile(const char* path) : file_(openFile(path, O_RDONLY)) {
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
    auto file = std::make_unique<DescriptorFile>(nativePath(path).c_str());
    if (!file->isRegular()) return nullptr;
    return file;
}

}  // namespace corvane::system
