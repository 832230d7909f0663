#include "rules/RuleCategory.h"

#include <array>
#include <cstdint>

#include <corvane/app/StringResources.h>
#include <corvane/rules/CQORFrameWrkUtils.h>

namespace corvane::rules {
namespace {

struct Category {
    std::uint32_t resource;  // 0 for none
    bool recognised = true;  // by its text
};

// By category number.
constexpr std::array<Category, 21> kCategories = {{
    {3012},        {3013}, {3014}, {3015}, {3016},     {3017}, {3018},
    {3021, false}, {3032}, {3033}, {69},   {0, false}, {3038}, {72, false},
    {0, false},    {3046}, {3047}, {3048}, {3049},     {3050}, {3051},
}};

}  // namespace

std::u16string_view categoryText(QORRuleCategory_e category) {
    const auto number = static_cast<std::uint32_t>(category);
    if (number >= kCategories.size() || kCategories[number].resource == 0) return {};
    return ResourceText(kCategories[number].resource);
}

int categoryOf(std::u16string_view text) {
    if (text.empty()) return -1;
    for (std::size_t number = 0; number < kCategories.size(); ++number) {
        const Category& category = kCategories[number];
        if (category.recognised && ResourceText(category.resource) == text)
            return static_cast<int>(number);
    }
    return QORRuleCategory_6;
}

}  // namespace corvane::rules

// Defined here, so that it is among the library's exports.
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
