#include "platform/Programs.h"

#include <algorithm>

namespace corvane::platform {
namespace {

bool isControl(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

}  // namespace

bool isPlainArgument(std::u16string_view text) {
    return !text.empty() && text.front() != u'-' && std::ranges::none_of(text, isControl);
}

}  // namespace corvane::platform
