#include "platform/CodePage.h"

#include "platform/Unicode.h"

namespace corvane::platform {

std::u16string widen(std::string_view text) {
    return fromUtf8(text);
}

std::string narrow(std::u16string_view text) {
    return toUtf8(text);
}

}  // namespace corvane::platform
