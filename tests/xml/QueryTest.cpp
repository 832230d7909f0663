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
        {u"//@*/..", u"aac"},
        {u"namespace::*", u"--"},
        {u"a[namespace-uri()='urn:d']", u"aa"},
        {u"(descendant::node())[2]", u"b"},
        {u"//comment() | a | text()", u"aa--"},
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
          repeated("-", 60'000) + "1", std::string(70'000, 'a') + "/a",
          repeated("(", 70) + "a" + repeated(")", 70)}) {
        const CStringW wide = CStringW::FromUtf8(query);
        EXPECT_EQ(codeOf([&] { ListPtr(root_->GetNodeList(wide)); }), corvane::kErrorFail);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(QueryTest, AnswersInTimeOrNotAtAll) {
    std::string spaces;
    for (int i = 0; i < 999; ++i) {
        const std::string prefix = "p" + std::to_string(i);
        spaces += "<" + prefix + ":a xmlns:" + prefix + "='u'/>";
    }
    const std::string flat = repeated("<a><b/></a>", 40'000);
    const std::string deep = repeated("<a>", kDeepest) + "y" + repeated("</a>", kDeepest);
    constexpr auto kAllDeep = static_cast<QorLong>(kDeepest);
    const struct {
        std::string content;
        std::string query;
        QorLong size;  // -1 for a query that ends early
    } cases[] = {
        {flat, "//*[count(//*) = count(//b)]", -1},
        {flat, "//a/b", 40'000},
        {flat, "//a//b", 40'000},
        {flat, "//b/ancestor::*", 40'001},
        {flat, "//a/following-sibling::a", 39'999},
        {flat, "//b/following::a", 39'999},
        {flat, "//b/preceding::b", 39'999},
        {flat, "//a[.//b][ancestor::r]", 40'000},
        {flat, "//a[following-sibling::a[7]]", 39'993},
        {flat, "//a[count(following-sibling::a) > 1]", -1},
        {flat, "../r/*/../..", 1},
        {flat, repeated("//*", 20'000), 0},
        {deep, "//a//a", kAllDeep - 1},
        {deep, "//a[.='y']", kDeepest < 100'000 ? kAllDeep : -1},
        {deep, "//a[../a]/..", kAllDeep},
        {repeated("<!---->", 100'000), "comment()", 100'000},
        {repeated("x<![CDATA[y]]>", 50'000), "text()", 1},
        {repeated("x<![CDATA[y]]><a/>", 10'000), "text()[.='xy']", 10'000},
        {spaces, "*", 999},
    };
    for (const auto& [content, query, size] : cases) {
        QorXMLDocument document;
        const QorXMLNode* root = load(document, CStringW::FromUtf8("<r>" + content + "</r>"));
        QorLong found = -1;
        const HResult code = codeOf([&, query = query] {
            found = ListPtr(root->GetNodeList(CStringW::FromUtf8(query)))->GetSize();
        });
        EXPECT_EQ(code, size < 0 ? corvane::kErrorFail : 0);
        EXPECT_EQ(found, size) << query.substr(0, 50);
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
