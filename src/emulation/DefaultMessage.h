#pragma once

#include <corvane/platform/MessageBox.h>

namespace corvane::emulation {

/// Shows a message where no sink is set.
void showDefaultMessage(const Message& message);

}  // namespace corvane::emulation
