#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

#include <corvane/app/StringResources.h>
#include <corvane/platform/ComError.h>

#include "AnyRule.h"
#include "support/MessageRecorder.h"
#include "support/Text.h"

namespace {

using Attributes = std::vector<std::pair<std::uint32_t, const char16_t*>>;

// A rule element whose attributes are given by their resource numbers.
CStringW ruleElement(const Attributes& attributes, const CStringW& content) {
    const CStringW name = corvane::ResourceText(corvane::resource::kRuleNode);
    CStringW xml = u"<" + name;
    for (const auto& [number, text] : attributes)
        xml.AppendFormat(u" %s=\"%s\"", corvane::ResourceText(number), text);
    return content.IsEmpty() ? xml + u"/>" : xml + u">" + content + u"</" + name + u">";
}

class RuleXML : public testing::Test {
protected:
    void read(const Attributes& attributes, const CStringW& content = {}) {
        rule_.PopulateParametersFromXML(document_.load(ruleElement(attributes, content)));
    }

    CurrentDocument document_;
    AnyRule rule_;
};

TEST_F(RuleXML, WritesNineAttributesInOrderAndThenTheParameters) {
    rule_.m_csRuleName = u"Wall Check";
    rule_.m_lRuleStatus = 5;
    rule_.m_lRuleLifeStatus = 1;
    rule_.m_csRuleDescription = u"a & b";
    rule_.m_csRuleSource = u"walls";
    rule_.m_csRuleModuleName = u"Walls";
    rule_.m_csRuleFileName = u"C:\\Rules\\wall.dll";
    rule_.m_lRuleSeverity = -1;
    rule_.m_csRuleCategory = u"Own";
    rule_.add(Type_Int, 5, {1}, QorOperator_NotSaved);
    rule_.add(Type_Int, 6, {1}, QorOperator_Hidden);
    const Attributes attributes = {{3000, u"Wall Check"}, {3005, u"5"},     {3006, u"1"},
                                   {3001, u"a &amp; b"},  {3002, u"walls"}, {3008, u"Walls"},
                                   {3011, u"wall.dll"},   {3003, u"-1"},    {3009, u"Own"}};
    EXPECT_EQ(xmlOf(rule_.GetXML()), ruleElement(attributes, u""));
    rule_.add(Type_Double, -7, {1e-7, -1e15}).m_csRemarks = u"r";
    EXPECT_EQ(xmlOf(rule_.GetXML()),
              ruleElement(attributes,
                          u"<Parameter Name=\"\" Type=\"-7\" Status=\"1\"><Operator>2</Operator>"
                          u"<ParameterType>0</ParameterType><Value>0.000000</Value><Value>"
                          u"-1000000000000000.000000</Value><Remarks>r</Remarks></Parameter>"));
    EXPECT_EQ(rule_.m_csRuleFileName, u"C:\\Rules\\wall.dll");
}

TEST_F(RuleXML, KeepsTextsAndStatusAndOverwritesSeverityAndCategory) {
    read({{3000, u"Wall"},
          {3001, u""},
          {3002, u"s"},
          {3008, u"m"},
          {3011, u"C:\\f.dll"},
          {3005, u"3"},
          {3006, u"3"},
          {3003, u" 2x"},
          {3009, u"Own"}});
    EXPECT_EQ(rule_.m_lRuleSeverity, 2);
    EXPECT_EQ(rule_.m_csRuleCategory, u"Own");
    read({});
    EXPECT_EQ(rule_.m_csRuleName + rule_.m_csRuleSource + rule_.m_csRuleModuleName, u"Wallsm");
    EXPECT_EQ(rule_.m_csRuleFileName, u"C:\\f.dll");
    EXPECT_EQ(rule_.m_lRuleStatus + rule_.m_lRuleLifeStatus, 0);
    EXPECT_EQ(rule_.m_lRuleSeverity, -1);
    EXPECT_EQ(rule_.m_csRuleCategory, u"");
}

// Numbers in any order, each twice: the first element of a number is the one that counts.
TEST_F(RuleXML, ReadsThousandsOfParametersFromTheirOwnElements) {
    std::vector<int> numbers(10'000);
    std::iota(numbers.begin(), numbers.end(), -5'000);
    for (const int number : numbers)
        rule_.add<int>(Type_Int, number);
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(7));
    CStringW content;
    for (const int factor : {2, 3}) {
        for (const int number : numbers)
            content.AppendFormat(u"<Parameter Type='%d'><Value>%d</Value></Parameter>", number,
                                 number * factor);
    }
    read({}, content);
    EXPECT_TRUE(rule_.m_bPopulated);
    for (int i = 0; i < rule_.m_Parameters.GetSize(); ++i) {
        const void* const parameter = rule_.m_Parameters.GetAt(i)->m_pParameter;
        ASSERT_EQ(valuesOf(*static_cast<const CQorParameter<int>*>(parameter)),
                  std::vector{2 * (i - 5'000)});
    }
}

TEST_F(RuleXML, StopsReadingAtAnIllegalKindAndLeavesItOutInWriting) {
    const auto& first = rule_.add<int>(Type_Int, 1);
    rule_.m_Parameters.Add(new CQorParamStorage);
    const auto& last = rule_.add<int>(Type_Int, 3);
    const MessageRecorder messages;
    read({},
         u"<Parameter Type='1'><Operator>3</Operator></Parameter>"
         u"<Parameter Type='3'><Operator>3</Operator></Parameter>");
    EXPECT_EQ(first.m_Operator + last.m_Operator, 5);
    EXPECT_FALSE(rule_.m_bPopulated);
    const std::unique_ptr<QorXMLNode> written(rule_.GetXML());
    EXPECT_EQ(std::unique_ptr<QorXMLNodeList>(written->GetChildNodes())->GetSize(), 2);
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[0].text, corvane::ResourceText(3020));
}

TEST_F(RuleXML, RaisesForWhatXMLRefusesAndGivesNothingWithoutDocument) {
    auto& parameter =
        rule_.add(Type_CStringPtr, 1, {new CStringW(u"good"), new CStringW(u'\xD800')});
    CQORConstraint constraint(QORConstraint_Material, u"\x01", true);
    QorXMLNode empty;
    QorXMLNode* node = &empty;
    EXPECT_THROW(parameter.GetXMLNode(), _com_error);
    EXPECT_THROW(rule_.GetXML(), _com_error);
    EXPECT_THROW(constraint.GetXMLNode(), _com_error);
    EXPECT_THROW(parameter.PopulateFromXML(node), _com_error);
    EXPECT_THROW(rule_.PopulateParametersFromXML(node), _com_error);
    EXPECT_THROW(constraint.PopulateFromXML(node), _com_error);
    SetXMLDoc(nullptr);
    EXPECT_FALSE(parameter.GetXMLNode() || rule_.GetXML() || constraint.GetXMLNode());
    rule_.PopulateParametersFromXML(nullptr);
    EXPECT_FALSE(rule_.m_bPopulated);
}

TEST_F(RuleXML, MakesAnElementNamedAfterTheRule) {
    QorXMLNode* const parent = document_.load(u"<R/>");
    for (const char16_t* const name : {u"A / B (C)", u"", u"a-b.c"}) {
        rule_.m_csRuleName = name;
        delete rule_.CreateRuleNode(&document_, parent);
    }
    EXPECT_EQ(parent->GetXML(), u"<R><QORRule_ABC/><QORRule_/><QORRule_a-b.c/></R>");
    EXPECT_FALSE(rule_.CreateRuleNode(nullptr, parent) || rule_.CreateRuleNode(&document_, {}));
}

TEST_F(RuleXML, LosesAGroupThatIsBroken) {
    for (int count = 0; count <= 12; ++count) {
        auto& parameter = rule_.add<CStringW*>(Type_CStringPtr, 1, {}, QorOperator_Grouped);
        for (int i = 0; i < count; ++i)
            parameter.m_Values.Add(new CStringW(u"v"));
        const bool whole = xmlOf(parameter.GetXMLNode()).Find(u"<Value>") >= 0 || count == 0;
        EXPECT_EQ(whole, count != 1 && count != 5 && count != 7 && count != 11) << count;
        EXPECT_EQ(parameter.m_Values.GetSize(), whole ? count : 0);
    }
}

TEST_F(RuleXML, ReadsWhatAParameterHasAndDefaultsTheRest) {
    struct Case {
        const char16_t* xml;
        int op;
        int paramType;
        bool status;
        std::vector<int> values;
    };
    const Case cases[] = {
        {u"<Parameter Name='x' Type='7' Status='0'><Operator>3</Operator><ParameterType>5"
         u"</ParameterType><Value> 12abc</Value><Value>x</Value><Value/></Parameter>",
         3,
         5,
         false,
         {9, 12, 0, 0}},
        {u"<Parameter Type=' 7x' Status='00'><Operator>1</Operator><Operator>2</Operator>"
         u"<ParameterType>x</ParameterType><Value>4294967295</Value></Parameter>",
         1,
         0,
         true,
         {9, -1}},
        {u"<Parameter/><Parameter Type='8'/><Parameter Type='7'/><Parameter Type='7'><Value>2"
         u"</Value></Parameter>",
         0,
         0,
         true,
         {9}},
        {u"<Constraint><Parameter Type='7'/></Constraint>", 2, 0, true, {9}},
        {u"<Parameter Type='7'><ParameterType>24</ParameterType><Value Attribute1='5'>6</Value>"
         u"</Parameter>",
         0,
         24,
         true,
         {9, 0}},
    };
    for (const Case& c : cases) {
        auto& parameter = rule_.add(Type_Int, 7, {9});
        parameter.PopulateFromXML(document_.load(ruleElement({}, c.xml)));
        EXPECT_EQ(parameter.m_Operator, c.op) << CStringW(c.xml).ToUtf8();
        EXPECT_EQ(parameter.m_ParamType, c.paramType) << CStringW(c.xml).ToUtf8();
        EXPECT_EQ(parameter.m_bStatus, c.status) << CStringW(c.xml).ToUtf8();
        EXPECT_EQ(valuesOf(parameter), c.values) << CStringW(c.xml).ToUtf8();
        EXPECT_EQ(parameter.m_csName, u"");
    }
}

TEST_F(RuleXML, ReadsTheValuesOfEachKind) {
    const auto& flags = rule_.add<bool>(Type_Bool, 7);
    const auto& dates = rule_.add<COleDateTime*>(Type_COleDateTimePtr, 7);
    const auto& records = rule_.add<QORCustomRuleData*>(Type_CustomRuleData, 8);
    read({},
         u"<Parameter Type='7'><Value>0</Value><Value>2</Value><Value/></Parameter>"
         u"<Parameter Type='8'><ParameterType>24</ParameterType><Value Attribute3='c' "
         u"Attribute1='a' Attribute5='e' Attribute4='d'/><Value>x</Value></Parameter>");
    EXPECT_EQ(valuesOf(flags), (std::vector{false, true, true}));
    EXPECT_EQ(valuesOf(dates), std::vector<COleDateTime*>(3));
    ASSERT_EQ(records.m_Values.GetSize(), 2);
    CStringW texts;
    for (const CStringW& text : *records.m_Values.GetAt(0))
        texts += text;
    EXPECT_EQ(texts, u"acd");
    EXPECT_EQ(records.m_Values.GetAt(1)->GetSize(), 0);
}

TEST_F(RuleXML, OfAConstraintKeepsWhatAnElementDoesNotSay) {
    struct Case {
        const char16_t* xml;
        int typeBefore;
        const char16_t* written;
    };
    const Case cases[] = {
        {u"<C Type='MATERIAL' Value='Brass' Status='1'/>", 0,
         u"<Constraint Type=\"Material\" Value=\"Brass\" Status=\"1\"/>"},
        {u"<C Type='Other' Value='' Status='0'/>", 1,
         u"<Constraint Type=\"Material\" Value=\"\" Status=\"0\"/>"},
        {u"<C Type='' Status='true'/>", 5, u"<Constraint Type=\"\" Value=\"old\" Status=\"0\"/>"},
        {u"<C/>", 1, u"<Constraint Type=\"Material\" Value=\"old\" Status=\"1\"/>"},
    };
    for (const Case& c : cases) {
        CQORConstraint constraint(QORConstraintType_e(c.typeBefore), u"old", true);
        for (QorXMLNode* element : {document_.load(c.xml), static_cast<QorXMLNode*>(nullptr)})
            constraint.PopulateFromXML(element);
        EXPECT_EQ(xmlOf(constraint.GetXMLNode()), c.written);
    }
    CQORConstraint constraint(QORConstraint_Material, u"", true);
    const auto& limit = rule_.add<int>(Type_Int, 5, {}, 2, 0, &constraint.m_Parameters);
    QorXMLNode* element = document_.load(
        u"<C><Parameter Type='5'><Operator>3</Operator><Value>4"
        u"</Value></Parameter></C>");
    constraint.PopulateFromXML(element);
    EXPECT_EQ(valuesOf(limit), std::vector{4});
    EXPECT_TRUE(xmlOf(constraint.GetXMLNode()).Find(u"><Parameter Name=\"\" Type=\"5\"") > 0);
}

}  // namespace
