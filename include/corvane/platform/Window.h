#pragma once

#include <cstdint>
#include <span>

#include <corvane/base/Export.h>
#include <corvane/base/Platform.h>

// Windows, as far as a dialog of a rule module needs them: an object that gets messages by number,
// finds the handler in its class's table and leaves the rest to the default processing. Nothing
// here draws; a corvane::DialogHost (Dialog.h) takes the place of the window system. Windows belong
// to the thread of the user interface.

class CWnd;

namespace corvane {

// Numbers of messages, as on the first platform.
namespace message {
inline constexpr unsigned kClose = 16;  ///< The window is asked to close.
inline constexpr unsigned kKeyF1 = 77;  ///< The user asks for help by the key F1.
/// A button of the title bar or another part of the frame is pressed: the hit test in `wParam`, the
/// place in the lower (x) and the upper (y) 16 bits of `lParam`, both signed.
inline constexpr unsigned kNcLButtonDown = 161;
/// A control reports: its number in the lower 16 bits of `wParam`, what happened in the upper ones.
inline constexpr unsigned kCommand = 273;
}  // namespace message

/// The hit test of the help button in the title bar.
inline constexpr unsigned kHitHelp = 21;

/// One row of a class's table: what a message leads to.
struct MessageEntry {
    unsigned message;  ///< Its number.
    std::intptr_t (*call)(CWnd& window, std::uintptr_t wParam,
                          std::intptr_t lParam);  ///< What handles it.
};

/// A class's table. A message without a row in it is looked up in the base class's.
struct MessageMap {
    const MessageMap* base;                 ///< That of the base class, or null.
    std::span<const MessageEntry> entries;  ///< The rows.
};

}  // namespace corvane

/// A window. It owns neither its parent nor what is inside it, and may not be destroyed while one
/// of its handlers runs.
class CORVANE_EXPORT CWnd {
public:
    explicit CWnd(CWnd* parent = nullptr)
        : parent_(parent) {}  ///< A window in that parent, which may be null.
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    virtual ~CWnd();

    CWnd* GetParent() const { return parent_; }  ///< The parent, or null.

    /// Looks at a message before it is dispatched; each window from the target up to the dialog is
    /// asked. Non-zero says that it is dealt with and goes no further.
    virtual int PreTranslateMessage(MSG* message);

    /// Has the window process a message now, and gives what its handler gives.
    std::intptr_t SendMessage(unsigned message, std::uintptr_t wParam = 0,
                              std::intptr_t lParam = 0);

protected:
    /// The table of the object's class. A class with handlers of its own overrides this with a
    /// table whose base is that of its base class.
    virtual const corvane::MessageMap* GetMessageMap() const;
    /// Calls the handler that the table has for a message, else the default processing.
    virtual std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam, std::intptr_t lParam);
    /// What the window system does with a message that nobody handles; 0 without a dialog host.
    virtual std::intptr_t DefWindowProc(unsigned message, std::uintptr_t wParam,
                                        std::intptr_t lParam);

    /// Hands the message that is being processed to the default processing as it came; 0 outside
    /// of a handler.
    std::intptr_t Default();

    /// Handler of kNcLButtonDown for a class that has no other: the default processing.
    void OnNcLButtonDown(unsigned hitTest, CPoint point);

private:
    CWnd* parent_;
    const MSG* current_ = nullptr;
};

namespace corvane {

/// The row that leads kNcLButtonDown to a member function (unsigned hitTest, CPoint), such as
/// &WallDialog::OnNcLButtonDown.
template <auto Handler>
constexpr MessageEntry onNcLButtonDown();

/// The row that leads a message to a member function (std::uintptr_t wParam, std::intptr_t lParam)
/// with the result std::intptr_t.
template <auto Handler>
constexpr MessageEntry onMessage(unsigned message);

namespace detail {

template <typename Class, typename Result, typename... Parameters>
Result callHandler(CWnd& window, Result (Class::*handler)(Parameters...),
                   Parameters... parameters) {
    return (static_cast<Class&>(window).*handler)(parameters...);
}

constexpr CPoint pointOf(std::intptr_t lParam) {
    return {static_cast<std::int16_t>(lParam & 0xFFFF),
            static_cast<std::int16_t>((lParam >> 16) & 0xFFFF)};
}

}  // namespace detail

template <auto Handler>
constexpr MessageEntry onNcLButtonDown() {
    return {message::kNcLButtonDown,
            [](CWnd& window, std::uintptr_t wParam, std::intptr_t lParam) -> std::intptr_t {
                detail::callHandler(window, Handler, static_cast<unsigned>(wParam),
                                    detail::pointOf(lParam));
                return 0;
            }};
}

template <auto Handler>
constexpr MessageEntry onMessage(unsigned message) {
    return {message, [](CWnd& window, std::uintptr_t wParam, std::intptr_t lParam) {
                return detail::callHandler(window, Handler, wParam, lParam);
            }};
}

}  // namespace corvane
