#include "emulation/UserInterface.h"

#include <algorithm>
#include <string>
#include <utility>

#include <corvane/platform/Dialog.h>
#include <corvane/platform/MessageBox.h>
#include <corvane/platform/Window.h>

#include "system/Lasting.h"
#include "system/Process.h"

using corvane::MessageEntry;
using corvane::MessageMap;

namespace {

const MessageEntry* findEntry(const MessageMap* map, unsigned message) {
    for (; map; map = map->base) {
        const auto found = std::ranges::find(map->entries, message, &MessageEntry::message);
        if (found != map->entries.end()) return &*found;
    }
    return nullptr;
}

// Keeps the message that is being processed for the length of a block; a handler may send others.
class CurrentMessage {
public:
    CurrentMessage(const MSG*& place, const MSG& message) : place_(place), former_(place) {
        place_ = &message;
    }
    CurrentMessage(const CurrentMessage&) = delete;
    CurrentMessage& operator=(const CurrentMessage&) = delete;
    ~CurrentMessage() { place_ = former_; }

private:
    const MSG*& place_;
    const MSG* former_;
};

}  // namespace

CWnd::~CWnd() = default;

int CWnd::PreTranslateMessage(MSG*) {
    return 0;
}

std::intptr_t CWnd::SendMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    const MSG sent{this, message, wParam, lParam};
    const CurrentMessage current(current_, sent);
    return WindowProc(message, wParam, lParam);
}

const MessageMap* CWnd::GetMessageMap() const {
    return nullptr;
}

std::intptr_t CWnd::WindowProc(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    const MessageEntry* const entry = findEntry(GetMessageMap(), message);
    return entry ? entry->call(*this, wParam, lParam) : DefWindowProc(message, wParam, lParam);
}

std::intptr_t CWnd::DefWindowProc(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    corvane::DialogHost* const host = corvane::emulation::dialogHost();
    return host ? host->process(*this, {this, message, wParam, lParam}) : 0;
}

std::intptr_t CWnd::Default() {
    return current_ ? DefWindowProc(current_->message, current_->wParam, current_->lParam) : 0;
}

void CWnd::OnNcLButtonDown(unsigned, CPoint) {
    Default();
}

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

namespace corvane {
namespace {

system::Lasting<MessageSink> currentSink;

// Where no sink is set.
void showDefaultMessage(const Message& message) {
    std::u16string line;
    if (!message.caption.empty()) line.append(message.caption).append(u": ");
    system::writeStandardError(line.append(message.text));
}

}  // namespace

MessageSink SetMessageSink(MessageSink sink) {
    return std::exchange(currentSink.get(), std::move(sink));
}

namespace emulation {

void messageBox(std::u16string_view text, std::u16string_view caption, unsigned style) {
    const Message message{text, caption, style};
    // A copy: the sink may replace itself while it runs.
    if (const MessageSink sink = currentSink.get())
        sink(message);
    else
        showDefaultMessage(message);
}

}  // namespace emulation
}  // namespace corvane

int AfxMessageBox(const char16_t* text, unsigned style, unsigned) {
    constexpr int kConfirmed = 1;
    corvane::emulation::messageBox(text ? text : u"", u"", style);
    return kConfirmed;
}
