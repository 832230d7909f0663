#include <gtest/gtest.h>
#include <utility>

#include <corvane/scriptrules/ParametricScriptRule.h>

#include "rules/AnyRule.h"
#include "scriptrules/Site.h"
#include "support/Text.h"

namespace {

CStringW textOf(const corvane::ScriptValue& value) {
    CStringW text;
    if (const auto* flag = std::get_if<bool>(&value)) text = *flag ? u"yes" : u"no";
    if (const auto* whole = std::get_if<std::int64_t>(&value))
        text = CStringW(std::to_string(*whole).c_str());
    if (const auto* number = std::get_if<double>(&value)) text.Format(u"%.2f", *number);
    if (const auto* words = std::get_if<CStringW>(&value)) text = u"'" + *words + u"'";
    return text;
}

/// "limit=1.50; sizes={1,2}" in the order in which the script is given them.
CStringW inForce(const corvane::ParametricScriptRule& rule, const CStringW& material = {}) {
    CStringW text;
    for (const auto& parameter : rule.GetScriptParameters(material)) {
        CStringW values;
        for (const auto& value : parameter.values)
            values += (values.IsEmpty() ? u"" : u",") + textOf(value);
        if (parameter.isList) values = u"{" + values + u"}";
        text += (text.IsEmpty() ? u"" : u"; ") + parameter.name + u"=" + values;
    }
    return text;
}

struct ScriptParameters : testing::Test {
    void read(corvane::ParametricScriptRule& rule, const CStringW& content) {
        rule.PopulateParametersFromXML(document.load(u"<Rule>" + content + u"</Rule>"));
    }

    Site site;
    CurrentDocument document;
};

TEST_F(ScriptParameters, HaveTheKindThatTheyOrTheirTextsSay) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"<Value> 1.5 </Value>", u"x=1.50"},
        {u"<Value>+7</Value>", u"x=7"},
        {u"<Value>7</Value><Value>1e3</Value>", u"x={7.00,1000.00}"},
        {u"<Value>99999999999999999999</Value>", u"x=100000000000000000000.00"},
        {u"<Value>1,5</Value>", u"x='1,5'"},
        {u"<Value>inf</Value>", u"x='inf'"},
        {u"<Value>+-1</Value>", u"x='+-1'"},
        {u"<Value>1e999</Value>", u"x='1e999'"},
        {u"<Value/>", u"x=''"},
        {u"<Value>true</Value>", u"x=yes"},
        {u"<Value>true</Value><Value>1</Value>", u"x={'true','1'}"},
        {u"<ParameterType>3</ParameterType><Value>0</Value>", u"x=no"},
        {u"<ParameterType>3</ParameterType><Value>2</Value>", u"x='2'"},
        {u"<ParameterType>1</ParameterType><Value>1.5</Value>", u"x='1.5'"},
        {u"<ParameterType>4</ParameterType><Value>2</Value>", u"x=2.00"},
        {u"<ParameterType>5</ParameterType><Value>1.4301</Value>", u"x='1.4301'"},
        {u"<ParameterType>15</ParameterType><Value>1</Value>", u"x={'1'}"},
        {u"<ParameterType>11</ParameterType>", u"x={}"},
        {u"<Operator>1</Operator><Value>1</Value>", u"x={1}"},
        {u"<ParameterType>24</ParameterType><Value Attribute1='a'/>", u""},
        {u"", u""},
    };
    for (const auto& [content, expected] : cases) {
        corvane::ParametricScriptRule rule;
        read(rule, u"<Parameter Name='x' Type='1'>" + CStringW(content) + u"</Parameter>");
        EXPECT_EQ(inForce(rule), expected) << CStringW(content).ToUtf8();
    }
}

