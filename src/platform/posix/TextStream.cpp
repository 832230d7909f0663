#include "platform/TextStream.h"

#include <fcntl.h>
#include <string>

#include "platform/Unicode.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/NativePath.h"

namespace corvane::platform {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

std::FILE* openTextStream(std::u16string_view path) {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC | O_APPEND;
    Descriptor file(openFile(nativePath(path).c_str(), kFlags, 0666));
    if (!file.isFileOrDevice() || !writeAll(file.get(), kByteOrderMark)) return nullptr;
    std::FILE* stream = ::fdopen(file.get(), "w");
    if (stream) file.release();
    return stream;
}

void writeText(std::FILE* stream, std::u16string_view text) {
    const std::string bytes = toUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
    std::fflush(stream);
}

}  // namespace corvane::platform
