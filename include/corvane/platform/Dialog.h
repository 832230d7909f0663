#pragma once

#include <cstdint>

#include <corvane/platform/Window.h>

class CDialog;

namespace corvane {

/// What takes the place of the window system: it shows dialogs and brings them their messages. A
/// program with a user interface of its own derives from it; a test hands out the messages it
/// wants. Called on the thread that runs the dialog.
class CORVANE_EXPORT DialogHost {
public:
    DialogHost() = default;
    DialogHost(const DialogHost&) = delete;
    DialogHost& operator=(const DialogHost&) = delete;
    virtual ~DialogHost();

    /// Makes the window of a dialog. `templateNumber` is its layout's number in the resources of
    /// its module. False when it cannot be shown.
    virtual bool open(CDialog& dialog, unsigned templateNumber) = 0;
    /// Removes the window.
    virtual void close(CDialog& dialog) = 0;
    /// Waits for the next message. False when there will be none: the dialog ends as cancelled.
    virtual bool next(MSG& message) = 0;
    /// The keys by which the user moves in a dialog. True when the message was one of them and is
    /// dealt with.
    virtual bool translate(CDialog& dialog, const MSG& message);
    /// The default processing of a message that no handler took. Here it does nothing and gives 0.
    virtual std::intptr_t process(CWnd& window, const MSG& message);
};

/// Sets the host of this process and gives the former one. Null, as at the start, means no
/// window system: then no dialog opens. The host is the caller's, and stays until it is replaced.
CORVANE_EXPORT DialogHost* SetDialogHost(DialogHost* host);

}  // namespace corvane

/// A dialog that runs until the user ends it.
class CORVANE_EXPORT CDialog : public CWnd {
public:
    ///@{
    /// Results of a dialog, and the numbers of the buttons that give them.
    static constexpr int kOk = 1;
    static constexpr int kCancel = 2;
    ///@}
    /// The result of a dialog that could not be shown, or runs already.
    static constexpr int kNotShown = -1;

    CDialog() = default;
    /// A dialog of that layout. The parent is not owned and may be null.
    explicit CDialog(unsigned templateNumber, CWnd* parent = nullptr)
        : CWnd(parent), template_(templateNumber) {}
    ~CDialog() override;

    /// Shows the dialog and processes messages until EndDialog is called; gives its result.
    virtual std::intptr_t DoModal();
    /// Ends DoModal once the message that is being processed is done.
    void EndDialog(int result);

    int PreTranslateMessage(MSG* message) override;

protected:
    /// Called before the first message. Gives 1: the window system chooses where the focus goes.
    virtual int OnInitDialog();
    /// Called when a control reports, with what kCommand has. A dialog with controls of its own
    /// overrides this, gives non-zero for what it has done, and leaves the rest to this one, which
    /// takes care of the buttons kOk and kCancel. A row for kCommand in its table would hide them.
    virtual int OnCommand(std::uintptr_t wParam, std::intptr_t lParam);
    ///@{
    /// What the buttons kOk and kCancel lead to, and closing the window to OnCancel: the dialog's
    /// end with that number.
    virtual void OnOK();
    virtual void OnCancel();
    ///@}

    const corvane::MessageMap* GetMessageMap() const override;

private:
    void dispatch(MSG& message);
    std::intptr_t onCommand(std::uintptr_t wParam, std::intptr_t lParam);
    std::intptr_t onClose(std::uintptr_t wParam, std::intptr_t lParam);

    unsigned template_ = 0;
    int result_ = kNotShown;
    bool running_ = false;
};
