#include "system/Paths.h"

namespace corvane::system {

const char16_t kSeparator = u'/';

bool isSeparator(char16_t unit) {
    return unit == u'/' || unit == u'\\';
}

}  // namespace corvane::system
