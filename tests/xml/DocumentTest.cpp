#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

#include <corvane/base/Version.h>
#include <corvane/platform/LoadedModule.h>
#include <corvane/xml/CurrentDocument.h>

#include "XmlFixture.h"
#include "support/FaultySaves.h"
#include "support/MessageRecorder.h"
#include "xml/Document.h"
#include "xml/ParserLibrary.h"

namespace {

class FailingParser {
public:
    FailingParser() : former_(corvane::xml::setDocumentFactory(fail)) {}
    ~FailingParser() { corvane::xml::setDocumentFactory(former_); }
    FailingParser(const FailingParser&) = delete;
    FailingParser& operator=(const FailingParser&) = delete;

    static inline HResult code = 0;

private:
    static HResult fail(corvane::xml::Document*&) { return code; }

    corvane::xml::DocumentFactory former_;
};

TEST(Document, TakesNoParserOfAnotherVersion) {
    namespace xml = corvane::xml;
    const corvane::LoadedModule module(u"CorvaneXmlParser.dll");
    const auto operations = module.function<xml::ParserLibraryFunction>(xml::kParserLibraryName);
    ASSERT_TRUE(operations);
    EXPECT_EQ(operations("0.0.9"), nullptr);
    std::string fault;
    EXPECT_EQ(operations(corvane::kVersion), xml::parserLibrary(fault));
    EXPECT_EQ(fault, "");
}

TEST(Document, ShowsWhyItsParserCannotBeMadeAndRaisesFromThenOn) {
    const struct {
        HResult code;
        const char16_t* text;
    } cases[] = {
        {corvane::kErrorOutOfMemory, u"Not enough memory to complete the operation."},
        {static_cast<HResult>(0x80040201), u"IDispatch error #1"},
        {static_cast<HResult>(0x80040200), u"Unknown error 0x80040200"},
        {static_cast<HResult>(0x80050000), u"Unknown error 0x80050000"},
    };
    const FailingParser failing;
    for (const auto& [code, text] : cases) {
        MessageRecorder recorder;
        FailingParser::code = code;
        QorXMLDocument document;
        ASSERT_EQ(recorder.shown.size(), 1U);
        EXPECT_EQ(recorder.shown[0].text, text);
        EXPECT_EQ(recorder.shown[0].style, 0U);
        const QorXMLNode node;
        CStringW source(u"<a/>");
        EXPECT_EQ(codeOf([&] { document.LoadFromFile(u"x"); }), corvane::kErrorPointer);
        EXPECT_EQ(codeOf([&] { document.LoadFromXMLString(source); }), corvane::kErrorPointer);
        EXPECT_EQ(codeOf([&] { document.CreateNode(u"a"); }), corvane::kErrorPointer);
        EXPECT_EQ(codeOf([&] {
                      QorXMLNode copy(node);
                      document.AppendNode(&copy);
                  }),
                  corvane::kErrorPointer);
        EXPECT_TRUE(document.Save(u"x"));
        EXPECT_EQ(document.GetXML(), u"");
    }
}

TEST(Document, KeepsTheRootNodesOfEarlierLoads) {
    QorXMLDocument document;
    EXPECT_EQ(load(document, u"<a"), nullptr);
    QorXMLNode* first = load(document, u"<a/>");
    EXPECT_EQ(load(document, u"<b"), first);
    EXPECT_EQ(document.GetXML(), u"<a/>");
    EXPECT_EQ(document.LoadFromFile(u"/nowhere"), nullptr);
    EXPECT_EQ(load(document, u"<b/>")->GetNodeName(), u"b");
    EXPECT_EQ(first->GetXML(), u"<a/>");
}

TEST(Document, SharesByAssignmentAndCopiesNothing) {
    auto source = std::make_unique<QorXMLDocument>();
    QorXMLNode* root = load(*source, u"<a/>");
    QorXMLDocument copy(*source);
    EXPECT_EQ(codeOf([&] { copy.CreateNode(u"a"); }), corvane::kErrorPointer);
    QorXMLDocument target;
    load(target, u"<gone/>");
    target = *source;
    target = *&target;
    NodePtr(root->AppendNode(u"b", &target));
    EXPECT_EQ(target.GetXML(), u"<a><b/></a>");
    source.reset();
    EXPECT_EQ(root->GetXML(), u"<a><b/></a>");
    target = copy;
    EXPECT_EQ(codeOf([&] { target.CreateNode(u"a"); }), corvane::kErrorPointer);
}

TEST(Document, SavesAsAWholeOrNotAtAll) {
    const TemporaryFolder folder;
    QorXMLDocument document;
    folder.write("a.xml", "old");
    EXPECT_TRUE(document.Save(folder.wide("a.xml")));
    EXPECT_FALSE(corvane::SaveXML(document, folder.wide("a.xml")));
    EXPECT_EQ(folder.read("a.xml"), "old");
    load(document,
         u"<?xml version='1.0'?><!--1--><!DOCTYPE a PUBLIC 'p' \"it's\" [<!--in--><?in?><!ENTITY e "
         u"'x'>]>"
         u"<a>&e;\u00E4\U0001F600</a><?pi?>");
    EXPECT_TRUE(document.Save1(folder.path("a.xml").c_str()));
    const std::string saved =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!--1-->\n<!DOCTYPE a PUBLIC \"p\" \"it's\">\n"
        "<a>x\xC3\xA4\xF0\x9F\x98\x80</a>\n<?pi?>\n";
    EXPECT_EQ(folder.read("a.xml"), saved);
    ASSERT_NE(document.LoadFromFile(folder.wide("a.xml")), nullptr);
    EXPECT_TRUE(corvane::SaveXML(document, folder.wide("b.xml")));
    EXPECT_EQ(folder.read("b.xml"), saved);
    EXPECT_FALSE(corvane::SaveXML(document, folder.wide("none/a.xml")));
}

TEST(Document, RemovesWhatKilledSavesHaveLeft) {
    const TemporaryFolder folder;
    const std::string dead = ".corvane-0123456789abcdef.tmp";
    const std::string living = ".corvane-fedcba9876543210.tmp";
    const std::string foreign = ".corvane-notes.tmp";
    for (const std::string& name : {dead, living, foreign})
        folder.write(name, "x");
    const int writer = open(folder.path(living).c_str(), O_WRONLY);
    ASSERT_EQ(flock(writer, LOCK_EX), 0);
    QorXMLDocument document;
    load(document, u"<a/>");
    ASSERT_TRUE(corvane::SaveXML(document, folder.wide("a.xml")));
    EXPECT_FALSE(std::filesystem::exists(folder.path(dead)));
    EXPECT_TRUE(std::filesystem::exists(folder.path(living)));
    EXPECT_TRUE(std::filesystem::exists(folder.path(foreign)));
    close(writer);
    ASSERT_TRUE(corvane::SaveXML(document, folder.wide("a.xml")));
    EXPECT_FALSE(std::filesystem::exists(folder.path(living)));
}

TEST(Document, SavesTheOldOrTheNewRulesWhateverFails) {
    const TemporaryFolder folder;
    QorXMLDocument document;
    load(document, u"<Rules><Rule Name='a'/></Rules>");
    expectTheOldOrTheNewFile(folder, "rules.xml", "<Rules/>",
                             [&] { return corvane::SaveXML(document, folder.wide("rules.xml")); });
}

TEST(Document, IsWhereNodesAreMadeWhenItIsTheCurrentOne) {
    QorXMLDocument document;
    const NodePtr node(document.CreateNode1("a"));
    EXPECT_EQ(NodePtr(node->AppendNode(u"b")), nullptr);
    SetXMLDoc(&document);
    EXPECT_EQ(NodePtr(node->AppendNode(u"b"))->GetNodeName(), u"b");
    SetXMLDoc2(nullptr);
    EXPECT_EQ(g_pXMLDoc, nullptr);
    EXPECT_EQ(node->GetXML(), u"<a><b/></a>");
}

}  // namespace
