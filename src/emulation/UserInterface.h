#pragma once

#include <string_view>

#include <corvane/platform/Dialog.h>
#include <corvane/platform/MessageBox.h>

namespace corvane::emulation {

/// The host of this process; null for none.
DialogHost* dialogHost();

/// Values of the style word that this system uses.
inline constexpr unsigned kMessageOk = 0x0000;
inline constexpr unsigned kMessageIconError = 0x0010;
inline constexpr unsigned kMessageTaskModal = 0x2000;

/// Shows a message through the process's sink; see <corvane/platform/MessageBox.h>.
void messageBox(std::u16string_view text, std::u16string_view caption, unsigned style);

}  // namespace corvane::emulation

/// Start and stop of a library: what an application object does when its module is loaded, and when
/// it is unloaded.
class CWinApp {
public:
    CWinApp() = default;
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;
    virtual ~CWinApp() = default;

    /// False when the module cannot be used.
    virtual bool InitInstance() { return true; }
    /// The exit code of the module.
    virtual int ExitInstance() { return 0; }
};
