#pragma once

#include <corvane/base/Types.h>
#include <corvane/platform/Dialog.h>
#include <corvane/text/CStringW.h>

/// The base of the dialogs of rule modules. The F1 key and the help button of the title bar show
/// the dialog's own help topic, as ShowQORHelp does; whether help was shown makes no difference to
/// the dialog.
///
/// The key works in every derived dialog. The button works in one whose message map names
/// OnNcLButtonDown: this class has no map of its own, since not every dialog has the button.
class CORVANE_EXPORT CQORRuleDlgBase : public CDialog {
public:
    /// No topic (0) and no help file: a derived dialog sets both before help can be asked for.
    CQORRuleDlgBase() = default;
    /// `helpId` is the topic and `helpFile` the compiled help file that has it when the site has no
    /// page of its own. The parent is not owned and may be null.
    CQORRuleDlgBase(unsigned templateNumber, QorLong helpId, CStringW helpFile, CWnd* parent);
    ~CQORRuleDlgBase() override;

    /// Shows help for message::kKeyF1 and gives 1, so that the key goes no further. Every other
    /// message is CDialog's.
    int PreTranslateMessage(MSG* message) override;

protected:
    int OnInitDialog() override;

    /// Shows help for the hit test kHitHelp and keeps the click from going on. Every other one
    /// takes the default processing.
    void OnNcLButtonDown(unsigned hitTest, CPoint point);

    QorLong m_lHelpId = 0;   ///< Help topic of this dialog.
    CStringW m_strHelpFile;  ///< Compiled help file with that topic.
};
