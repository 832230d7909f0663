#include <random>

#include "XmlFixture.h"
#include "support/BothParsers.h"
#include "support/TemporaryFolder.h"

namespace {

using Random = std::mt19937;

std::size_t below(Random& random, std::size_t limit) {
    return random() % limit;
}

// Text with much of what a load or a save could change.
CStringW anyText(Random& random) {
    static const char16_t* const pieces[] = {u" ",          u"\t",     u"\n", u"\r",     u"\r\n",
                                             u"]]>",        u"<",      u"&",  u">",      u"\"",
                                             u"'",          u"&amp;",  u";",  u"x",      u"\u00A0",
                                             u"\U0001F600", u"\u4E2D", u"--", u"\u0085", u"\u2028"};
    CStringW text;
    for (std::size_t count = below(random, 6); count > 0; --count)
        text += pieces[below(random, std::size(pieces))];
    return text;
}

TEST(RoundTrip, GivesBackEveryTextThatACallerSets) {
    Random random(1);
    const TemporaryFolder folder;
    QorXMLDocument document;
    std::vector<CStringW> texts;
    const NodePtr root(document.CreateNode(u"r"));
    document.AppendNode(root.get());
    for (int i = 0; i < 2'000; ++i) {
        const NodePtr node(root->AppendNode(u"t", &document));
        texts.push_back(anyText(random));
        node->SetNodeValue(texts.back());
        node->AddAttribute(u"k", texts.back());
        if (i % 10 == 0) node->AddAttribute(u"xml:space", u"preserve");
    }
    ASSERT_TRUE(corvane::SaveXML(document, folder.wide("a.xml")));
    const CStringW xml = document.GetXML();
    QorXMLDocument fromText;
    QorXMLDocument fromFile;
    for (const QorXMLNode* again :
         {load(fromText, xml), fromFile.LoadFromFile(folder.wide("a.xml"))}) {
        ASSERT_NE(again, nullptr);
        const ListPtr list(again->GetNodeList(u"t"));
        ASSERT_EQ(list->GetSize(), 2'000);
        CStringW value;
        for (QorLong i = 0; i < list->GetSize(); ++i) {
            EXPECT_EQ((*list)[i]->GetNodeValue(), texts[static_cast<std::size_t>(i)]);
            EXPECT_TRUE((*list)[i]->GetAttributeValue(u"k", value));
            EXPECT_EQ(value, texts[static_cast<std::size_t>(i)]);
        }
    }
    EXPECT_EQ(fromFile.GetXML(), xml);
}

// Changes a document in a few places: drops, doubles, and puts in bytes and pieces of syntax.
std::string mutated(Random& random, std::string bytes) {
    static const char* const pieces[] = {"<",
                                         ">",
                                         "&",
                                         ";",
                                         "&#32;",
                                         "&#13;",
                                         "&e;",
                                         " ",
                                         "\n",
                                         "]]>",
                                         "<![CDATA[",
                                         "<b/>",
                                         "</b>",
                                         "<!--",
                                         "'",
                                         "\xC3",
                                         "\xEF\xBB\xBF",
                                         "p:",
                                         "xmlns:p='u'",
                                         "\xFF\xFE",
                                         "-->",
                                         "<?x y?>",
                                         "xml:space='preserve'",
                                         "<b>",
                                         "\r",
                                         "\t"};
    for (std::size_t edits = 1 + below(random, 2); edits > 0 && !bytes.empty(); --edits) {
        const std::size_t at = below(random, bytes.size());
        const std::size_t length = below(random, 9);
        switch (below(random, 4)) {
            case 0:
                bytes.erase(at, length);
                break;
            case 1:
                bytes.insert(at, bytes.substr(below(random, bytes.size()), length));
                break;
            case 2:
                bytes[at] = static_cast<char>(random());
                break;
            default:
                bytes.insert(at, pieces[below(random, std::size(pieces))]);
        }
    }
    return bytes;
}

TEST(RoundTrip, SavesEqualWhateverLoads) {
    const std::string corpus[] = {
        "<?xml version='1.0' encoding='UTF-8'?>\n<R>\n <P N='a' T='1'>\n  <V> 2.5 </V>\n"
        "  <V/>x <V>a&lt;b</V>\n </P>\n</R>",
        "<!DOCTYPE a [<!ENTITY e ' <b>t</b> '><!ATTLIST b k CDATA 'v'>]><a> &e;<b/>&#32;&e; </a>",
        "<p:a xmlns:p='urn:p' xml:space='preserve'> <p:b p:c='&#10;'> <![CDATA[ x ]]> </p:b>"
        "<b xml:space='default'> <c/> y </b></p:a>",
        "<?xml version='1.0' encoding='iso-8859-1'?><!-- c --><a>\xE4 <?p q?> <b> </b>\r\n</a>",
    };
    Random random(2);
    const TemporaryFolder folder;
    int loaded = 0;
    for (int i = 0; i < 4'000; ++i) {
        const std::string bytes = mutated(random, corpus[below(random, std::size(corpus))]);
        QorXMLDocument document;
        const QorXMLNode* root = nullptr;
        // Files cost far more than the rest: every eighth shows what decoding does.
        if (i % 8 == 0) {
            folder.write("a.xml", bytes);
            root = document.LoadFromFile(folder.wide("a.xml"));
        } else {
            root = load(document, CStringW::FromUtf8(bytes));
        }
        EXPECT_EQ(root == nullptr, !corvane::LastXMLFault(document).message.IsEmpty());
        if (!root) continue;
        ++loaded;
        QorXMLDocument again;
        const QorXMLNode* reread = load(again, document.GetXML());
        ASSERT_NE(reread, nullptr) << bytes;
        EXPECT_EQ(reread->GetNodeValue(), root->GetNodeValue()) << bytes;
        EXPECT_EQ(again.GetXML(), document.GetXML()) << bytes;
        EXPECT_EQ(ListPtr(reread->GetNodeList(u"descendant-or-self::node()"))->GetSize(),
                  ListPtr(root->GetNodeList(u"descendant-or-self::node()"))->GetSize())
            << bytes;
        if (loaded % 200 != 0) continue;
        ASSERT_TRUE(corvane::SaveXML(document, folder.wide("b.xml")));
        ASSERT_NE(again.LoadFromFile(folder.wide("b.xml")), nullptr) << bytes;
        EXPECT_EQ(again.GetXML(), document.GetXML()) << bytes;
    }
    EXPECT_GT(loaded, 500);
}

TEST(RoundTrip, LoadsPlainDocumentsLikeAllOthers) {
    const std::string corpus[] = {
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- a\n-->\n<R a='1'\n b = \"2'\">\n <V> 2.5 "
        "</V ><V/>x <V>a&lt;b\n</V>\n\n<V\n/></R>\n<!--c-->",
        "<a x='&quot;&amp;'><b>\xC3\xA4 ]] > </b> <!--\n--> t<b>&apos;</b\n>&gt;\n<c-1._/> </a> ",
        "<a>" + repeated("<b>\n", 205) + repeated("</b>", 205) + "<c/></a>",
    };
    Random random(3);
    int loaded = 0;
    for (int i = 0; i < 4'000; ++i) {
        const std::string bytes = mutated(random, corpus[below(random, std::size(corpus))]);
        const std::string other = forGeneralParser(bytes);
        if (other.empty()) continue;
        const std::string tree = treeOf(bytes);
        EXPECT_EQ(tree, treeOf(other)) << bytes;
        loaded += tree.starts_with('<') ? 1 : 0;
    }
    EXPECT_GT(loaded, 500);
}

}  // namespace
