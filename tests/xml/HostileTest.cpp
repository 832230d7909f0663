#include "XmlFixture.h"

namespace {

std::string bomb(int levels) {
    std::string text = "<!DOCTYPE a [<!ENTITY l0 'lollollollol'>";
    for (int i = 1; i < levels; ++i) {
        const std::string below = "&l" + std::to_string(i - 1) + ";";
        text += "<!ENTITY l" + std::to_string(i) + " '" + repeated(below, 10) + "'>";
    }
    return text + "]>";
}

std::string declaring(const std::string& entity) {
    return "<!DOCTYPE a [<!ENTITY e '" + entity + "'>]>";
}

TEST(HostileXml, EndsEntityBombsEarly) {
    const std::string large = declaring(repeated("x", 100'000));
    const auto defaults = [](int count, const std::string& prefix, const std::string& value) {
        std::string text = "<!DOCTYPE a [<!ATTLIST a";
        for (int i = 0; i < count; ++i)
            text += prefix + std::to_string(i) + " CDATA '" + value + "'";
        return text + ">]><r>" + repeated("<a/>", 2'000) + "</r>";
    };
    std::string nested;
    for (int i = 0; i < 5'000; ++i)
        nested += "<a xmlns:p" + std::to_string(i) + "='u'>";
    const std::string sources[] = {
        bomb(12) + "<a>&l11;</a>",
        bomb(12) + "<a b='&l11;'/>",
        large + "<a>" + repeated("&e;", 100'000) + "</a>",
        large + "<a b='" + repeated("&e;", 100'000) + "'/>",
        declaring(repeated("<b/>", 25'000)) + "<a>" + repeated("&e;", 100'000) + "</a>",
        "<!DOCTYPE a [<!ENTITY b '&c;'><!ENTITY c '&b;'>]><a>&b;</a>",
        "<!DOCTYPE a [<!ENTITY b '&c;'><!ENTITY c '&b;'>]><a b='&b;'/>",
        defaults(20'000, " a", ""),
        defaults(200, " xmlns:a", repeated("u", 1'000)),
        nested + repeated("</a>", 5'000),
    };
    for (const std::string& source : sources) {
        QorXMLDocument document;
        EXPECT_EQ(load(document, CStringW::FromUtf8(source)), nullptr) << source.substr(0, 80);
    }
    QorXMLDocument document;
    EXPECT_NE(load(document, CStringW::FromUtf8(bomb(4) + "<a b='&l3;'>&l3;</a>")), nullptr);
}

// What the parser would take the square of its size for is refused before it begins.
TEST(HostileXml, RefusesWhatWouldCostTooMuch) {
    const auto numbered = [](int count, const std::string& before, const std::string& after) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text.append(before).append(std::to_string(i)).append(after);
        return text;
    };
    const std::string tokens = numbered(500, "t", "|") + "t";
    const std::string inSubset = "<!DOCTYPE a [";
    const struct {
        std::string source;
        std::string fault;
    } cases[] = {
        {"<a" + numbered(10'001, " a", "=''") + "/>", "Too many attributes"},
        {"<a x='>'" + numbered(10'000, " a", "=''") + "/>", "Too many attributes"},
        {inSubset + "<!ENTITY e \"<b" + numbered(10'001, " a", "=''") + "/>\">]><a/>",
         "Too many attributes"},
        {"<a>" + numbered(1'001, "<b xmlns:p", "='u'>"), "Too many prefixes in scope"},
        {inSubset + "<!ATTLIST a b (" + tokens + ") 't1'>]><a/>",
         "Too many tokens in an enumeration"},
        {inSubset + "<!ENTITY % e \"<!ATTLIST a b (" + tokens + ") 't1'>\">%e;]><a/>",
         "Too many tokens in an enumeration"},
        {inSubset + "<!ENTITY % p '" + tokens +
             "'><!ENTITY % e '<!ATTLIST a b (&#37;p;) \"t1\">'>%e;]><a/>",
         LIBXML_VERSION < 21300 ? "Too many tokens in parameter entities"
                                : "NmToken expected in ATTLIST enumeration"},
        {inSubset + numbered(20'001, "<!ELEMENT a", " EMPTY>") + "]><a/>", "Too many declarations"},
        {"<a>" + numbered(100'001, "<b", "/>") + "</a>", "Too many different names"},
    };
    for (const auto& [source, fault] : cases) {
        QorXMLDocument document;
        EXPECT_EQ(load(document, CStringW::FromUtf8(source)), nullptr);
        EXPECT_EQ(corvane::LastXMLFault(document).message.ToUtf8(), fault);
    }
    const std::string lawful[] = {
        "<a" + numbered(10'000, " a", "='='") + ">" + std::string(20'000, '=') + "</a>",
        "<a" + numbered(1'000, " xmlns:p", "='u'") + "><b/></a>",
        "<a>" + numbered(999, "<b xmlns:p", "='u'/>") + "</a>",
        inSubset + "<!ATTLIST a b (" + numbered(499, "t", "|") + "t) 't1'>]><a/>",
        "<!-- " + std::string(20'000, '=') + "--><a/>",
    };
    for (const std::string& source : lawful) {
        QorXMLDocument document;
        EXPECT_NE(load(document, CStringW::FromUtf8(source)), nullptr)
            << corvane::LastXMLFault(document).message.ToUtf8();
    }
}

TEST(HostileXml, TakesDeepNestingWithoutRecursion) {
    constexpr std::size_t kDepth = kDeepest;
    QorXMLDocument document;
    const CStringW source =
        CStringW::FromUtf8(repeated("<a>", kDepth) + "x" + repeated("</a>", kDepth));
    const NodePtr root(new QorXMLNode(*load(document, source)));
    EXPECT_EQ(root->GetNodeValue(), u"x");
    EXPECT_EQ(document.GetXML(), source);
    EXPECT_EQ(ListPtr(root->GetNodeList(u"descendant::*"))->GetSize(), QorLong{kDepth - 1});
    const NodePtr copy(root->CloneNode());
    EXPECT_EQ(copy->GetXML(), source);
    root->SetNodeValue(u"");
    EXPECT_EQ(document.GetXML(), u"<a/>");

    NodePtr at(document.CreateNode(u"a"));
    const QorXMLNode top(*at);
    for (std::size_t i = 1; i < kDepth; ++i)
        at.reset(at->AppendNode(u"a", &document));
    at->SetNodeValue(u"x");
    EXPECT_EQ(top.GetXML(), source);
}

TEST(HostileXml, TakesLargeTexts) {
    const std::string large = repeated(repeated("abcdefghi", 100) + "&lt;", 11'000);
    QorXMLDocument document;
    const QorXMLNode* root =
        load(document, CStringW::FromUtf8("<a b='" + large + "'>" + large + "</a>"));
    ASSERT_NE(root, nullptr);
    CStringW value;
    EXPECT_TRUE(root->GetAttributeValue(u"b", value));
    EXPECT_EQ(value.GetLength(), 901 * 11'000);
    EXPECT_TRUE(value == root->GetNodeValue());
}

}  // namespace
