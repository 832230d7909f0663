#include <gtest/gtest.h>
#include <stdexcept>
#include <utility>

#include <corvane/RuleModule.h>

#include "AnyRule.h"
#include "support/Text.h"

namespace {

enum : QorLong { kLimit = 1, kCount, kOn, kColour, kText, kDates, kRecords };

constexpr corvane::ParameterDefinition kParameters[] = {
    {kLimit, Type_Double, u"Limit"},
    {kCount, Type_Long, u"Count"},
    {kOn, Type_Bool, u"On"},
    {kColour, Type_ColorRef, u"Colour"},
    {kText, Type_CStringPtr, nullptr},
    {kDates, Type_COleDateTimePtr, u"Dates"},
    {kRecords, Type_CustomRuleData, u"Records", QorOperator_Default, QorParamType_Attributes},
};
constexpr corvane::ParameterDefinition kOfAMaterial[] = {kParameters[0]};

class LimitRule : public corvane::ModuleRule {
public:
    explicit LimitRule(const corvane::RuleEntry& entry)
        : ModuleRule(entry, kParameters, kOfAMaterial) {}
    void check(corvane::RuleCheck& run) const override {
        if (run.partPath().IsEmpty()) run.cannotJudge(u"no part");
        run.note(u"note " + run.partPath());
        run.fail(u"text");
        corvane::Finding finding;
        finding.message = u"measured";
        finding.measured = 2.5;
        run.fail(finding);
    }
};

constexpr corvane::RuleEntry kRules[] = {
    {u"Other", u"", u"", nullptr},
    {u"Limit", u"As said", u"probe", corvane::MakeModuleRule<LimitRule>},
};

struct Part : QORICadSys {
    CStringW GetActivePartPath() const override { return u"part.stl"; }
};

/// Keeps the texts alone, as a host of an older day does.
struct Findings : QORResultSet {
    void AddFinding(const CStringW& text) override { texts.push_back(text); }
    std::vector<CStringW> texts;
};

struct ModuleRule : testing::Test {
    CurrentDocument document;
    std::unique_ptr<CQorRule> made{corvane::MakeNamedRule(kRules, u"Limit")};
    LimitRule& rule = dynamic_cast<LimitRule&>(*made);
};

TEST_F(ModuleRule, IsMadeByItsNameWithItsTextsAndParameters) {
    EXPECT_EQ(corvane::MakeNamedRule(kRules, u"limit"), nullptr);
    EXPECT_EQ(rule.m_csRuleName + u"|" + rule.m_csRuleDisplayName, u"Limit|Limit");
    EXPECT_EQ(rule.m_csRuleDescription + u"|" + rule.m_csRuleSource, u"As said|probe");
    EXPECT_EQ(rule.GetDoubleItem(kLimit)->m_csName, u"Limit");
    EXPECT_EQ(rule.GetCStringPtrItem(kText)->m_csName, u"");
}

TEST_F(ModuleRule, GivesValuesOfEveryKindWithoutPointers) {
    EXPECT_EQ(rule.value(kLimit, 7.5), 7.5);
    EXPECT_EQ(rule.value<CStringW>(kText, u"none"), u"none");
    rule.PopulateParametersFromXML(document.load(
        u"<Rule><Parameter Type='1'><Value>1.5</Value></Parameter>"
        u"<Parameter Type='2'><Value>3</Value><Value>4</Value></Parameter>"
        u"<Parameter Type='3'><Value>1</Value></Parameter>"
        u"<Parameter Type='4'><Value>4294967295</Value></Parameter>"
        u"<Parameter Type='5'><Value>a</Value><Value/></Parameter>"
        u"<Parameter Type='6'><Value/></Parameter><Parameter Type='7'><ParameterType>24"
        u"</ParameterType><Value Attribute1='x'/></Parameter></Rule>"));
    EXPECT_EQ(rule.value<double>(kLimit), 1.5);
    EXPECT_EQ(rule.values<int>(kCount), (std::vector{3, 4}));
    EXPECT_TRUE(rule.value<bool>(kOn));
    EXPECT_EQ(rule.value<QorULong>(kColour), 4294967295U);
    EXPECT_EQ(rule.values<CStringW>(kText), (std::vector<CStringW>{u"a", u""}));
    EXPECT_EQ(rule.values<COleDateTime>(kDates), std::vector{COleDateTime()});
    EXPECT_EQ(rule.value<QORCustomRuleData>(kRecords).GetAt(0), u"x");
    EXPECT_TRUE(rule.values<int>(kLimit).empty());
    EXPECT_TRUE(rule.values<double>(99).empty());
}

TEST_F(ModuleRule, ReadsWritesAndUsesItsConstraints) {
    const CStringW written =
        u"<Rule><Parameter Type='1'><Value>1</Value></Parameter>"
        u"<Constraint Type='Material' Value='POM' Status='0'><Parameter Type='1'>"
        u"<Value>2</Value></Parameter></Constraint>"
        u"<Constraint Type='Other' Value='POM' Status='1'><Parameter Type='1'>"
        u"<Value>3</Value></Parameter></Constraint>"
        u"<Constraint Type='Material' Value='POM' Status='1'><Parameter Type='1'>"
        u"<Operator>2</Operator><Value>4</Value></Parameter></Constraint>"
        u"<Constraint Type='Material' Value='PE' Status='1'/></Rule>";
    for (int round = 0; round < 2; ++round)
        rule.PopulateParametersFromXML(document.load(written));
    const std::pair<const char16_t*, double> limits[] = {
        {u"pom", 4.0}, {u"PE", 1.0}, {u"ABS", 1.0}, {u"", 1.0}};
    for (const auto& [material, limit] : limits)
        EXPECT_EQ(rule.valueFor<double>(material, kLimit), limit) << CStringW(material).ToUtf8();
    const std::unique_ptr<QorXMLNode> element(rule.GetXML());
    std::vector<CStringW> values;
    for (const QorXMLNode& constraint : corvane::ChildElements(*element, u"Constraint")) {
        for (const QorXMLNode& value : corvane::ChildElements(constraint, u"Parameter/Value"))
            values.push_back(value.GetNodeValue());
    }
    EXPECT_EQ(values, std::vector<CStringW>{u"4.000000"});
    EXPECT_EQ(std::unique_ptr<QorXMLNodeList>(element->GetNodeList(u"Constraint"))->GetSize(), 4);
}

TEST_F(ModuleRule, ReportsWhatItFindsAndNeverPassesUnheard) {
    Part part;
    Findings findings;
    const CQorData* data = nullptr;
    QORResultSet* results = &findings;
    EXPECT_EQ(rule.Execute(&part, data, results), 0);
    EXPECT_EQ(findings.texts, (std::vector<CStringW>{u"text", u"measured"}));
    EXPECT_THROW(rule.Execute(nullptr, data, results), std::runtime_error);
    results = nullptr;
    EXPECT_THROW(rule.Execute(&part, data, results), std::runtime_error);
}

TEST_F(ModuleRule, TakesThePartOfTheRunContextWhenTheCadSystemHasNone) {
    corvane::RunContext context;
    context.partPath = u"context.stl";
    const corvane::RunContextScope scope(context);
    EXPECT_EQ(corvane::RuleCheck(nullptr, nullptr, nullptr).partPath(), u"context.stl");
    Part part;
    EXPECT_EQ(corvane::RuleCheck(&part, nullptr, nullptr).partPath(), u"part.stl");
}

}  // namespace
