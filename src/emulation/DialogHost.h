#pragma once

#include <corvane/platform/Dialog.h>

namespace corvane::emulation {

/// The host of this process; null for none.
DialogHost* dialogHost();

}  // namespace corvane::emulation
