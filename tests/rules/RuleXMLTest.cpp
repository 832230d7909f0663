#include <gtest/gtest.h>

#include <corvane/app/StringResources.h>
#include <corvane/platform/ComError.h>

#include "AnyRule.h"
#include "support/MessageRecorder.h"
#include "support/Text.h"

namespace {

class RuleXML : public testing::Test {
protected:
    void read(const CStringW& content) {
        rule_.PopulateParametersFromXML(document_.load(u"<Rule>" + content + u"</Rule>"));
    }

    CurrentDocument document_;
    AnyRule rule_;
};

TEST_F(RuleXML, ReadsAndWritesItsAttributes) {
    rule_.m_lRuleStatus = 5;
    rule_.m_lRuleLifeStatus = 1;
    rule_.PopulateParametersFromXML(document_.load(
        u"<Rule Name='Wall' Status='3' LifeStatus='3' Description='a &amp; b' Source='s' "
        u"Module='m' File='C:\\Rules\\wall.dll' Severity=' 2x' RuleCategory='Own'/>"));
    const CStringW written =
        u"<Rule Name=\"Wall\" Status=\"5\" LifeStatus=\"1\" Description=\"a &amp; b\" Source=\"s\" "
        u"Module=\"m\" File=\"wall.dll\" Severity=\"";
    EXPECT_EQ(xmlOf(rule_.GetXML()), written + u"2\" RuleCategory=\"Own\"/>");
    EXPECT_EQ(rule_.m_csRuleFileName, u"C:\\Rules\\wall.dll");
    EXPECT_EQ(rule_.m_csRuleDisplayName, u"");

    read(u"");
    rule_.add(Type_Int, 5, {1}, QorOperator_NotSaved);
    rule_.add(Type_Int, 6, {1}, QorOperator_Hidden);
    rule_.add(Type_Double, -7, {1e-7, -1e15}).m_csRemarks = u"r";
    EXPECT_EQ(
        xmlOf(rule_.GetXML()),
        written +
            u"-1\" RuleCategory=\"\"><Parameter Name=\"\" Type=\"-7\" Status=\"1\">"
            u"<Operator>2</Operator><ParameterType>0</ParameterType><Value>0.000000</Value>"
            u"<Value>-1000000000000000.000000</Value><Remarks>r</Remarks></Parameter></Rule>");
}

// Numbers in any order, each twice: the first element of a number is the one that counts.
TEST_F(RuleXML, ReadsThousandsOfParametersFromTheirOwnElements) {
    constexpr int kCount = 10'000;
    std::vector<CQorParameter<int>*> parameters;
    CStringW content;
    for (int i = 0; i < 2 * kCount; ++i)
        content.AppendFormat(u"<Parameter Type='%d'><Value>%d</Value></Parameter>",
                             i * 7919 % kCount, i);
    for (int number = 0; number < kCount; ++number)
        parameters.push_back(&rule_.add<int>(Type_Int, number));
    read(content);
    for (int i = 0; i < kCount; ++i)
        ASSERT_EQ(valuesOf(*parameters[static_cast<std::size_t>(i * 7919 % kCount)]),
                  std::vector{i});
    EXPECT_TRUE(rule_.m_bPopulated);
}

TEST_F(RuleXML, StopsReadingAtAnIllegalKindAndLeavesItOutInWriting) {
    const MessageRecorder messages;
    const auto& first = rule_.add<int>(Type_Int, 1);
    rule_.m_Parameters.Add(rule_.CreateParamStorageObject(Type_e(9), 2, QorOperator_Default,
                                                          QorParamType_Plain, false, true));
    const auto& last = rule_.add<int>(Type_Int, 3);
    const CQorParamStorage& illegal = *rule_.FindParameterInArray(2);
    EXPECT_TRUE(illegal.m_bOption);
    EXPECT_FALSE(illegal.m_bStatus);
    EXPECT_EQ(illegal.m_pParameter, nullptr);
    EXPECT_EQ(illegal.m_Type, 0);
    read(
        u"<Parameter Type='1'><Operator>3</Operator></Parameter>"
        u"<Parameter Type='3'><Operator>3</Operator></Parameter>");
    EXPECT_EQ(first.m_Operator, 3);
    EXPECT_EQ(last.m_Operator, QorOperator_Default);
    EXPECT_FALSE(rule_.m_bPopulated);
    const std::unique_ptr<QorXMLNode> written(rule_.GetXML());
    EXPECT_EQ(std::unique_ptr<QorXMLNodeList>(written->GetChildNodes())->GetSize(), 2);
    ASSERT_EQ(messages.shown.size(), 3U);
    EXPECT_EQ(messages.shown[0].text, corvane::ResourceText(3020));
}

TEST_F(RuleXML, RaisesForWhatXMLRefusesAndGivesNothingWithoutDocument) {
    rule_.add(Type_CStringPtr, 1, {new CStringW(u"good"), new CStringW(u'\xD800')});
    CQORConstraint constraint(QORConstraint_Material, u"\x01", true);
    QorXMLNode empty;
    EXPECT_THROW(rule_.GetXML(), _com_error);
    EXPECT_THROW(constraint.GetXMLNode(), _com_error);
    EXPECT_THROW(rule_.PopulateParametersFromXML(&empty), _com_error);
    EXPECT_THROW(rule_.GetCStringPtrItem(1)->PopulateFromXML(&empty), _com_error);
    SetXMLDoc(nullptr);
    EXPECT_EQ(rule_.GetXML(), nullptr);
    EXPECT_EQ(constraint.GetXMLNode(), nullptr);
    EXPECT_EQ(rule_.GetCStringPtrItem(1)->GetXMLNode(), nullptr);
}

TEST_F(RuleXML, MakesAnElementNamedAfterTheRule) {
    rule_.m_csRuleName = u"A / B-(C)";
    const std::unique_ptr<QorXMLNode> node(
        rule_.CreateRuleNode(&document_, document_.load(u"<R/>")));
    EXPECT_EQ(document_.GetXML(), u"<R><QORRule_AB-C/></R>");
}

TEST_F(RuleXML, LosesAGroupThatIsBroken) {
    for (int count = 0; count <= 12; ++count) {
        auto& parameter = rule_.add<CStringW*>(Type_CStringPtr, 1, {}, QorOperator_Grouped);
        for (int i = 0; i < count; ++i)
            parameter.m_Values.Add(new CStringW(u"v"));
        const bool whole = count != 1 && count != 5 && count != 7 && count != 11;
        EXPECT_EQ(xmlOf(parameter.GetXMLNode()).Find(u"<Value>") > 0, whole && count > 0) << count;
        EXPECT_EQ(parameter.m_Values.GetSize(), whole ? count : 0);
    }
}

TEST_F(RuleXML, ReadsWhatAParameterHasAndDefaultsTheRest) {
    // What is read: operator, parameter type, status and values, after the 9 that is there.
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"<Parameter Name='x' Type='7' Status='0'><Operator>3</Operator><ParameterType>5"
         u"</ParameterType><Value> 12abc</Value><Value>x</Value><Value/></Parameter>",
         u"3 5 0: 9 12 0 0"},
        {u"<Parameter Type=' 7x' Status='00'><Operator>1</Operator><Operator>2</Operator>"
         u"<ParameterType>x</ParameterType><Value>4294967295</Value></Parameter>",
         u"1 0 1: 9 -1"},
        {u"<Parameter/><Parameter Type='8'/><Parameter Type='7'/><Parameter Type='7'><Value>2"
         u"</Value></Parameter>",
         u"0 0 1: 9"},
        {u"<Constraint><Parameter Type='7'/></Constraint>", u"2 0 1: 9"},
        {u"<Parameter Type='7'><ParameterType>24</ParameterType><Value Attribute1='5'>6</Value>"
         u"</Parameter>",
         u"0 24 1: 9 0"}};
    for (const auto& [xml, expected] : cases) {
        auto& parameter = rule_.add(Type_Int, 7, {9});
        parameter.PopulateFromXML(document_.load(CStringW(u"<Rule>") + xml + u"</Rule>"));
        CStringW read;
        read.Format(u"%s%d %d %d:", parameter.m_csName, parameter.m_Operator, parameter.m_ParamType,
                    parameter.m_bStatus);
        for (const int value : valuesOf(parameter))
            read.AppendFormat(u" %d", value);
        EXPECT_EQ(read, expected) << CStringW(xml).ToUtf8();
    }
}

