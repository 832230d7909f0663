#include <utility>

#include <corvane/platform/Dialog.h>

#include "emulation/DialogHost.h"

using corvane::DialogHost;
using corvane::emulation::dialogHost;

namespace {

DialogHost* currentHost = nullptr;

}  // namespace

namespace corvane {

DialogHost::~DialogHost() = default;

bool DialogHost::translate(CDialog&, const MSG&) {
    return false;
}

std::intptr_t DialogHost::process(CWnd&, const MSG&) {
    return 0;
}

DialogHost* SetDialogHost(DialogHost* host) {
    return std::exchange(currentHost, host);
}

DialogHost* emulation::dialogHost() {
    return currentHost;
}

}  // namespace corvane

CDialog::~CDialog() = default;

std::intptr_t CDialog::DoModal() {
    DialogHost* const host = dialogHost();
    if (running_ || !host || !host->open(*this, template_)) return kNotShown;
    // A handler may throw.
    struct Open {
        DialogHost& host;
        CDialog& dialog;
        ~Open() {
            dialog.running_ = false;
            host.close(dialog);
        }
    };
    const Open open{*host, *this};
    running_ = true;
    result_ = kCancel;
    OnInitDialog();
    for (MSG message; running_ && host->next(message); message = MSG())
        dispatch(message);
    return result_;
}

void CDialog::dispatch(MSG& message) {
    CWnd* const target = message.hwnd ? message.hwnd : this;
    for (CWnd* window = target; window; window = window == this ? nullptr : window->GetParent()) {
        if (window->PreTranslateMessage(&message) != 0) return;
    }
    target->SendMessage(message.message, message.wParam, message.lParam);
}

void CDialog::EndDialog(int result) {
    result_ = result;
    running_ = false;
}

int CDialog::PreTranslateMessage(MSG* message) {
    DialogHost* const host = dialogHost();
    return message && host && host->translate(*this, *message) ? 1 : 0;
}

int CDialog::OnInitDialog() {
    return 1;
}

void CDialog::OnOK() {
    EndDialog(kOk);
}

void CDialog::OnCancel() {
    EndDialog(kCancel);
}

int CDialog::OnCommand(std::uintptr_t wParam, std::intptr_t) {
    // In the upper half nothing but 0: the button was pressed.
    if (wParam == kOk) {
        OnOK();
    } else if (wParam == kCancel) {
        OnCancel();
    } else {
        return 0;
    }
    return 1;
}

std::intptr_t CDialog::onCommand(std::uintptr_t wParam, std::intptr_t lParam) {
    return OnCommand(wParam, lParam) != 0 ? 0 : Default();
}

std::intptr_t CDialog::onClose(std::uintptr_t, std::intptr_t) {
    OnCancel();
    return 0;
}

const corvane::MessageMap* CDialog::GetMessageMap() const {
    static constexpr corvane::MessageEntry kEntries[] = {
        corvane::onMessage<&CDialog::onCommand>(corvane::message::kCommand),
        corvane::onMessage<&CDialog::onClose>(corvane::message::kClose),
    };
    static constexpr corvane::MessageMap kMap{nullptr, kEntries};
    return &kMap;
}
