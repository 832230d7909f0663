#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <corvane/scriptrules/ConcreteQORRule.h>
#include <corvane/scriptrules/TypeLibDetails.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLDocument.h>

#include "platform/Components.h"
#include "scriptrules/Site.h"
#include "support/MessageRecorder.h"
#include "support/Text.h"

namespace {

using Texts = std::vector<CStringW>;
using Node = std::unique_ptr<QorXMLNode>;

constexpr const char* kLibraries = "HKEY_CLASSES_ROOT\\TypeLib\\";

Texts entries(const CStringList& list) {
    return {list.begin(), list.end()};
}

class ConcreteRule : public testing::Test {
protected:
    ConcreteRule() { SetXMLDoc(&document); }
    ~ConcreteRule() override {
        SetXMLDoc(nullptr);
        EXPECT_EQ(corvane::platform::ComponentRuntime::depth(), 0);
    }

    /// The root of a text; lives as long as the fixture.
    QorXMLNode* parse(const std::string& xml) {
        CStringW text = CStringW::FromUtf8(xml);
        return source.LoadFromXMLString(text);
    }
    static void addParameter(ConcreteQORRule& rule, Type_e kind, QorLong id) {
        rule.m_Parameters.Add(rule.CreateParamStorageObject(kind, id, QorOperator_Default,
                                                            QorParamType_Plain, true, false));
    }

