#pragma once

#include <string_view>

namespace corvane::emulation {

/// Values of the style word that this system uses.
inline constexpr unsigned kMessageOk = 0x0000;
inline constexpr unsigned kMessageIconError = 0x0010;
inline constexpr unsigned kMessageTaskModal = 0x2000;

/// Shows a message through the process's sink; see <corvane/platform/MessageBox.h>.
void messageBox(std::u16string_view text, std::u16string_view caption, unsigned style);

}  // namespace corvane::emulation
