#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include <corvane/xml/XMLFault.h>

#include "AnyRule.h"
#include "support/TemporaryFolder.h"
#include "support/Text.h"

namespace {

// Makes rules with parameters of all kinds, the same for the same seed: values, texts and operators
// that a rule file carries to the last bit.
class Generator {
public:
    explicit Generator(unsigned seed) : random_(seed) {}

    // Fills a rule with three parameters of each kind, and a twin with the same ones without
    // values.
    void describe(AnyRule& rule, AnyRule& twin) {
        for (CStringW* const field :
             {&rule.m_csRuleName, &rule.m_csRuleDescription, &rule.m_csRuleSource,
              &rule.m_csRuleModuleName, &rule.m_csRuleCategory})
            *field = text();
        rule.m_lRuleSeverity = static_cast<QorLong>(random_());
        for (QorLong id = 0; id < 24; id += 8)
            addEach<int, QorLong, bool, double, CStringW*, COleDateTime*, QorULong,
                    QORCustomRuleData*>(rule, twin, id);
    }

private:
    int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

    // Any text that XML can carry.
    CStringW text() {
        static const CStringW source =
            u"a \t\r\n\r\"'<>]]>&\\%s0&amp;<!--<?x?\u00E4\u0085\u2028\x7F\u4E2D\uFFFD\uFEFF";
        CStringW text;
        for (int i = below(6); i > 0; --i)
            text += source.Mid(below(source.GetLength()), below(4)) + u"\U0001F600";
        return text;
    }

    template <typename T>
    T value() {
        if constexpr (std::is_same_v<T, double>) {
            return std::ldexp(below(2'000'001) - 1'000'000, below(900) - 6);
        } else if constexpr (std::is_same_v<T, CStringW*>) {
            return new CStringW(text());
        } else if constexpr (std::is_same_v<T, COleDateTime*>) {
            return new COleDateTime(below(100'000));
        } else if constexpr (std::is_same_v<T, QORCustomRuleData*>) {
            auto record = std::make_unique<QORCustomRuleData>();
            for (int i = below(4); i >= 0; --i)
                record->Add(text());
            return record.release();
        } else {
            return static_cast<T>(random_());
        }
    }

    // One parameter of each type, in the order of their kinds.
    template <typename... T>
    void addEach(AnyRule& rule, AnyRule& twin, QorLong id) {
        int kind = 0;
        (add<T>(rule, twin, Type_e(++kind), id), ...);
    }

    template <typename T>
    void add(AnyRule& rule, AnyRule& twin, Type_e kind, QorLong id) {
        const int op = below(13);
        const bool written = op != QorOperator_NotSaved && op != QorOperator_Hidden;
        const int paramType = kind == Type_CustomRuleData ? QorParamType_Attributes : below(3);
        auto& parameter = rule.add<T>(kind, id + kind, {}, op, paramType);
        twin.add<T>(kind, id + kind, {}, written ? QorOperator_Default : op);
        parameter.m_bStatus = !written || below(2) == 1;
        for (int i = written ? 2 * below(7) : 0; i > 0; --i)
            parameter.m_Values.Add(value<T>());
    }

    std::mt19937 random_;
};

TEST(RuleRoundTrip, GeneratedRulesComeBackEqualFromAFile) {
    constexpr std::size_t kRules = 100;
    const TemporaryFolder folder;
    AnyRule rules[kRules];
    AnyRule twins[kRules];
    {
        CurrentDocument document;
        const std::unique_ptr<QorXMLNode> root(document.CreateNode(u"Rules"));
        document.AppendNode(root.get());
        for (unsigned seed = 0; seed < kRules; ++seed) {
            Generator(seed).describe(rules[seed], twins[seed]);
            root->AppendNode(std::unique_ptr<QorXMLNode>(rules[seed].GetXML()).get());
        }
        ASSERT_TRUE(corvane::SaveXML(document, folder.wide("rules.xml")));
    }
    CurrentDocument document;
    const QorXMLNode* const root = document.LoadFromFile(folder.wide("rules.xml"));
    ASSERT_NE(root, nullptr) << corvane::LastXMLFault(document).message.ToUtf8();
    const std::unique_ptr<QorXMLNodeList> elements(root->GetChildNodes());
    ASSERT_EQ(elements->GetSize(), static_cast<QorLong>(kRules));
    for (std::size_t i = 0; i < kRules; ++i) {
        twins[i].PopulateParametersFromXML((*elements)[static_cast<QorLong>(i)]);
        EXPECT_EQ(twins[i].m_csRuleName, rules[i].m_csRuleName) << "seed " << i;
        EXPECT_EQ(xmlOf(twins[i].GetXML()), xmlOf(rules[i].GetXML())) << "seed " << i;
        EXPECT_FALSE(rules[i].UpdateRule(&twins[i])) << "seed " << i;
    }
}

}  // namespace
