#include <corvane/app/CQORRuleDlgBase.h>

constexpr unsigned kWallTemplate = 310;
constexpr QorLong kWallTopic = 5012;

class WallDialog : public CQORRuleDlgBase {
public:
    explicit WallDialog(CWnd* parent)
        : CQORRuleDlgBase(kWallTemplate, kWallTopic, u"/opt/rules/help/walls.chm", parent) {}

protected:
    // Leads a press of the title bar's help button to the base. F1 needs no entry.
    const corvane::MessageMap* GetMessageMap() const override {
        static constexpr corvane::MessageEntry kEntries[] = {
            corvane::onNcLButtonDown<&WallDialog::OnNcLButtonDown>()};
        static const corvane::MessageMap map{CQORRuleDlgBase::GetMessageMap(), kEntries};
        return &map;
    }
};

// A user who asks for help and then presses OK.
class Presses : public corvane::DialogHost {
public:
    bool open(CDialog&, unsigned number) override { return number == kWallTemplate; }
    void close(CDialog&) override {}
    bool next(MSG& message) override {
        message = asked_ ? MSG{nullptr, corvane::message::kCommand, CDialog::kOk, 0}
                         : MSG{nullptr, corvane::message::kKeyF1, 0, 0};
        return asked_ = true;
    }
    bool asked_ = false;
};

int main() {
    Presses host;
    corvane::SetDialogHost(&host);
    const bool ok = WallDialog(nullptr).DoModal() == CDialog::kOk && host.asked_;
    return ok ? 0 : 1;
}
