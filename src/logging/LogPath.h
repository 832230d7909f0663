#pragma once

#include <string>
#include <string_view>

namespace corvane::logging {

/// Where the log of a part lies.
std::u16string logPath(std::u16string_view partPath);

}  // namespace corvane::logging
