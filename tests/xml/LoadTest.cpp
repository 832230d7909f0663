#include "XmlFixture.h"
#include "support/TemporaryFolder.h"
#include "xml/ElementAccess.h"

namespace {

TEST(Load, RefusesWhatIsNotWellFormed) {
    const char16_t* const sources[] = {
        u"",
        u"  ",
        u"x",
        u"<!-- c -->",
        u"<a>",
        u"<a/><b/>",
        u"<a/>x",
        u"<1a/>",
        u"<a x='1' x='2'/>",
        u"<a x=1/>",
        u"<a x='<'/>",
        u"<a>&</a>",
        u"<a>&nbsp;</a>",
        u"<a>]]></a>",
        u"<a>\u0001</a>",
        u"<a>&#1;</a>",
        u"<a>\uFFFE</a>",
        u"<a>\xD800</a>",
        u"<a>\xDC00\xD800</a>",
        u"<p:a/>",
        u"<a p:x='1'/>",
        u"<a xmlns:p='u' xmlns:q='u' p:x='' q:x=''/>",
        u"<a:/>",
        u"<a xmlns:p=''/>",
        u"<?xml version='1.1'?><a/>",
        u" <?xml version='1.0'?><a/>",
        u"<?xml version='1.0' encoding='klingon'?><a/>",
        u"<a><!-- -- --></a>",
        u"<!DOCTYPE a [<!ENTITY e '<b>'>]><a>&e;</a>",
        u"<!DOCTYPE a SYSTEM 'x'><a>&e;</a>",
        u"<!DOCTYPE a [<!ENTITY e SYSTEM '/etc/hostname'>]><a>&e;</a>",
        u"<!DOCTYPE a [<!ENTITY % e SYSTEM '/etc/hostname'>%e;]><a/>",
        u"<!DOCTYPE a [<!ENTITY e SYSTEM '/etc/hostname'>]><a x='&e;'/>",
        u"<!DOCTYPE a [<!ENTITY e SYSTEM 'a#b'>]><a><b></a>",
        u"<!DOCTYPE a [<!NOTATION n >]><a/>",
        u"<!DOCTYPE a [<!ATTLIST a :k CDATA 'v'>]><a/>",
        u"<!DOCTYPE a [<!ATTLIST a p:k CDATA 'v'>]><a/>",
        u"<!DOCTYPE a [<!ATTLIST a xmlns:p CDATA ''>]><a/>",
        u"<!DOCTYPE a [<!ATTLIST a xmlns CDATA 'http://www.w3.org/2000/xmlns/'>]><a/>",
    };
    for (const char16_t* source : sources) {
        QorXMLDocument document;
        EXPECT_EQ(load(document, source), nullptr) << CStringW(source).ToUtf8();
        EXPECT_FALSE(corvane::LastXMLFault(document).message.IsEmpty());
        EXPECT_EQ(document.GetXML(), u"");
    }
    QorXMLDocument document;
    EXPECT_EQ(load(document, CStringW(std::u16string_view(u"<a/>\0", 5))), nullptr);
    EXPECT_EQ(load(document, CStringW(u"<a>\n <b>\n</a>")), nullptr);
    const corvane::XMLFault fault = corvane::LastXMLFault(document);
    EXPECT_EQ(fault.line, 3);
    EXPECT_GT(fault.column, 1);
    EXPECT_EQ(fault.message.Find(u'\n'), -1);
}

struct SourceAndText {
    const char16_t* source;
    const char16_t* text;
    const char16_t* saved;  // null where it is the source
};

TEST(Load, KeepsAndDropsWhiteSpace) {
    const SourceAndText cases[] = {
        {u"<a>  x  </a>", u"x", nullptr},
        {u"<a>\n\t \n</a>", u"", u"<a/>"},
        {u"<a>&#32;</a>", u" ", nullptr},
        {u"<a> &#32; </a>", u" ", nullptr},
        {u"<a>\n<b/>\n<c/>\n</a>", u"", nullptr},
        {u"<a> <b>x</b> y <c/> </a>", u"x y", u"<a>\n<b>x</b> y <c/>\n</a>"},
        {u"<a><b>x</b> <b>y</b></a>", u"x y", u"<a><b>x</b>\n<b>y</b></a>"},
        {u"<a> <b> x </b> <c> y </c> </a>", u"x   y", u"<a>\n<b> x </b>\n<c> y </c>\n</a>"},
        {u"<a><b><c>x</c> </b>y</a>", u"x y", u"<a><b><c>x</c>\n</b>y</a>"},
        {u"<a>x  \n y\tz</a>", u"x  \n y\tz", nullptr},
        {u"<a>x<!-- c -->y<?p  q?></a>", u"xy", u"<a>x<!-- c -->y<?p q?></a>"},
        {u"<a>x <![CDATA[ y ]]> z</a>", u"x  y  z", nullptr},
        {u"<a><![CDATA[  ]]></a>", u"  ", nullptr},
        {u"<a xml:space='preserve'> <b/> </a>", u"  ",
         u"<a xml:space=\"preserve\">&#32;<b/>&#32;</a>"},
        {u"<a xml:space=\"preserve\"><b xml:space=\"default\"> <c/> </b></a>", u"",
         u"<a xml:space=\"preserve\"><b xml:space=\"default\">\n<c/>\n</b></a>"},
        {u"<a>\u00A0 x \u00A0</a>", u"\u00A0 x \u00A0", nullptr},
        {u"<a>x\r\ny\rz</a>", u"x\ny\nz", u"<a>x\ny\nz</a>"},
        {u"<a>&lt;&gt;&amp;&quot;&apos;&#65;&#x10FFFF;</a>", u"<>&\"'A\U0010FFFF",
         u"<a>&lt;&gt;&amp;\"'A\U0010FFFF</a>"},
        {u"<a x=\"&#9;&#10;&#13; &quot;\"/>", u"", nullptr},
        {u"<a x='1\n2\t3'/>", u"", u"<a x=\"1 2 3\"/>"},
        {u"<!DOCTYPE a [<!ENTITY e ' <b>x&lt;</b>'>]><a x='&#65;'>&e;&e;</a>", u" x< x<",
         u"<a x=\"A\">&#32;<b>x&lt;</b>&#32;<b>x&lt;</b></a>"},
        {u"<!DOCTYPE a [<!ENTITY e ''><!ENTITY f '<b/> x'>]><a>&e; y&f; x &e;</a>", u"y x x",
         u"<a> y<b/>&#32;x x </a>"},
        {u"<!DOCTYPE a [<!ATTLIST a k CDATA 'v'>]><a/>", u"", u"<a k=\"v\"/>"},
        {u"<!DOCTYPE a [<!ATTLIST a k (1|2|2) '1'><!ATTLIST a l NOTATION (n|n) 'n'>]><a/>", u"",
         u"<a k=\"1\" l=\"n\"/>"},
        {u"<!DOCTYPE a [<!ENTITY i SYSTEM 'c:\\a.gif'><!ENTITY j SYSTEM 'a b'>"
         u"<!ENTITY k SYSTEM 'a#b'><!ENTITY lt 'x'><!ENTITY % lt '&#38;#60;'>]><a>&lt;</a>",
         u"<", u"<a>&lt;</a>"},
        {u"<p:a xmlns:p=\"u\" xmlns=\"v\" p:x=\"1\"><p:b/></p:a>", u"", nullptr},
    };
    testing::internal::CaptureStderr();
    for (const auto& [source, text, saved] : cases) {
        QorXMLDocument document;
        const QorXMLNode* root = load(document, source);
        ASSERT_NE(root, nullptr) << CStringW(source).ToUtf8();
        EXPECT_EQ(root->GetNodeValue(), text) << CStringW(source).ToUtf8();
        const CStringW xml = document.GetXML();
        EXPECT_EQ(xml, CStringW(saved ? saved : source));
        const QorXMLNode* again = load(document, xml);
        ASSERT_NE(again, nullptr);
        EXPECT_EQ(again->GetNodeValue(), text) << xml.ToUtf8();
        EXPECT_EQ(document.GetXML(), xml);
        EXPECT_EQ(NodePtr(again->CloneNode())->GetXML(), xml);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Load, TellsReferencesFromWhiteSpaceInLongTexts) {
    for (const std::size_t length : {1U, 298U, 299U, 300U, 301U, 5000U, 70000U}) {
        for (const std::string piece : {"x", "\xC3\xA4", "&lt;", "]\n"}) {
            const std::string body = repeated(piece, length);
            QorXMLDocument document;
            const QorXMLNode* root =
                load(document, CStringW::FromUtf8("<a> &#9;" + body + "&#10;; &#32; </a>"));
            ASSERT_NE(root, nullptr);
            const CStringW text = root->GetNodeValue();
            EXPECT_EQ(text.Left(1), u"\t") << length << piece;
            EXPECT_EQ(text.Right(4), u"\n;  ") << length << piece;
            const QorXMLNode* raw = load(document, CStringW::FromUtf8("<a>;\n" + body + "; </a>"));
            EXPECT_EQ(raw->GetNodeValue().Right(1), u";") << length << piece;
        }
    }
}

std::string utf16(std::u16string_view text, bool littleEndian) {
    std::string bytes = littleEndian ? "\xFF\xFE" : "\xFE\xFF";
    for (const char16_t unit : text) {
        const char pair[] = {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
        bytes += pair[littleEndian ? 1 : 0];
        bytes += pair[littleEndian ? 0 : 1];
    }
    return bytes;
}

TEST(Load, DecodesFiles) {
    const std::string head = "<?xml version='1.0' encoding='";
    const std::u16string wide = u"<a>\u00E4\U0001F600</a>";
    const std::u16string declared = u"<?xml version='1.0' encoding='UTF-8'?><a/>";
    const struct {
        std::string bytes;
        const char16_t* text;  // null for a fault
    } cases[] = {
        {"<a>\xC3\xA4</a>", u"\u00E4"},
        {"\xEF\xBB\xBF<a>\xC3\xA4</a>", u"\u00E4"},
        {"\xEF\xBB\xBF" + head + "utf-8'?><a>\xC3\xA4</a>", u"\u00E4"},
        {"\xEF\xBB\xBF" + head + "ISO-8859-1'?><a/>", nullptr},
        {utf16(wide, true), u"\u00E4\U0001F600"},
        {utf16(wide, false), u"\u00E4\U0001F600"},
        {utf16(wide, true) + "x", nullptr},
        {utf16(u"<a>\xD800</a>", true), nullptr},
        {utf16(declared, true), nullptr},
        {head + "UTF-16'?><a/>", nullptr},
        {head + "ISO-8859-1'?><a>\xE4\x80</a>", u"\u00E4\u0080"},
        {head + "Windows-1252'?><a>\xE4\x80</a>", u"\u00E4\u20AC"},
        {head + "windows-1252'?><a>\x81</a>", nullptr},
        {head + "us-ascii'?><a>\xE4</a>", nullptr},
        {head + "klingon'?><a/>", nullptr},
        {"<a>\xE4</a>", nullptr},
        {"<a>\xC0\xBC</a>", nullptr},
        {"<a>\xED\xA0\x80</a>", nullptr},
        {"<a x='\xFF'/>", nullptr},
        {std::string("<a/>\0", 5), nullptr},
        {"", nullptr},
    };
    const TemporaryFolder folder;
    for (const auto& [bytes, text] : cases) {
        folder.write("a.xml", bytes);
        QorXMLDocument document;
        const QorXMLNode* root = document.LoadFromFile1(folder.path("a.xml").c_str());
        ASSERT_EQ(root != nullptr, text != nullptr) << bytes;
        EXPECT_EQ(corvane::LastXMLFault(document).message.IsEmpty(), text != nullptr);
        if (!root) continue;
        EXPECT_EQ(root->GetNodeValue(), text) << bytes;
    }
    QorXMLDocument document;
    EXPECT_EQ(document.LoadFromFile(folder.wide()), nullptr);
    EXPECT_EQ(document.LoadFromFile(folder.wide("none")), nullptr);
    EXPECT_NE(load(document, u"<?xml version='1.0' encoding='UTF-16'?><a/>"), nullptr);
}

TEST(Load, KnowsTheLineOfEachStartTag) {
    QorXMLDocument document;
    const QorXMLNode* root = load(document,
                                  u"<?xml version='1.0'?>\n<!-- \n -->\n<a\n x='1'\n y='2'><b/>\n"
                                  u"<c>\n</c\n><d\n/><![CDATA[\n]]><e/>&#10;<f/></a>");
    ASSERT_NE(root, nullptr);
    QorLong line = corvane::XMLLine(*root);
    EXPECT_EQ(line, 4);
    std::string lines;
    const corvane::xml::ElementView view(*root);
    for (auto child = view.child(); child; child = child.sibling())
        lines += " " + std::to_string(child.line());
    EXPECT_EQ(lines, " 6 7 9 11 11");
    EXPECT_EQ(corvane::XMLLine(*NodePtr(document.CreateNode(u"n"))), 0);
}

}  // namespace
