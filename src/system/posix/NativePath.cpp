#include "system/posix/NativePath.h"

#include <algorithm>

#include "system/Paths.h"
#include "system/Unicode.h"

namespace corvane::system {
namespace {

// A byte that is no UTF-8 is the lone surrogate with this distance.
constexpr char16_t kEscapes = 0xDC00;

bool isEscape(char16_t unit) {
    return unit >= kEscapes + 0x80 && unit <= kEscapes + 0xFF;
}

}  // namespace

std::string nativePath(std::u16string_view path) {
    if (path.find(u'\0') != path.npos) return {};
    const std::u16string text = normalise(path);
    std::string bytes;
    std::size_t from = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isEscape(text[i]) || (i > 0 && isHighSurrogate(text[i - 1]))) continue;
        appendUtf8(bytes, std::u16string_view(text).substr(from, i - from));
        bytes += static_cast<char>(text[i] - kEscapes);
        from = i + 1;
    }
    appendUtf8(bytes, std::u16string_view(text).substr(from));
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

}  // namespace corvane::system
