#include <filesystem>
#include <gtest/gtest.h>
#include <thread>
#include <tuple>
#include <vector>

#include <corvane/scriptrules/ConcreteQORRule.h>
#include <corvane/scriptrules/RuleIndexScope.h>
#include <corvane/scriptrules/TypeLibDetails.h>
#include <corvane/scriptrules/VSTAQueries.h>

#include "emulation/Components.h"
#include "rules/AnyRule.h"
#include "scriptrules/Site.h"
#include "support/MessageRecorder.h"
#include "support/Text.h"
#include "system/Modules.h"
#include "system/Paths.h"

namespace {

using Texts = std::vector<CStringW>;
using namespace std::string_view_literals;

CStringList list(const Texts& texts) {
    CStringList list;
    for (const CStringW& text : texts)
        list.AddTail(text);
    return list;
}

struct ConcreteRule : testing::Test {
    Site site;
    MessageRecorder messages;
    CurrentDocument document;
};

TEST_F(ConcreteRule, WritesTheLargerFormAndReadsItBackEqual) {
    const std::string engine = CORVANE_TEST_DATA "/emulation/data/full.tlb";
    site.enter("HKEY_CLASSES_ROOT\\TypeLib\\",
               {"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}\\9.0\\40c\\win64=" + engine});
    ConcreteQORRule rule;
    EXPECT_EQ(rule.GetRuleCategoryEnum(), 1);
    rule.m_csRuleName = u"Bolt";
    rule.m_csRuleDescription = u"Length";
    rule.m_csRuleCategory = u"Screws";
    rule.m_csRuleFileName = u"C:\\rules\\bolt.lua";
    rule.m_csModuleFileName = u"bolts.dll";
    rule.m_lRuleStatus = 4;
    rule.m_lRuleLifeStatus = -5;
    rule.m_lstCategories = list({u"first", u""});
    rule.m_lstEngines = list({CStringW::FromUtf8(engine), CStringW(__FILE__), u""});
    const CStringW written = xmlOf(rule.GetXML());
    EXPECT_EQ(written,
              u"<Rule Name=\"Bolt\" Status=\"4\" LifeStatus=\"-5\" Description=\"Length\" "
              u"Source=\"*****\" Module=\"Interactive User Defined Rule\" File=\"bolt.lua\" "
              u"Severity=\"3\" CategoryText=\"Screws\" ModuleFile=\"bolts.dll\">"
              u"<Categories><Category Category=\"first\"/><Category Category=\"\"/></Categories>"
              u"<Engines><Engine Engine=\"full.tlb\" "
              u"GUID=\"{0A1B2C3D-4E5F-6071-8293-A4B5C6D7E8F9}\" MajorVersion=\"1\" "
              u"MinorVersion=\"a\" LCID=\"40c\"/><Engine/><Engine/></Engines></Rule>");

    ConcreteQORRule copy;
    copy.PopulateParametersFromXML(document.load(written));
    EXPECT_TRUE(copy.m_bPopulated);
    EXPECT_EQ(copy.m_csRuleDisplayName, u"Bolt");
    EXPECT_EQ(copy.m_csRuleBaseDescription, u"Length");
    // The bare elements say what the engine before them says.
    rule.m_lstEngines = list(Texts(3, CStringW::FromUtf8(engine)));
    EXPECT_EQ(xmlOf(copy.GetXML()), xmlOf(rule.GetXML()));

    // Records have no place in this form.
    copy.m_Parameters.Add(copy.CreateParamStorageObject(
        Type_CustomRuleData, 13, QorOperator_Default, QorParamType_Plain, true, false));
    EXPECT_EQ(xmlOf(copy.GetXML()), xmlOf(rule.GetXML()));
    EXPECT_EQ(CStringW(messages.shown.at(0).text), u"Illegal Param DataType Defined");
    copy.m_bPopulated = false;
    copy.PopulateParametersFromXML(document.load(written));
    EXPECT_FALSE(copy.m_bPopulated);
}

TEST_F(ConcreteRule, FindsEnginesUnderTheLastVersionAndPassesOverWhatIsNoElement) {
    const std::string longest(259, 'p');
    site.enter(
        "HKEY_CLASSES_ROOT\\TypeLib\\",
        {"{1}\\1.0\\0\\win64=one", "{1}\\10.0\\0\\win64=ten", "{1}\\2.0\\0\\win64=two",
         "{2}\\1.0\\0\\win64=old", "{2}\\1.a\\409\\win64=new", "{3}\\1.0\\0\\win32=narrow", "{4}",
         "{5}\\1.0\\0\\win64", "{6}\\1.0\\0\\win64=" + longest, "{7}\\1.0\\0\\win64=p" + longest});
    ConcreteQORRule rule;
    for (int round = 0; round < 2; ++round)
        rule.PopulateParametersFromXML(document.load(
            u"<Rule><Categories>text<!-- x --><Category Category='a'/><?pi?><Other/></Categories>"
            u"<Engines>text<Engine GUID='{1}' MajorVersion='1' LCID='0'/><!-- x -->"
            u"<Engine GUID='{2}'/><Engine GUID='{3}'/><Engine GUID='{4}'/><Engine GUID='{5}'/>"
            u"<Engine GUID='{6}'/><Engine GUID='{7}'/><Engine GUID='{8}'/></Engines></Rule>"));
    const CStringW path = CStringW::FromUtf8(longest);
    EXPECT_EQ(Texts(rule.m_lstCategories.begin(), rule.m_lstCategories.end()),
              (Texts{u"a", u"", u"a", u""}));
    EXPECT_EQ(Texts(rule.m_lstEngines.begin(), rule.m_lstEngines.end()),
              (Texts{u"two", u"", path, u"two", u"", path}));
    EXPECT_EQ(rule.m_csRuleSource, u"*****");
    EXPECT_EQ(rule.m_csRuleCategory, u"");
    EXPECT_EQ(rule.m_lRuleStatus, -1);
    CStringW left = u"before";
    for (const auto& [guid, expected] : {std::pair(u"{8}", u"before"), std::pair(u"{7}", u"")}) {
        EXPECT_FALSE(TypeLibDetails(CStringW()).FindTypeLibFile(left, guid, u"1", u"0", u"0"));
        EXPECT_EQ(left, expected);
    }
    EXPECT_EQ(corvane::emulation::ComponentRuntime::depth(), 0);
}

TEST_F(ConcreteRule, TakesItsDefinitionFromTheIndexAndItsSeverityFromTheRuleFile) {
    const std::string index =
        "<Rules><Rule Description='unnamed'/><!-- x --><Rule Name='BOLT' Description='first' "
        "Severity='9'/><Rule Name='bolt' Description='second'/></Rules>";
    const std::tuple<std::string, const char16_t*, const char16_t*, QorLong> cases[] = {
        {index, u"<Rule Name='bolt' Severity='2'/>", u"first", 2},
        {index, u"<Rule Name='bolt'/>", u"first", -1},
        {index, u"<Rule Severity='x1'/>", u"unnamed", -1},
        {index, u"<Rule Name='nut' Description='own'/>", u"own", -1},
        {"<Rules>", u"<Rule Name='bolt' Description='own'/>", u"own", -1},
    };
    for (const auto& [entries, element, description, severity] : cases) {
        site.folder.write("scripts/UserDefinedFile.xml", entries);
        ConcreteQORRule rule;
        EXPECT_EQ(rule.PopulateScriptRule(document.load(element)), description != u"own"sv);
        EXPECT_EQ(rule.m_csRuleDescription, description);
        EXPECT_EQ(rule.m_lRuleSeverity, severity) << CStringW(element).ToUtf8();
    }
    site.configure("");
    ConcreteQORRule rule;
    EXPECT_FALSE(rule.PopulateScriptRule(document.load(u"<Rule Severity='7'/>")));
    EXPECT_EQ(rule.m_lRuleSeverity, 3);
}

// The definition that a rule of that name gets; with the index in a scope and without one.
TEST_F(ConcreteRule, InAScopeIsWhatTheFilesSayNow) {
    const auto description = [this](const char16_t* name) {
        ConcreteQORRule rule;
        rule.m_csRuleDescription = u"unread";
        rule.PopulateScriptRule(
            document.load(u"<Rule Description='own' Name='" + CStringW(name) + u"'/>"));
        return rule.m_csRuleDescription;
    };
    const std::string path = site.folder.path("scripts/UserDefinedFile.xml");
    // Times of which nobody can tell a change: each index is as long as the one before it.
    const auto write = [&](const std::string& entries) {
        site.folder.write("scripts/UserDefinedFile.xml", "<Rules>" + entries + "</Rules>");
        std::filesystem::last_write_time(path, {});
    };
    const corvane::RuleIndexScope outer;
    const corvane::RuleIndexScope inner;
    write("<Rule Name='BOLT' Description='1'/><Rule Name='bolt' Description='2'/>");
    EXPECT_EQ(description(u"Bolt"), u"1");
    EXPECT_EQ(description(u"nut"), u"own");
    write("<Rule Name='NUTS' Description='3'/><Rule             Description='4'/>");
    EXPECT_EQ(description(u"nuts"), u"3");
    EXPECT_EQ(description(u""), u"4");
    EXPECT_EQ(description(u"bolt"), u"own");
    write("<Rule Name='bolt' Description='5'>");
    EXPECT_EQ(description(u"bolt"), u"own");
    std::filesystem::remove(path);
    EXPECT_EQ(description(u"bolt"), u"own");
    write("<Rule Name='bolt' Description='6'/>");
    EXPECT_EQ(description(u"bolt"), u"6");
    site.configure("");
    EXPECT_EQ(description(u"bolt"), u"unread");
}

// A rule that marks the element that it is given shows who is given the same one.
TEST_F(ConcreteRule, SharesTheIndexInAScopeAlone) {
    struct MarkingRule : ConcreteQORRule {
        void PopulateParametersFromXML(QorXMLNode* node) override {
            CStringW text;
            marked = node->GetAttributeValue(u"Mark", text);
            node->AddAttribute(u"Mark", u"x");
        }
        bool marked = false;
    };
    const auto findsMark = [this] {
        MarkingRule rule;
        EXPECT_TRUE(rule.PopulateScriptRule(document.load(u"<Rule Name='bolt'/>")));
        return rule.marked;
    };
    site.folder.write("scripts/UserDefinedFile.xml", "<Rules><Rule Name='bolt'/></Rules>");
    {
        const corvane::RuleIndexScope scope;
        EXPECT_FALSE(findsMark());
        EXPECT_TRUE(findsMark());
        std::thread([&] { EXPECT_FALSE(findsMark()); }).join();
    }
    EXPECT_FALSE(findsMark());
    EXPECT_FALSE(findsMark());
}

TEST_F(ConcreteRule, TellsOfOtherKindsByTheirOwnKeyOrFileAlone) {
    const auto answers = [] {
        bool supported = true;
        bool usable = true;
        bool creo = true;
        AreVSTARulesSupported(&supported);
        CanUseVSTARules(&usable);
        IsCorvaneForCreoParametric(&creo);
        return std::vector{supported, usable, creo};
    };
    const std::string root = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Wow6432Node\\Microsoft\\";
    EXPECT_EQ(answers(), (std::vector{false, false, false}));
    site.enter(root, {"VSTAHost\\CorvaneServer"});
    EXPECT_EQ(answers(), (std::vector{false, true, false}));
    site.enter(root, {"VSTAHostConfig"});
    using namespace corvane::emulation;
    using namespace corvane::system;
    const auto folder = std::filesystem::path(parentFolder(ownModuleFile()));
    const std::pair<const char*, bool> files[] = {
        {"rules/QORProeAddinCreo7u.so", false}, {"QORProeAddinCreo7.so", false},
        {"QORProeAddinCreo4u.so", true},        {"libqorproeaddincreo4U.SO.2", true},
        {"QORProeAddinCreou.dll", true},        {"QORProeAddinCreo4u.so.old", false}};
    std::filesystem::create_directory(folder / "rules");
    std::filesystem::create_directory(folder / "QORProeAddinCreo8u.so");
    for (const auto& [file, found] : files) {
        std::ofstream(folder / file).put('x');
        EXPECT_EQ(answers(), (std::vector{true, true, found})) << file;
        std::filesystem::remove(folder / file);
    }
    std::filesystem::remove(folder / "QORProeAddinCreo8u.so");
    std::filesystem::remove(folder / "rules");
}

}  // namespace
