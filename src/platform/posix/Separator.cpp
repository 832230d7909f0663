#include "platform/Paths.h"

namespace corvane::platform {

const char16_t kSeparator = u'/';

bool isSeparator(char16_t unit) {
    return unit == u'/' || unit == u'\\';
}

}  // namespace corvane::platform
