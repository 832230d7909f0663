#include <algorithm>

#include <corvane/platform/Window.h>

#include "emulation/DialogHost.h"

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
