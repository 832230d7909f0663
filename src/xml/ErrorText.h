#pragma once

#include <corvane/platform/Unknown.h>
#include <corvane/text/CStringW.h>

namespace corvane::xml {

/// What a message box says about a failure code.
CStringW errorText(HResult code);

}  // namespace corvane::xml
