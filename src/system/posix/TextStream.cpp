#include "system/TextStream.h"

#include <cwchar>
#include <string>

#include "system/Unicode.h"
#include "system/posix/Descriptor.h"
#include "system/posix/NativePath.h"

namespace corvane::system {
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

void writeText(std::FILE* stream, std::u16string_view text) {
    const std::string bytes = toUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
}

}  // namespace corvane::system
