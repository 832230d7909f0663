#include "XmlFixture.h"

namespace {

class QueryTest : public ::testing::Test {
protected:
    QueryTest() {
        root_ = load(document_,
                     u"<r xmlns='urn:d'><a i='1'><b>1</b></a><a i='2'/>"
                     u"<p:c xmlns:p='urn:p' p:k='v'><p:d/></p:c><!--k-->t</r>");
    }

    QorXMLDocument document_;
    QorXMLNode* root_;
};

TEST_F(QueryTest, SelectsByNameAndByXPath) {
    // The names of the matches in order; "-" stands for an empty node.
    const struct {
        const char16_t* query;
        const char16_t* names;
    } cases[] = {
        {u"a", u"aa"},
        {u" a ", u"aa"},
        {u"./a", u"aa"},
        {u"A", u""},
        {u"b", u""},
        {u"a/b", u"b"},
        {u"//b", u"b"},
        {u"/r/a", u"aa"},
        {u".", u"r"},
        {u"..", u"-"},
        {u"/", u"-"},
        {u"*", u"aac"},
        {u"node()", u"aac--"},
        {u"text()", u"-"},
        {u"a/@i", u"--"},
        {u"a[1]", u"a"},
        {u"a[3]", u""},
        {u"a[@i>1]", u"a"},
        {u"a[b='1']", u"a"},
        {u"b | a", u"aa"},
        {u"p:c", u"c"},
        {u"c", u""},
        {u"q:a", u""},
        {u"p:c/p:d", u"d"},
        {u"p:c[@p:k='v']/*", u"d"},
        {u"//a[2]/preceding-sibling::*", u"a"},
        {u"id('x')", u""},
    };
    for (const auto& [query, names] : cases) {
        const ListPtr list(root_->GetNodeList(query));
        CStringW found;
        for (QorLong i = 0; i < list->GetSize(); ++i) {
            const CStringW name = (*list)[i]->GetNodeName();
            found += name.IsEmpty() ? CStringW(u"-") : name;
        }
        EXPECT_EQ(found, names) << CStringW(query).ToUtf8();
    }
}

TEST_F(QueryTest, RefusesWhatIsNoQueryForNodes) {
    const char16_t* const queries[] = {
        u"",          u" ",          u"a[",           u"a[]",     u"//",
        u"a/",        u"@",          u"a]",           u"a b",     u"1a",
        u"<a>",       u"::",         u"p:",           u":c",      u"count(a)",
        u"string(a)", u"1",          u"'x'",          u"$x",      u"$p:x",
        u"nosuch()",  u"p:nosuch()", u"a[nosuch(.)]", u"a\xD800", u"(a) | (b",
    };
    testing::internal::CaptureStderr();
    for (const char16_t* query : queries) {
        const std::string shown = CStringW(query).ToUtf8();
        EXPECT_EQ(codeOf([&] { ListPtr(root_->GetNodeList(query)); }), corvane::kErrorFail)
            << shown;
        EXPECT_EQ(codeOf([&] { NodePtr(root_->SelectSingleNode(query)); }), corvane::kErrorFail)
            << shown;
        EXPECT_EQ(codeOf([&] { NodePtr(root_->GetNodeFromXPath(query)); }), corvane::kErrorFail)
            << shown;
    }
    for (const std::string& query :
         {repeated("(", 60'000), repeated("a[", 30'000), repeated("not(", 15'000),
          repeated("-", 60'000) + "1", repeated("//*", 20'000), std::string(70'000, 'a') + "/a"}) {
        const CStringW wide = CStringW::FromUtf8(query);
        EXPECT_EQ(codeOf([&] { ListPtr(root_->GetNodeList(wide)); }), corvane::kErrorFail);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(QueryTest, EndsQueriesThatTakeTooManySteps) {
    std::string spaces;
    for (int i = 0; i < 30'000; ++i) {
        const std::string prefix = "p" + std::to_string(i);
        spaces += "<" + prefix + ":a xmlns:" + prefix + "='u'/>";
    }
    const struct {
        std::string content;
        const char16_t* query;
        QorLong size;  // -1 for a query that ends early
    } cases[] = {
        {repeated("<a><b/></a>", 5'000), u"//*[count(//*) = count(//b)]", -1},
        {repeated("<a><b/></a>", 5'000), u"//a/b", 5'000},
        {repeated("<a><b/></a>", 5'000), u"//a//b", 5'000},
        {repeated("<a><b/></a>", 40'000), u"//a//b", -1},
        {repeated("<a><b/></a>", 40'000), u"//a/following-sibling::a", -1},
        {repeated("<a><b/></a>", 20'000), u"//a[.//b][ancestor::r]", 20'000},
        {repeated("<a>", 10'000) + repeated("</a>", 10'000), u"//a//a", -1},
        {repeated("<!---->", 100'000), u"comment()", -1},
        {repeated("x<![CDATA[y]]>", 50'000), u"text()", 1},
        {repeated("<a><b/></a>", 20'000), u"../r/*/../..", -1},
        {spaces, u"*", 30'000},
    };
    for (const auto& [content, query, size] : cases) {
        QorXMLDocument document;
        const QorXMLNode* root = load(document, CStringW::FromUtf8("<r>" + content + "</r>"));
        QorLong found = -1;
        const HResult code =
            codeOf([&, query = query] { found = ListPtr(root->GetNodeList(query))->GetSize(); });
        EXPECT_EQ(code, size < 0 ? corvane::kErrorFail : 0);
        EXPECT_EQ(found, size) << CStringW(query).ToUtf8();
    }
}

TEST_F(QueryTest, GivesOneNodeInThreeWays) {
    EXPECT_EQ(NodePtr(root_->GetNodeFromXPath(u"nosuch")), nullptr);
    EXPECT_EQ(NodePtr(root_->SelectSingleNode(u"nosuch")), nullptr);
    EXPECT_EQ(NodePtr(root_->GetNodeFromXPath(u"a/@i"))->GetNodeName(), u"");
    EXPECT_EQ(NodePtr(root_->SelectSingleNode(u"a/@i")), nullptr);
    EXPECT_EQ(NodePtr(root_->SelectSingleNode(u"a/b"))->GetNodeValue(), u"1");
    EXPECT_EQ(NodePtr(root_->GetParentNode()), nullptr);
    const NodePtr b(root_->GetNodeFromXPath(u"//b"));
    EXPECT_EQ(NodePtr(b->GetParentNode())->GetNodeName(), u"a");
    const ListPtr children(root_->GetChildNodes());
    ASSERT_EQ(children->GetSize(), 5);
    EXPECT_EQ((*children)[3]->GetNodeName(), u"");
}

// What a query remembers of the tree must not outlive a change of any kind.
TEST_F(QueryTest, SeesEveryChange) {
    const auto count = [this](const char16_t* query) {
        return ListPtr(root_->GetNodeList(query))->GetSize();
    };
    const NodePtr a(root_->SelectSingleNode(u"a"));
    EXPECT_EQ(count(u"//b"), 1);
    const NodePtr b(a->AppendNode(u"b", &document_));
    EXPECT_EQ(count(u"//b"), 2);
    b->SetNodeValue(u"5");
    EXPECT_EQ(count(u"//b[.=5]"), 1);
    b->AddAttribute(u"n", u"1");
    EXPECT_EQ(count(u"//b[@n]"), 1);
    b->SetAttributeValue(u"n", u"2");
    EXPECT_EQ(count(u"//b[@n=2]"), 1);
    a->RemoveChild(b.get());
    EXPECT_EQ(count(u"//b[@n]"), 0);
    EXPECT_EQ(ListPtr(b->GetNodeList(u"//@n"))->GetSize(), 1);
    root_->AppendNode(b.get());
    EXPECT_EQ(count(u"/r/b[@n]"), 1);
}

}  // namespace
