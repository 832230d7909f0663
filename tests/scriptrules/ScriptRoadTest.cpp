#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>

#include <corvane/scriptrules/ConcreteQORRule.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLDocument.h>

#include "scriptrules/Site.h"
#include "support/MessageRecorder.h"

namespace {

TEST(ScriptRoad, LeadsFromARuleFileThroughScriptAndEngineToAWrittenRule) {
    const std::string mesh = "{C48CD337-1FE4-4A73-B59A-BC6D746DA082}";
    Site site;
    site.enter("HKEY_CLASSES_ROOT\\TypeLib\\" + mesh + "\\1.0\\0\\",
               {"win64=" CORVANE_BUILD_DIR "/examples/engines/mesh.tlb"});
    site.folder.write("scripts/UserDefinedFile.xml",
                      "<Rules><Rule Name='Closed' File='closed.lua'><Engines><Engine LCID='0' "
                      "GUID='" +
                          mesh + "'/></Engines></Rule></Rules>");
    site.folder.write("rules.xml", "<Rules><Rule Name='closed' Severity='2'/></Rules>");
    MessageRecorder messages;
    QorXMLDocument document;
    SetXMLDoc(&document);
    QorXMLNode* const root = document.LoadFromFile(site.folder.wide("rules.xml"));
    const std::unique_ptr<QorXMLNode> node(root->SelectSingleNode(u"Rule"));
    for (const auto& [part, result] :
         {std::pair("bracket.stl", 0), std::pair("broken_cover.stl", -6)}) {
        site.folder.write(
            "scripts/closed.lua",
            "\xEF\xBB\xBF\r\nlocal part = mesh.open('" CORVANE_TEST_DATA "/../examples/parts/" +
                std::string(part) + "')\r\nif not part:closed() then error('it has holes') end");
        ConcreteQORRule rule;
        EXPECT_TRUE(rule.PopulateScriptRule(node.get()));
        const CQorData* data = nullptr;
        QORResultSet* results = nullptr;
        EXPECT_EQ(rule.Execute(nullptr, data, results), result) << part;
        const std::unique_ptr<QorXMLNode> written(rule.GetXML());
        root->AppendNode(written.get());
    }
    document.Save(site.folder.wide("rules.xml"));
    SetXMLDoc(nullptr);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_NE(messages.shown[0].text.find(u":3 "), std::u16string::npos);  // the line of the error
    const std::string written = site.folder.read("rules.xml");
    for (const char* text : {"Name=\"Closed\"", "Severity=\"2\" ", "Engine=\"mesh.tlb\""})
        EXPECT_NE(written.find(text), written.npos) << written;
}

}  // namespace
