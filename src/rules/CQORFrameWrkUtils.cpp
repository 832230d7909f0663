#include <corvane/rules/CQORFrameWrkUtils.h>

#include "rules/RuleCategory.h"

// Defined here, so that it stands among the library's exports.
CQORFrameWrkUtils& CQORFrameWrkUtils::operator=(const CQORFrameWrkUtils&) = default;

void CQORFrameWrkUtils::GetRuleCategoryStringList(CStringList& categories) {
    constexpr QORRuleCategory_e kShown[] = {
        QORRuleCategory_0,  QORRuleCategory_1,  QORRuleCategory_2, QORRuleCategory_3,
        QORRuleCategory_4,  QORRuleCategory_9,  QORRuleCategory_5, QORRuleCategory_10,
        QORRuleCategory_12, QORRuleCategory_13,
    };
    for (const QORRuleCategory_e category : kShown)
        categories.AddTail(corvane::rules::categoryText(category));
}

CStringW CQORFrameWrkUtils::GetStringWithoutSpaces(CStringW text) {
    for (const char16_t unit : {u' ', u'/', u')', u'('})
        text.Remove(unit);
    return u"QORRule_" + text;
}
