#include <utility>

#include <corvane/app/CQORRuleDlgBase.h>
#include <corvane/app/Help.h>

CQORRuleDlgBase::CQORRuleDlgBase(unsigned templateNumber, QorLong helpId, CStringW helpFile,
                                 CWnd* parent)
    : CDialog(templateNumber, parent), m_lHelpId(helpId), m_strHelpFile(std::move(helpFile)) {}

CQORRuleDlgBase::~CQORRuleDlgBase() = default;

int CQORRuleDlgBase::PreTranslateMessage(MSG* message) {
    if (!message || message->message != corvane::message::kKeyF1)
        return CDialog::PreTranslateMessage(message);
    ShowQORHelp(m_strHelpFile, m_lHelpId, nullptr);
    return 1;
}

int CQORRuleDlgBase::OnInitDialog() {
    return CDialog::OnInitDialog();
}

void CQORRuleDlgBase::OnNcLButtonDown(unsigned hitTest, CPoint point) {
    if (hitTest == corvane::kHitHelp)
        ShowQORHelp(m_strHelpFile, m_lHelpId, nullptr);
    else
        CDialog::OnNcLButtonDown(hitTest, point);
}
