#include <algorithm>
#include <gtest/gtest.h>

#include <corvane/platform/LoadedModule.h>

#include "AnyRule.h"
#include "RuleModuleProbe.h"
#include "support/Text.h"

namespace {

// Calls a slot of a rule's table as code does that knows nothing but the order of the operations.
template <typename Result, typename... Arguments>
Result callSlot(CQorRule* rule, std::size_t slot, Arguments... arguments) {
    void* const* const table = *reinterpret_cast<void* const* const*>(rule);
    return reinterpret_cast<Result (*)(CQorRule*, Arguments...)>(table[slot])(rule, arguments...);
}

class RuleModule : public testing::Test {
protected:
    corvane::LoadedModule module_{u"RuleModuleProbe.dll"};
    const RuleModuleProbe* probe_ =
        module_.function<RuleModuleProbeFunction>("GetRuleModuleProbe")();
};

// The destructor is the tenth operation and has two slots, the second of which deletes the object.
// The overrides look at no argument, so all but the one that returns an object take the same call.
TEST_F(RuleModule, HasItsOverridesInTheSlotsOfTheInterface) {
    CQorRule* const rule = probe_->makeRule();
    void* const none = nullptr;
    for (int operation = 1; operation <= 22; ++operation) {
        const auto slot = static_cast<std::size_t>(operation <= 10 ? operation - 1 : operation);
        if (operation == 10) continue;
        if (operation == 15) {
            EXPECT_EQ(callSlot<CStringW>(rule, slot), u"");
        } else {
            callSlot<std::intptr_t>(rule, slot, none, none, none, none, none);
        }
        EXPECT_EQ(probe_->lastOperation(), operation);
    }
    callSlot<void>(rule, 10);
    EXPECT_EQ(probe_->lastOperation(), 10);
}

TEST_F(RuleModule, SeesTheFieldsInTheOrderOfTheInterface) {
    const AnyRule rule;
    for (const auto& layout : probe_->fields(rule)) {
        EXPECT_LE(layout.front(), static_cast<std::ptrdiff_t>(sizeof(void*)));
        EXPECT_EQ(std::adjacent_find(layout.begin(), layout.end(), std::greater_equal()),
                  layout.end());
    }
}

TEST_F(RuleModule, SharesItsFieldsWithTheLibrary) {
    const std::unique_ptr<CQorRule> rule(probe_->makeRule());
    AnyRule copy;
    copy.add<double>(Type_Double, 6);
    copy.m_lstEngines.AddTail(u"gone");
    copy = rule.get();
    for (const CStringW& text : {copy.m_csRuleName, copy.m_csRuleModuleName,
                                 copy.m_csModuleFileName, copy.m_lstEngines.GetHead()})
        EXPECT_EQ(text, u"set by the module");
    EXPECT_EQ(copy.m_lRuleKind, 7);
    EXPECT_EQ(copy.m_lRuleLifeStatus, 7);
    EXPECT_EQ(copy.m_RuleTag, 0x0123456789ABCDEFU);
    EXPECT_EQ(valuesOf(*copy.GetDoubleItem(6)), std::vector{2.5});
}

}  // namespace
