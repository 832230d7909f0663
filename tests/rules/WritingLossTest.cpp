#include <gtest/gtest.h>
#include <tuple>

#include <corvane/rules/WritingLoss.h>

#include "AnyRule.h"
#include "support/Text.h"

namespace {

// What a rule with parameters 1 (double), 2 (text, as record in 3) loses of its element's content.
std::vector<CStringW> losses(const CStringW& attributes, const CStringW& content) {
    CurrentDocument document;
    AnyRule rule;
    rule.add<double>(Type_Double, 1);
    rule.add<CStringW*>(Type_CStringPtr, 2);
    rule.add<QORCustomRuleData*>(Type_CustomRuleData, 3);
    QorXMLNode* const before =
        document.load(u"<Rule " + attributes + u">\n" + content + u"</Rule>");
    rule.PopulateParametersFromXML(before);
    rule.PostPopulate();
    const std::unique_ptr<QorXMLNode> after(rule.GetXML());
    std::vector<CStringW> texts;
    for (const corvane::WritingLoss& loss : corvane::FindWritingLosses(*before, *after)) {
        EXPECT_GT(loss.line, 0);
        texts.push_back(loss.text);
    }
    return texts;
}

CStringW parameter(const char16_t* number, const char16_t* content) {
    return CStringW(u"<Parameter Type='") + number + u"'><Operator>2</Operator>" + content +
           u"</Parameter>";
}

TEST(WritingLoss, IsNothingForAnotherFormOfTheSame) {
    EXPECT_EQ(losses(u"Name='a' Severity='2' File='C:\\x\\Walls.DLL' Source='Walls'",
                     parameter(u"1", u"<Value>1.5</Value><Value>2</Value>") +
                         parameter(u"2", u"<Value>a</Value><Remarks/>") +
                         parameter(u"3",
                                   u"<ParameterType>24</ParameterType>"
                                   u"<Value Attribute1='a' Attribute3='b'/>")),
              std::vector<CStringW>());
}

TEST(WritingLoss, IsTold) {
    const std::tuple<const char16_t*, CStringW, const char16_t*> cases[] = {
        {u"Status='3'", u"", u"Status=\"3\" becomes \"0\""},
        {u"CategoryText='x'", u"", u"CategoryText=\"x\" is left out"},
        {u"File='ProeWalls.dll'", u"", u"File=\"ProeWalls.dll\" becomes \"walls.dll\""},
        {u"", u"<Parameter Type='1'><Value>1</Value></Parameter>",
         u"parameter 1: left out, since without an Operator it counts as 0, which is not saved"},
        {u"", u"<Parameter Type='1'><Operator>12</Operator></Parameter>",
         u"parameter 1: left out, since its Operator 12 is not saved"},
        {u"", parameter(u"9", u""),
         u"parameter 9: left out, since the rule has none of that number"},
        {u"", u"<Parameter/>", u"parameter without Type is left out"},
        {u"", parameter(u"1", u"") + parameter(u"1", u"<Value>2</Value>"),
         u"parameter 1: only the first one of a number is read"},
        {u"", u"<Parameter Type='1'><Operator>1</Operator><Value>1</Value></Parameter>",
         u"parameter 1: of its 1 values 0 are left"},
        {u"", parameter(u"1", u"<Value>1e-7</Value>"),
         u"parameter 1: value \"1e-7\" becomes \"0.000000\""},
        {u"", parameter(u"1", u"<Value>1,5</Value>"),
         u"parameter 1: value \"1,5\" becomes \"1.000000\""},
        {u"", parameter(u"3", u"<ParameterType>24</ParameterType><Value Attribute5='e'/>"),
         u"parameter 3: of its 1 values 0 are left"},
        {u"",
         parameter(u"3",
                   u"<ParameterType>24</ParameterType><Value Attribute1='a' "
                   u"Attribute5='e'/>"),
         u"parameter 3: value \"a | e\" becomes \"a\""},
        {u"", parameter(u"1", u"<Remarks>why</Remarks>"), u"parameter 1: its remarks are left out"},
        {u"", parameter(u"1", u"<Vaule/>"),
         u"parameter 1: the element <Vaule> is left out, since no rule reads it"},
        {u"", u"<Paramter Type='1'/>",
         u"the element <Paramter> is left out, since no rule reads it"},
        {u"", u"<Constraint Type='Material' Value='ABS'/>", u"constraint \"ABS\": left out"},
        {u"", u"<Categories><Category Category='x'/></Categories>", u"category \"x\": left out"},
        {u"", u"<Engines><Engine GUID='{1}'/></Engines>", u"engine \"{1}\": left out"},
    };
    for (const auto& [attributes, content, text] : cases)
        EXPECT_EQ(losses(attributes, content), std::vector<CStringW>{text}) << content.ToUtf8();
}

TEST(WritingLoss, OfAConstraintIsWhatItsCounterpartLacks) {
    const CurrentDocument document;
    QorXMLDocument other;
    CStringW text =
        u"<Rule><Constraint Type='Material' Value='abs' Status='1'>" + parameter(u"1", u"") +
        u"</Constraint><Constraint Type='Other' Value='ABS' Status='yes'><Note/></Constraint>"
        u"</Rule>";
    const QorXMLNode* const before = other.LoadFromXMLString(text);
    CQORConstraint first(QORConstraint_Material, u"ABS", true);
    CQORConstraint second(QORConstraintType_e(0), u"ABS", false);
    AnyRule rule;
    const std::unique_ptr<QorXMLNode> after(rule.GetXML());
    for (CQORConstraint* const constraint : {&first, &second})
        after->AppendNode(std::unique_ptr<QorXMLNode>(constraint->GetXMLNode()).get());
    std::vector<CStringW> texts;
    for (const corvane::WritingLoss& loss : corvane::FindWritingLosses(*before, *after))
        texts.push_back(loss.text);
    EXPECT_EQ(texts,
              (std::vector<CStringW>{
                  u"constraint \"abs\": parameter 1: left out, since the rule has none of that "
                  u"number",
                  u"constraint \"ABS\": Type=\"Other\" becomes \"\"",
                  u"constraint \"ABS\": Status=\"yes\" becomes \"0\"",
                  u"constraint \"ABS\": the element <Note> is left out, since no rule reads it"}));
}

}  // namespace
