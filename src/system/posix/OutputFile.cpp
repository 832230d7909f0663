#include "system/Files.h"
#include "system/posix/Descriptor.h"
#include "system/posix/NativePath.h"

namespace corvane::system {
namespace {

class DescriptorFile final : public OutputFile {
public:
    explicit DescriptorFile(int descriptor) : file_(descriptor) {}

    bool isOpen() const { return file_.isOpen(); }
    bool write(std::string_view bytes) override { return writeAll(file_.get(), bytes); }

private:
    Descriptor file_;
};

}  // namespace

std::unique_ptr<OutputFile> OutputFile::open(std::u16string_view path) {
    auto file = std::make_unique<DescriptorFile>(openEmptied(nativePath(path).c_str()));
    if (!file->isOpen()) return nullptr;
    return file;
}

}  // namespace corvane::system
