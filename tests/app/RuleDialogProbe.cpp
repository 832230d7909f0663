#include <corvane/app/CQORRuleDlgBase.h>
#include <corvane/base/ModuleExport.h>

namespace {

class PlainDialog : public CQORRuleDlgBase {
public:
    explicit PlainDialog(const char16_t* helpFile) : CQORRuleDlgBase(310, 12, helpFile, nullptr) {}
};

class MappedDialog : public PlainDialog {
public:
    using PlainDialog::PlainDialog;

protected:
    int OnCommand(std::uintptr_t wParam, std::intptr_t lParam) override {
        return wParam == 40 || PlainDialog::OnCommand(wParam, lParam) != 0;
    }
    const corvane::MessageMap* GetMessageMap() const override {
        static constexpr corvane::MessageEntry kEntries[] = {
            corvane::onNcLButtonDown<&MappedDialog::OnNcLButtonDown>()};
        static const corvane::MessageMap map{PlainDialog::GetMessageMap(), kEntries};
        return &map;
    }
};

}  // namespace

CORVANE_MODULE_EXPORT CDialog* MakeProbeDialog(bool mapped, const char16_t* helpFile) {
    return mapped ? new MappedDialog(helpFile) : new PlainDialog(helpFile);
}
