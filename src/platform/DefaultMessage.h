#pragma once

#include <corvane/platform/MessageBox.h>

namespace corvane::platform {

/// Shows a message where no sink is set.
void showDefaultMessage(const Message& message);

}  // namespace corvane::platform
