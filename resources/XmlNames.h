#pragma once

#include <algorithm>
#include <iterator>
#include <string_view>

#include <corvane/app/StringResources.h>
#include <corvane/app/StringTable.h>

// The names of elements and attributes in a rule file. They are texts of every language's table and
// the same in each, so that a file can be read in another language than it was written in.

namespace corvane::resources {

using namespace corvane::resource;

inline constexpr StringTableEntry kXmlNames[] = {
    {kRuleNameAttr, u"Name"},
    {kRuleDescriptionAttr, u"Description"},
    {kRuleSourceAttr, u"Source"},
    {kRuleSeverityAttr, u"Severity"},
    {kRuleNode, u"Rule"},
    {kRuleStatusAttr, u"Status"},
    {kRuleLifeStatusAttr, u"LifeStatus"},
    {kRuleModuleAttr, u"Module"},
    {kRuleCategoryAttr, u"RuleCategory"},
    {kRuleFileAttr, u"File"},
    {kEnginesNode, u"Engines"},
    {kEngineAttr, u"Engine"},
    {kGuidAttr, u"GUID"},
    {kMajorAttr, u"MajorVersion"},
    {kMinorAttr, u"MinorVersion"},
    {kLcidAttr, u"LCID"},
    {kModuleFileAttr, u"ModuleFile"},
    {kRuleCategoryTextAttr, u"CategoryText"},
    {kCategoriesNode, u"Categories"},
    {kCategoryNode, u"Category"},
};

/// Letters alone: a valid name in XML and plain to read.
constexpr bool isPlainName(std::u16string_view name) {
    return !name.empty() && std::ranges::all_of(name, [](char16_t unit) {
        return (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
    });
}

constexpr bool textsDiffer(const StringTableEntry* first, const StringTableEntry* last) {
    for (; first != last; ++first) {
        const std::u16string_view text = first->text;
        const auto isSame = [text](const StringTableEntry& other) { return other.text == text; };
        if (std::any_of(first + 1, last, isSame)) return false;
    }
    return true;
}

static_assert(std::ranges::all_of(kXmlNames, isPlainName, &StringTableEntry::text));
static_assert(textsDiffer(std::begin(kXmlNames), std::end(kXmlNames)));

}  // namespace corvane::resources