    Site site;
    MessageRecorder messages;
    QorXMLDocument document;
    QorXMLDocument source;
};

TEST_F(ConcreteRule, WritesTheLargerFormAndReadsItBackEqual) {
    const std::string engine = CORVANE_TEST_DATA "/platform/data/full.tlb";
    site.enter(kLibraries, {"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}\\9.0\\40c\\win64=" + engine});
    ConcreteQORRule rule;
    EXPECT_EQ(rule.GetRuleCategoryEnum(), 1);
    rule.m_csRuleName = u"Bolt";
    rule.m_csRuleDescription = u"Length";
    rule.m_csRuleCategory = u"Screws";
    rule.m_csRuleFileName = u"C:\\rules\\bolt.lua";
    rule.m_csModuleFileName = u"bolts.dll";
    rule.m_lRuleStatus = 4;
    rule.m_lRuleLifeStatus = -5;
    for (const char16_t* category : {u"first", u""})
        rule.m_lstCategories.AddTail(category);
    for (const std::string& path : {engine, std::string(__FILE__), std::string()})
        rule.m_lstEngines.AddTail(CStringW::FromUtf8(path));
    const Node written(rule.GetXML());
    EXPECT_EQ(written->GetXML(),
              u"<Rule Name=\"Bolt\" Status=\"4\" LifeStatus=\"-5\" Description=\"Length\" "
              u"Source=\"*****\" Module=\"Interactive User Defined Rule\" File=\"bolt.lua\" "
              u"Severity=\"3\" CategoryText=\"Screws\" ModuleFile=\"bolts.dll\">"
              u"<Categories><Category Category=\"first\"/><Category Category=\"\"/></Categories>"
              u"<Engines><Engine Engine=\"full.tlb\" "
              u"GUID=\"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}\" MajorVersion=\"1\" "
              u"MinorVersion=\"a\" LCID=\"40c\"/><Engine/><Engine/></Engines></Rule>");

    // The bare elements say what the engine before them says.
    ConcreteQORRule copy;
    copy.PopulateParametersFromXML(written.get());
    EXPECT_TRUE(copy.m_bPopulated);
    EXPECT_EQ(copy.m_csRuleDisplayName, u"Bolt");
    EXPECT_EQ(copy.m_csRuleBaseDescription, u"Length");
    const CStringW path = CStringW::FromUtf8(engine);
    EXPECT_EQ(entries(copy.m_lstEngines), (Texts{path, path, path}));
    rule.m_lstEngines = copy.m_lstEngines;
    // Records have no place in this form.
    addParameter(rule, Type_Int, 12);
    addParameter(rule, Type_CustomRuleData, 13);
    addParameter(copy, Type_Int, 12);
    const Node expected(rule.GetXML());
    EXPECT_EQ(CStringW(messages.shown.at(0).text), u"Illegal Param DataType Defined");
    const Node again(copy.GetXML());
    EXPECT_EQ(again->GetXML(), expected->GetXML());
    rule.PopulateParametersFromXML(written.get());
    EXPECT_FALSE(rule.m_bPopulated);
    SetXMLDoc(nullptr);
    EXPECT_EQ(rule.GetXML(), nullptr);
}

TEST_F(ConcreteRule, FindsEnginesUnderTheLastVersionAndPassesOverWhatIsNoElement) {
    const std::string longest(259, 'p');
    site.enter(
        kLibraries,
        {"{1}\\1.0\\0\\win64=one", "{1}\\10.0\\0\\win64=ten", "{1}\\2.0\\0\\win64=two",
         "{2}\\1.0\\0\\win64=old", "{2}\\1.a\\409\\win64=new", "{3}\\1.0\\0\\win32=narrow", "{4}",
         "{5}\\1.0\\0\\win64", "{6}\\1.0\\0\\win64=" + longest, "{7}\\1.0\\0\\win64=p" + longest});
    QorXMLNode* const node = parse(
        "<Rule><Categories>text<!-- x --><Category Category='a'/><?pi?><Other/></Categories>"
        "<Engines>text<Engine GUID='{1}' MajorVersion='1' LCID='0'/><!-- x -->"
        "<Engine GUID='{2}'/><Engine GUID='{3}'/><Engine GUID='{4}'/><Engine GUID='{5}'/>"
        "<Engine GUID='{6}'/><Engine GUID='{7}'/><Engine GUID='{8}'/></Engines></Rule>");
    ConcreteQORRule rule;
    rule.PopulateParametersFromXML(node);
    rule.PopulateParametersFromXML(node);
    CStringW path = u"before";
    for (const auto& [guid, left] : {std::pair(u"{8}", u"before"), std::pair(u"{7}", u"")}) {
        EXPECT_FALSE(TypeLibDetails(CStringW()).FindTypeLibFile(path, guid, u"1", u"0", u"0"));
        EXPECT_EQ(path, left);
    }
    path = CStringW::FromUtf8(longest);
    EXPECT_EQ(entries(rule.m_lstCategories), (Texts{u"a", u"", u"a", u""}));
    EXPECT_EQ(entries(rule.m_lstEngines), (Texts{u"two", u"", path, u"two", u"", path}));
    EXPECT_EQ(rule.m_csRuleSource, u"*****");
    EXPECT_EQ(rule.m_csRuleCategory, u"");
    EXPECT_EQ(rule.m_lRuleStatus, -1);
}

TEST_F(ConcreteRule, TakesItsDefinitionFromTheIndexAndItsSeverityFromTheRuleFile) {
    const std::string index =
        "<Rules><Rule Description='unnamed'/><!-- x --><Rule Name='BOLT' Description='first' "
        "Severity='9'/><Rule Name='bolt' Description='second'/></Rules>";
    const std::string own = "<Rule Name='Bolt' Description='own' Severity='2'/>";
    std::string wide = "\xFF\xFE";
    for (const char letter : index)
        wide += {letter, '\0'};
    const std::tuple<std::string, std::string, bool, const char16_t*, QorLong> cases[] = {
        {index, own, true, u"first", 2},
        {wide, own, true, u"first", 2},
        {index, "<Rule Name='bolt'/>", true, u"first", -1},
        {index, "<Rule Severity='x1'/>", true, u"unnamed", -1},
        {index, "<Rule Name='nut' Description='own'/>", false, u"own", -1},
        {index.substr(0, index.size() - 3), own, false, u"own", 2},
        {"", own, false, u"own", 2},
    };
    ConcreteQORRule last;
    EXPECT_FALSE(last.PopulateScriptRule(parse(own)));
    EXPECT_EQ(last.m_csRuleDescription, u"own");
    for (const auto& [entries, element, found, description, severity] : cases) {
        SCOPED_TRACE(element + " in " + entries);
        site.folder.write("scripts/UserDefinedFile.xml", entries);
        ConcreteQORRule rule;
        EXPECT_EQ(rule.PopulateScriptRule(parse(element)), found);
        EXPECT_EQ(rule.m_csRuleDescription, description);
        EXPECT_EQ(rule.m_lRuleSeverity, severity);
    }
    QorXMLNode empty;
    EXPECT_THROW(last.PopulateScriptRule(&empty), _com_error);
    EXPECT_FALSE(last.PopulateScriptRule(nullptr));
    site.configure("");
    EXPECT_FALSE(last.PopulateScriptRule(parse("<Rule Severity='7'/>")));
    EXPECT_EQ(last.m_lRuleSeverity, 2);
}

}  // namespace
