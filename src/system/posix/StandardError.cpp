#include <algorithm>
#include <unistd.h>

#include "system/Diagnostics.h"
#include "system/Unicode.h"
#include "system/posix/Descriptor.h"

namespace corvane::system {
namespace {

bool isControl(char16_t unit) {
    if (unit == u'\t' || unit == u'\n') return false;
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

}  // namespace

void writeStandardError(std::u16string_view text) {
    std::u16string shown(text);
    std::replace_if(shown.begin(), shown.end(), isControl, u'\uFFFD');
    std::string line = toUtf8(shown);
    line += '\n';
    writeAll(STDERR_FILENO, line);
}

}  // namespace corvane::system
