#include <fcntl.h>

#include "platform/Files.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/NativePath.h"

namespace corvane::platform {
namespace {

class DescriptorFile final : public OutputFile {
public:
    explicit DescriptorFile(int descriptor) : file_(descriptor) {}

    bool write(std::string_view bytes) override { return writeAll(file_.get(), bytes); }

    std::size_t size() const override {
        struct stat status;
        return ::fstat(file_.get(), &status) == 0 ? static_cast<std::size_t>(status.st_size) : 0;
    }

    bool isFileOrDevice() const { return file_.isFileOrDevice(); }

private:
    Descriptor file_;
};

}  // namespace

std::unique_ptr<OutputFile> OutputFile::open(std::u16string_view path, Mode mode) {
    const int flags = O_WRONLY | O_CREAT | (mode == Mode::Append ? O_APPEND : O_TRUNC);
    auto file = std::make_unique<DescriptorFile>(openFile(nativePath(path).c_str(), flags, 0666));
    if (!file->isFileOrDevice()) return nullptr;
    return file;
}

}  // namespace corvane::platform
