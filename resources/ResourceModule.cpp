// One resource module: the texts of a language, from its folder, with the names that all share.

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <iterator>

#include <corvane/base/ModuleExport.h>

#include "Texts.h"
#include "XmlNames.h"

namespace corvane::resources {
namespace {

// What a language has to say, and how many rule names each text takes.
struct TextForm {
    std::uint32_t number;
    int ruleNames;
};

constexpr TextForm kMessageForms[] = {
    {kScriptCaption, 0},      {kScriptFailed, 1},     {kScriptMissing, 2}, {kErrorSource, 0},
    {kErrorLine, 0},          {kErrorNumber, 0},      {kErrorCode, 0},     {kNewRuleName, 0},
    {kNewRuleDescription, 0}, {kIllegalParameter, 0},
};
constexpr std::uint32_t kCategoryNumbers[] = {69,   72,   3012, 3013, 3014, 3015, 3016,
                                              3017, 3018, 3021, 3032, 3033, 3038, 3046,
                                              3047, 3048, 3049, 3050, 3051};

// The number of "%s" in a text that is a format; -1 for any other use of "%".
constexpr int ruleNamesIn(std::u16string_view format) {
    int count = 0;
    for (std::size_t i = format.find(u'%'); i != format.npos; i = format.find(u'%', i + 2)) {
        if (format.substr(i, 2) != u"%s") return -1;
        ++count;
    }
    return count;
}

constexpr bool hasForm(const StringTableEntry& entry, const TextForm& form) {
    return entry.number == form.number && entry.text[0] != 0 &&
           ruleNamesIn(entry.text) == form.ruleNames;
}

static_assert(std::ranges::equal(kMessages, kMessageForms, hasForm));
static_assert(std::ranges::equal(kCategories, kCategoryNumbers, {}, &StringTableEntry::number));
// A rule's category is known by its text.
static_assert(textsDiffer(std::begin(kCategories), std::end(kCategories)));

template <std::size_t... Sizes>
consteval auto merge(const StringTableEntry (&... parts)[Sizes]) {
    std::array<StringTableEntry, (Sizes + ...)> all{};
    auto next = all.begin();
    ((next = std::ranges::copy(parts, next).out), ...);
    std::ranges::sort(all, {}, &StringTableEntry::number);
    return all;
}

constexpr auto kEntries = merge(kMessages, kCategories, kXmlNames);
static_assert(std::ranges::adjacent_find(kEntries, std::greater_equal(),
                                         &StringTableEntry::number) == kEntries.end());

constexpr StringTable kTable{kEntries.data(), kEntries.size()};

}  // namespace
}  // namespace corvane::resources

CORVANE_MODULE_EXPORT const corvane::StringTable* QorStringTable() {
    return &corvane::resources::kTable;
}