TEST_F(ScriptParameters, HaveNamesThatAScriptCanWrite) {
    const std::pair<const char16_t*, const char16_t*> names[] = {
        {u"Thinnest wall (mm)", u"Thinnest_wall_mm"},
        {u"x_1", u"x_1"},
        {u"\u00E4x", u"x"},
        {u"2nd", u"_2nd"},
        {u" ", u"p3000"},
        {u"x__", u"x__"}};
    for (const auto& [written, seen] : names) {
        corvane::ParametricScriptRule rule;
        read(rule, u"<Parameter Type='3000' Name='" + CStringW(written) +
                       u"'><Value>1</Value></Parameter>");
        EXPECT_EQ(inForce(rule), seen + CStringW(u"=1"));
    }
    corvane::ParametricScriptRule rule;
    read(rule,
         u"<Parameter Type='1' Name='x'><Value>1</Value></Parameter>"
         u"<Parameter Type='2' Name='x'><Value>2</Value></Parameter>"
         u"<Parameter Type='2' Name='x'><Value>3</Value></Parameter>"
         u"<Parameter Type='3' Name='off' Status='0'><Value>3</Value></Parameter>");
    EXPECT_EQ(inForce(rule), u"x=1; x_2=2");
}

TEST_F(ScriptParameters, ComeFromIndexRuleFileAndMaterialAndSurviveSaving) {
    site.folder.write(
        "scripts/UserDefinedFile.xml",
        "<Rules><Rule Name='wall'>"
        "<Parameter Name='limit' Type='1'><Operator>2</Operator><ParameterType>4"
        "</ParameterType><Value>1</Value><Remarks>in mm</Remarks></Parameter>"
        "<Parameter Name='sizes' Type='2'><Value>3</Value><Value>4</Value></Parameter>"
        "<Constraint Type='Material' Value='ABS' Status='1'><Parameter Type='1'>"
        "<Value>2</Value></Parameter></Constraint>"
        "<Constraint Type='Material' Value='PA6' Status='1'><Parameter Type='1'>"
        "<Value>3</Value></Parameter></Constraint></Rule></Rules>");
    corvane::ParametricScriptRule rule;
    EXPECT_TRUE(rule.PopulateScriptRule(document.load(
        u"<Rule Name='Wall' Severity='1'><Parameter Type='2'><Value>5</Value></Parameter>"
        u"<Parameter Type='1' Name='other'><Value>1.5</Value></Parameter>"
        u"<Parameter Type='7' Name='own'><Value>a</Value></Parameter>"
        u"<Constraint Type='Material' Value='pa6' Status='1'><Parameter Type='1'><Value>4</Value>"
        u"</Parameter></Constraint><Constraint Type='Material' Value='POM' Status='0'>"
        u"<Parameter Type='1'><Value>9</Value></Parameter></Constraint></Rule>")));
    const auto expectAll = [](const corvane::ParametricScriptRule& read, const CStringW& sizes) {
        const std::pair<const char16_t*, const char16_t*> limits[] = {
            {u"", u"1.50"}, {u"abs", u"2.00"}, {u"PA6", u"4.00"}, {u"POM", u"1.50"}};
        for (const auto& [material, limit] : limits)
            EXPECT_EQ(inForce(read, material),
                      u"limit=" + CStringW(limit) + u"; sizes=" + sizes + u"; own='a'");
    };
    expectAll(rule, u"{5}");
    const CStringW written = xmlOf(rule.GetXML());
    EXPECT_GT(written.Find(u"<Remarks>in mm</Remarks>"), 0);
    // Without the index, and with it once more: nothing is added a second time.
    corvane::ParametricScriptRule alone;
    alone.PopulateParametersFromXML(document.load(written));
    EXPECT_EQ(inForce(alone, u"abs"), u"limit=2.00; sizes=5; own='a'");
    EXPECT_EQ(xmlOf(alone.GetXML()), written);
    alone.PopulateScriptRule(document.load(written));
    expectAll(alone, u"{5}");
    EXPECT_EQ(alone.m_Constraints.GetSize(), 3);
}

}  // namespace