TEST_F(RuleXML, ReadsTheWordsThatItWritesForADoubleAndNoLongerOnes) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"inf", u"inf"},        {u" -inf\n", u"-inf"},  {u"nan", u"nan"},
        {u"-nan", u"-nan"},      {u"info", u"0.000000"}, {u"nano", u"0.000000"},
        {u"inf 1", u"0.000000"}, {u"INF", u"0.000000"},  {u"1.5info", u"1.500000"}};
    for (const auto& [text, written] : cases) {
        auto& parameter = rule_.add<double>(Type_Double, 7);
        parameter.PopulateFromXML(document_.load(CStringW(u"<R><Parameter Type='7'><Value>") +
                                                 text + u"</Value></Parameter></R>"));
        EXPECT_EQ(CQorDataTypeConverter().ValueToText(parameter.m_Values.GetAt(0)), written)
            << CStringW(text).ToUtf8();
    }
}

TEST_F(RuleXML, ReadsFlagsDatesAndRecordsInTheirOwnWays) {
    const auto& flags = rule_.add<bool>(Type_Bool, 7);
    const auto& dates = rule_.add<COleDateTime*>(Type_COleDateTimePtr, 7);
    const auto& records = rule_.add<QORCustomRuleData*>(Type_CustomRuleData, 8);
    read(
        u"<Parameter Type='7'><Value>0</Value><Value>2</Value><Value/></Parameter>"
        u"<Parameter Type='8'><ParameterType>24</ParameterType><Value Attribute3='c' "
        u"Attribute1='a' Attribute5='e' Attribute4='d'/><Value>x</Value></Parameter>");
    EXPECT_EQ(valuesOf(flags), (std::vector{false, true, true}));
    EXPECT_EQ(valuesOf(dates), std::vector<COleDateTime*>(3));
    const QORCustomRuleData& record = *records.m_Values.GetAt(0);
    ASSERT_EQ(record.GetSize(), 3);
    EXPECT_EQ(record.GetAt(0) + record.GetAt(1) + record.GetAt(2), u"acd");
    EXPECT_EQ(records.m_Values.GetAt(1)->GetSize(), 0);
}

TEST_F(RuleXML, OfAConstraintKeepsWhatAnElementDoesNotSay) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"<C Type='MATERIAL' Value='Brass' Status='1'/>",
         u"Type=\"Material\" Value=\"Brass\" Status=\"1\"/>"},
        {u"<C Type='x' Value='' Status='true'/>", u"Type=\"\" Value=\"\" Status=\"0\"/>"},
        {u"<C/>", u"Type=\"\" Value=\"old\" Status=\"1\"/>"},
        {u"<C><Parameter Type='5'><Operator>3</Operator><Value>4</Value></Parameter></C>",
         u"<Value>4</Value><Remarks/></Parameter></Constraint>"}};
    for (const auto& [xml, written] : cases) {
        CQORConstraint constraint(QORConstraintType_e(5), u"old", true);
        rule_.add<int>(Type_Int, 5, {}, QorOperator_Hidden, 0, &constraint.m_Parameters);
        for (QorXMLNode* element : {document_.load(xml), static_cast<QorXMLNode*>(nullptr)})
            constraint.PopulateFromXML(element);
        const CStringW all = xmlOf(constraint.GetXMLNode());
        EXPECT_EQ(all.Right(CStringW(written).GetLength()), written);
    }
}

}  // namespace
