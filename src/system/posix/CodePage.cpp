#include "system/Locale.h"
#include "system/Unicode.h"

namespace corvane::system {

std::u16string widen(std::string_view text) {
    return fromUtf8(text);
}

std::string narrow(std::u16string_view text) {
    return toUtf8(text);
}

}  // namespace corvane::system
