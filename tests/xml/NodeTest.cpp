#include <functional>
#include <limits>

#include "XmlFixture.h"
#include "xml/ElementWriter.h"

namespace {

class NodeTest : public ::testing::Test {
protected:
    NodePtr make(const char16_t* name) { return NodePtr(document_.CreateNode(name)); }

    QorXMLDocument document_;
};

TEST_F(NodeTest, OutlivesItsDocumentWithAllAboveIt) {
    NodePtr inner;
    {
        QorXMLDocument document;
        inner.reset(load(document, u"<a k='1'><b><c>x</c></b><d/></a>")->SelectSingleNode(u"b/c"));
        load(document, u"<z/>");
    }
    const NodePtr b(inner->GetParentNode());
    NodePtr a(b->GetParentNode());
    EXPECT_EQ(a->GetXML(), u"<a k=\"1\"><b><c>x</c></b><d/></a>");
    // Out of a tree that only this handle kept alive.
    const NodePtr home = make(u"home");
    a.reset();
    home->AppendNode(inner.get());
    EXPECT_EQ(home->GetXML(), u"<home><c>x</c></home>");
    EXPECT_EQ(NodePtr(b->GetParentNode())->GetXML(), u"<a k=\"1\"><b/><d/></a>");
}

TEST_F(NodeTest, MovesBetweenPlacesAndDocuments) {
    QorXMLDocument other;
    QorXMLNode* root = load(document_, u"<r>\n<a/>\n<b/>\n</r>");
    const NodePtr a(root->SelectSingleNode(u"a"));
    root->AppendNode(a.get());
    EXPECT_EQ(document_.GetXML(), u"<r>\n<b/>\n<a/></r>");
    EXPECT_TRUE(root->RemoveChild(a.get()));
    EXPECT_EQ(codeOf([&] { root->RemoveChild(a.get()); }), corvane::kErrorInvalidArgument);
    other.AppendNode(a.get());
    EXPECT_EQ(other.GetXML(), u"<a/>");
    a->AppendNode(root);
    EXPECT_EQ(other.GetXML(), u"<a><r>\n<b/></r></a>");
    EXPECT_EQ(document_.GetXML(), u"<r>\n<b/></r>");
    QorXMLDocument empty;
    EXPECT_EQ(empty.GetXML(), u"");
    empty.AppendNode(make(u"new").get());
    EXPECT_EQ(empty.GetXML(), u"<new/>");
}

// A line break beside a text would become part of it when it is read back.
TEST_F(NodeTest, WritesNoLineBreakWhereARemovalJoinsText) {
    QorXMLNode* root = load(document_, u"<r>x<a/> <b>y</b> <c/> </r>");
    root->RemoveChild(NodePtr(root->SelectSingleNode(u"a")).get());
    EXPECT_EQ(document_.GetXML(), u"<r>x<b>y</b>\n<c/>\n</r>");
    root->AddAttribute(u"xml:space", u"preserve");
    EXPECT_EQ(document_.GetXML(), u"<r xml:space=\"preserve\">x<b>y</b><c/></r>");
}

TEST_F(NodeTest, RefusesCyclesAndSecondRoots) {
    QorXMLNode* root = load(document_, u"<r><a><b/></a></r>");
    const NodePtr a(root->SelectSingleNode(u"a"));
    const NodePtr b(root->SelectSingleNode(u"a/b"));
    EXPECT_EQ(codeOf([&] { b->AppendNode(a.get()); }), corvane::kErrorFail);
    EXPECT_EQ(codeOf([&] { a->AppendNode(a.get()); }), corvane::kErrorFail);
    EXPECT_EQ(codeOf([&] { b->AppendNode(root); }), corvane::kErrorFail);
    EXPECT_EQ(codeOf([&] { document_.AppendNode(b.get()); }), corvane::kErrorFail);
    document_.AppendNode(root);
    EXPECT_EQ(document_.GetXML(), u"<r><a><b/></a></r>");
}

TEST_F(NodeTest, KeepsChildrenThatAreHeldWhenTextReplacesThem) {
    QorXMLNode* root = load(document_, u"<r><a>1</a> <b><c>2</c></b></r>");
    const NodePtr c(root->SelectSingleNode(u"b/c"));
    root->SetNodeValue(u"new");
    EXPECT_EQ(document_.GetXML(), u"<r>new</r>");
    EXPECT_EQ(NodePtr(c->GetParentNode())->GetXML(), u"<b><c>2</c></b>");
    EXPECT_EQ(NodePtr(NodePtr(c->GetParentNode())->GetParentNode()), nullptr);
}

// A loaded text shares its memory with equal ones, and is a node only once that is asked for.
TEST_F(NodeTest, KeepsItsTextWhateverJoinsIt) {
    QorXMLNode* root = load(document_,
                            u"<r k='same'><a> same\n</a><b> same\n</b><c>same</c>"
                            u"<d>&#32;same\n</d><e>same</e></r>");
    const NodePtr a(root->SelectSingleNode(u"a"));
    const NodePtr c(root->SelectSingleNode(u"c"));
    const NodePtr d(root->SelectSingleNode(u"d"));
    EXPECT_EQ(d->GetNodeValue(), u" same");
    const ListPtr list(a->GetChildNodes());
    ASSERT_EQ(list->GetSize(), 1);
    EXPECT_EQ((*list)[0]->GetNodeName(), u"");
    const NodePtr third(root->GetNodeFromXPath(u"((a | b) | (a | b)/text())[3]"));
    EXPECT_EQ(third->GetNodeName(), u"b");
    NodePtr(d->AppendNode(u"i", &document_));
    corvane::xml::ElementWriter(*c).child(u"i");
    d->AppendNode(c.get());
    EXPECT_EQ(d->GetXML(), u"<d>&#32;same\n<i/><c>same<i/></c></d>");
    EXPECT_EQ(d->GetNodeValue(), u" same\nsame");
    NodePtr(root->SelectSingleNode(u"e"))->SetNodeValue(u"");
    EXPECT_EQ(ListPtr(root->GetNodeList(u"e/node()"))->GetSize(), 0);
    EXPECT_EQ(a->GetXML(), u"<a> same\n</a>");
}

TEST_F(NodeTest, AllowsOnlyNamesAndTextThatCanBeReadBack) {
    for (const char16_t* name :
         {u"a", u"_a", u"\u00E4", u"\u4E2D", u"xml:a", u"a-1.b", u"\U00010000"})
        EXPECT_EQ(codeOf([&] { make(name); }), 0) << CStringW(name).ToUtf8();
    for (const char16_t* name :
         {u"",   u" ",     u"a b",     u" a",      u"1a",      u"-a",        u".a",
          u"a<", u"a&b",   u"a/",      u"a\u0001", u"\u00D7",  u"p:a",       u"a:",
          u":a", u"a:b:c", u"a\xD800", u"\xDC00",  u"xmlns:a", u"\U000F0000"}) {
        EXPECT_EQ(codeOf([&] { make(name); }), corvane::kErrorFail) << CStringW(name).ToUtf8();
        EXPECT_EQ(codeOf([&] { make(u"a")->AddAttribute(name, u""); }), corvane::kErrorFail);
    }
    const NodePtr node = make(u"a");
    node->AddAttribute(u"k", u"v");
    node->SetNodeValue(u"t");
    for (const char16_t* text :
         {u"\u0001", u"a\u001F", u"\xD800", u"\xDC00x", u"\xD800x", u"\uFFFE", u"\uFFFF"}) {
        EXPECT_EQ(codeOf([&] { node->SetNodeValue(text); }), corvane::kErrorFail);
        EXPECT_EQ(codeOf([&] { node->AddAttribute(u"k", text); }), corvane::kErrorFail);
        EXPECT_EQ(codeOf([&] { node->SetAttributeValue(u"k", text); }), corvane::kErrorFail);
    }
    EXPECT_EQ(node->GetXML(), u"<a k=\"v\">t</a>");
}

TEST_F(NodeTest, KeepsPrefixesDeclared) {
    const NodePtr node = make(u"a");
    EXPECT_EQ(codeOf([&] { node->AddAttribute(u"p:k", u"1"); }), corvane::kErrorFail);
    node->AddAttribute(u"xmlns:p", u"urn:p");
    node->AddAttribute(u"xmlns:q", u"urn:p");
    node->AddAttribute(u"p:k", u"1");
    EXPECT_EQ(codeOf([&] { node->AddAttribute(u"q:k", u"1"); }), corvane::kErrorFail);
    EXPECT_EQ(codeOf([&] { node->AddAttribute(u"xmlns:z", u""); }), corvane::kErrorFail);
    EXPECT_EQ(codeOf([&] { node->AddAttribute(u"xmlns:xml", u"urn:x"); }), corvane::kErrorFail);
    const NodePtr child(node->AppendNode(u"p:b", &document_));
    const NodePtr clash(node->AppendNode(u"c", &document_));
    clash->AddAttribute(u"p:k", u"");
    node->AddAttribute(u"xmlns:r", u"urn:r");
    clash->AddAttribute(u"r:k", u"");
    EXPECT_EQ(codeOf([&] { node->SetAttributeValue(u"xmlns:r", u"urn:p"); }), corvane::kErrorFail);
    EXPECT_NE(load(document_, node->GetXML()), nullptr);
    EXPECT_EQ(child->GetNodeName(), u"b");
    EXPECT_EQ(NodePtr(child->CloneNode())->GetXML(), u"<p:b xmlns:p=\"urn:p\"/>");
    node->RemoveChild(child.get());
    EXPECT_EQ(child->GetXML(), u"<p:b xmlns:p=\"urn:p\"/>");
}

TEST_F(NodeTest, TakesAlongTheDeclarationInForceAndNoOther) {
    // What leaves its parent, and what it is then.
    const struct {
        const char16_t* source;
        const char16_t* query;
        const char16_t* removed;
    } cases[] = {
        {u"<r xmlns:p='1'><a xmlns:p='2'><p:b/></a></r>", u"a", u"<a xmlns:p=\"2\"><p:b/></a>"},
        {u"<r xmlns:p='1'><a xmlns:p='2'><p:b/></a></r>", u"a/p:b", u"<p:b xmlns:p=\"2\"/>"},
        {u"<r xmlns:p='1'><x><a xmlns:p='2'><p:b/></a><p:c/></x></r>", u"x",
         u"<x xmlns:p=\"1\"><a xmlns:p=\"2\"><p:b/></a><p:c/></x>"},
        {u"<r xmlns:p='1' xmlns:q='2'><x><a q:i='' xmlns:p='3' p:j=''/></x></r>", u"x",
         u"<x xmlns:q=\"2\"><a xmlns:p=\"3\" q:i=\"\" p:j=\"\"/></x>"},
    };
    for (const auto& [source, query, removed] : cases) {
        QorXMLNode* root = load(document_, source);
        const NodePtr node(root->SelectSingleNode(query));
        EXPECT_EQ(NodePtr(node->CloneNode())->GetXML(), removed);
        NodePtr(node->GetParentNode())->RemoveChild(node.get());
        EXPECT_EQ(node->GetXML(), removed);
    }
}

TEST_F(NodeTest, DeclaresAgainWhereNoTwoAttributesBecomeOne) {
    const auto redeclare = [this](const char16_t* source) {
        QorXMLNode* root = load(document_, source);
        return codeOf([&] { root->AddAttribute(u"xmlns:p", u"1"); });
    };
    EXPECT_EQ(redeclare(u"<r xmlns:p='2' xmlns:q='1'><a p:k='' q:k=''/></r>"), corvane::kErrorFail);
    EXPECT_EQ(redeclare(u"<r xmlns:p='2' xmlns:q='1'><a xmlns:p='3' p:k='' q:k=''/></r>"), 0);
    EXPECT_EQ(redeclare(u"<r xmlns:p='2' xmlns:q='1'><a xmlns:q='3' p:k='' q:k=''/></r>"), 0);
    EXPECT_EQ(redeclare(u"<r xmlns:p='2' xmlns:q='1'><a p:k='' q:l=''/></r>"), 0);
}

TEST_F(NodeTest, TakesManyAttributesAndNoMore) {
    const NodePtr node = make(u"a");
    CStringW value;
    for (int i = 0; i < 10'000; ++i) {
        CStringW name;
        name.Format(u"k%d", i);
        node->AddAttribute(name, name);
        ASSERT_TRUE(node->GetAttributeValue(name, value));
        ASSERT_EQ(value, name);
    }
    EXPECT_EQ(codeOf([&] { node->AddAttribute(u"more", u""); }), corvane::kErrorFail);
    EXPECT_TRUE(node->AddAttribute(u"k9999", u"new"));
    EXPECT_TRUE(node->GetAttributeValue(u"k9999", value));
    EXPECT_EQ(value, u"new");
    EXPECT_NE(load(document_, NodePtr(node->CloneNode())->GetXML()), nullptr);
    const NodePtr prefixed = make(u"a");
    for (int i = 0; i < 1'000; ++i) {
        CStringW name;
        name.Format(u"xmlns:p%d", i);
        prefixed->AddAttribute(name, u"u");
    }
    EXPECT_EQ(codeOf([&] { prefixed->AddAttribute(u"xmlns:q", u"u"); }), corvane::kErrorFail);
}

TEST_F(NodeTest, ReadsAndChangesAttributes) {
    const NodePtr node = make(u"a");
    CStringW value(u"old");
    EXPECT_FALSE(node->SetAttributeValue(u"k", u"v"));
    EXPECT_FALSE(node->GetAttributeValue(u"k", value));
    EXPECT_EQ(value, u"old");
    char* narrow = nullptr;
    EXPECT_FALSE(node->GetAttributeValue1("k", narrow));
    EXPECT_TRUE(node->AddAttribute(u"k", u"v"));
    EXPECT_TRUE(node->AddAttribute1("K", "\xE2\x82\xAC"));
    EXPECT_TRUE(node->AddAttribute(u"k", u"w"));
    EXPECT_EQ(node->GetXML(), u"<a k=\"w\" K=\"\u20AC\"/>");
    ASSERT_TRUE(node->GetAttributeValue1("K", narrow));
    EXPECT_STREQ(narrow, "\xE2\x82\xAC");
    delete[] narrow;
}

TEST_F(NodeTest, ReadsNumbers) {
    const struct {
        const char16_t* text;
        bool found;
        int whole;
        double real;
    } cases[] = {
        {u"12abc", true, 12, 12},
        {u" -7", true, -7, -7},
        {u"abc", false, 99, 99},
        {u"", true, 99, 99},
        {u" \t", true, 99, 99},
        {u"nano", false, 99, 99},
        {u"info", false, 99, 99},
        {u"-inf", false, 99, 99},
        {u"1.5", true, 1, 1.5},
        {u"1,5", true, 1, 1},
        {u"2147483648", true, std::numeric_limits<int>::min(), 2147483648.0},
    };
    for (const auto& [text, found, whole, real] : cases) {
        const NodePtr node = make(u"a");
        node->SetNodeValue(text);
        int asInt = 99;
        QorLong asLong = 99;
        double asDouble = 99;
        EXPECT_EQ(node->GetNodeValueInInt(asInt), found);
        EXPECT_EQ(node->GetNodeValueInLong(asLong), found);
        EXPECT_EQ(node->GetNodeValueInDouble(asDouble), found);
        EXPECT_EQ(asInt, whole);
        EXPECT_EQ(asLong, whole);
        EXPECT_EQ(asDouble, real);
        bool asBool = false;
        EXPECT_TRUE(node->GetNodeValueInBool(asBool));
        EXPECT_TRUE(asBool);
    }
    const NodePtr node = make(u"a");
    node->SetNodeValue(u"0");
    bool flag = true;
    EXPECT_TRUE(node->GetNodeValueInBool(flag));
    EXPECT_FALSE(flag);
}

TEST_F(NodeTest, RaisesOrStaysQuietWhenEmpty) {
    QorXMLNode empty;
    const NodePtr full = make(u"a");
    CStringW text(u"x");
    char* narrow = nullptr;
    int number = 7;
    bool flag = false;
    const std::function<void()> operations[] = {
        [&] { empty.GetNodeList(u"a"); },
        [&] { empty.GetNodeList1("a"); },
        [&] { empty.GetChildNodes(); },
        [&] { empty.GetNodeFromXPath(u"a"); },
        [&] { empty.SelectSingleNode(u"a"); },
        [&] { empty.GetParentNode(); },
        [&] { empty.CloneNode(); },
        [&] { empty.GetAttributeValue(u"a", text); },
        [&] { empty.GetAttributeValue1("a", narrow); },
        [&] { empty.SetAttributeValue(u"a", u""); },
        [&] { empty.AddAttribute(u"a", u""); },
        [&] { empty.SetNodeValue(u""); },
        [&] { empty.GetNodeValueInBool(flag); },
        [&] { empty.AppendNode(u"a", &document_); },
        [&] { empty.AppendNode(full.get()); },
        [&] { empty.AppendNode(&empty); },
        [&] { empty.RemoveChild(full.get()); },
    };
    for (const auto& operation : operations)
        EXPECT_EQ(codeOf(operation), corvane::kErrorPointer);
    EXPECT_EQ(codeOf([&] { full->AppendNode(&empty); }), corvane::kErrorInvalidArgument);
    EXPECT_EQ(codeOf([&] { document_.AppendNode(&empty); }), corvane::kErrorInvalidArgument);
    empty.AppendNode(static_cast<QorXMLNode*>(nullptr));
    EXPECT_FALSE(empty.RemoveChild(nullptr));
    EXPECT_EQ(empty.GetNodeName(), u"");
    EXPECT_EQ(empty.GetNodeValue(), u"");
    EXPECT_EQ(empty.GetXML(), u"");
    EXPECT_TRUE(empty.GetNodeValueInInt(number));
    EXPECT_EQ(number, 7);
    EXPECT_TRUE(empty.GetNodeValueInCString(text));
    EXPECT_EQ(text, u"");
}

TEST_F(NodeTest, SharesTheNodesOfCopiedLists) {
    const QorXMLNode* root =
        load(document_, CStringW::FromUtf8("<r>" + repeated("<a/>", 60) + "</r>"));
    ListPtr list(root->GetNodeList(u"a"));
    QorXMLNodeList copy;
    copy = *list;
    QorXMLNodeList another(copy);
    const QorXMLNode* node = (*list)[59];
    list.reset();
    copy = QorXMLNodeList();
    ASSERT_EQ(another.GetSize(), 60);
    EXPECT_EQ(another[59], node);
    EXPECT_EQ(node->GetNodeName(), u"a");
    EXPECT_EQ(copy.GetSize(), 0);
}

}  // namespace
