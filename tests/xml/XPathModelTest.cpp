// Random queries on random documents, answered by this library and by that of the parser.

#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>
#include <random>

#include "XmlFixture.h"

namespace {

class Source {
public:
    explicit Source(unsigned seed) : random_(seed) {}

    std::size_t below(std::size_t limit) { return random_() % limit; }
    bool once(std::size_t in) { return below(in) == 0; }
    template <std::size_t Size>
    std::string any(const char* const (&choices)[Size]) {
        return choices[below(Size)];
    }

    // Each element has a number by which both sides know it.
    std::string element(int depth) {
        static const char* const names[] = {"a", "b", "c", "p:a"};
        static const char* const values[] = {"1", "2", "x", "1.5", ""};
        const std::string name = any(names);
        std::string text = "<" + name + " n='" + std::to_string(++elements) + "'";
        if (once(2)) text += " i='" + any(values) + "'";
        if (once(3)) text += " p:j='" + any(values) + "'";
        if (once(6)) text += " xml:lang='en-GB'";
        if (once(4)) text += " xml:id='k" + std::to_string(elements) + "'";
        text += ">";
        for (std::size_t children = depth == 0 ? 0 : 1 + below(5); children > 0; --children)
            text += content(depth - 1);
        return text + "</" + name + ">";
    }

    std::string path(int depth) {
        static const char* const starts[] = {
            "", "", "", "/", "//", "./", "../", ".//", "id('k2 k3  k5')/"};
        static const char* const separators[] = {"/", "/", "//"};
        std::string text = any(starts) + step(depth);
        for (std::size_t steps = below(3); steps > 0; --steps)
            text += any(separators) + step(depth);
        if (depth > 0 && once(8)) text += " | " + path(depth - 1);
        if (depth > 0 && once(8)) text = "(" + text + ")" + predicate(depth - 1);
        return text;
    }

    int elements = 0;

private:
    std::string content(int depth) {
        static const char* const others[] = {
            "1",       "2.5x",    "x y",           "<!--1-->",
            "<?t u?>", "<?v 2?>", "<![CDATA[1]]>", "\xF0\x9F\x98\x80"};
        return once(2) ? any(others) : element(depth);
    }

    std::string step(int depth) {
        static const char* const axes[] = {
            "ancestor",  "ancestor-or-self",  "child",  "descendant", "descendant-or-self",
            "following", "following-sibling", "parent", "preceding",  "preceding-sibling",
            "self"};
        static const char* const tests[] = {"*",
                                            "a",
                                            "b",
                                            "p:a",
                                            "p:*",
                                            "node()",
                                            "text()",
                                            "comment()",
                                            "node()",
                                            "processing-instruction()",
                                            "processing-instruction('t')"};
        static const char* const attributes[] = {"@i", "@*", "@p:j", "attribute::node()", "@n"};
        if (once(8)) return any(attributes) + predicates(depth);
        if (once(3)) return any(tests) + predicates(depth);
        if (once(8)) return "..";
        return any(axes) + "::" + any(tests) + predicates(depth);
    }

    std::string predicates(int depth) {
        std::string text;
        while (depth > 0 && once(3))
            text += predicate(depth - 1);
        return text;
    }

    std::string predicate(int depth) {
        static const char* const places[] = {"1",
                                             "2",
                                             "last()",
                                             "position() > 1",
                                             "last() - 1",
                                             "position() mod 2 = 1",
                                             "not(position() = last())"};
        return "[" + (once(2) ? any(places) : truth(depth)) + "]";
    }

    std::string truth(int depth) {
        static const char* const relations[] = {" = ", " != ", " < ", " <= ", " > ", " >= "};
        static const char* const flags[] = {"true()", "false()", "lang('en')", "boolean(@i)"};
        switch (below(7)) {
            case 0:
                return path(depth > 0 ? depth - 1 : 0);
            case 1:
                return "not(" + path(0) + ")";
            case 2:
                return number() + any(relations) + number();
            case 3:
                return text() + any(relations) + text();
            case 4:
                return path(0) + any(relations) + (once(2) ? path(0) : text());
            case 5:
                return number() + any(relations) + path(0);
            default:
                if (depth == 0) return any(flags);
                return truth(depth - 1) + (once(2) ? " and " : " or ") + truth(depth - 1) +
                       (once(3) ? " = " + any(flags) : "");
        }
    }

    std::string number() {
        static const char* const numbers[] = {"1",          "2",
                                              "1.5",        ".5",
                                              "-1",         "- -2",
                                              "count(*)",   "sum(.//@i)",
                                              "number(@i)", "string-length()",
                                              "floor(@i)",  "ceiling(@i)",
                                              "round(@i)",  "number()",
                                              "position()", "count(..//*)",
                                              "1 div 0",    "0 div 0",
                                              "@i * 2 + 1", "7 mod -3"};
        return any(numbers);
    }

    std::string text() {
        static const char* const texts[] = {"'1'",
                                            "\"x\"",
                                            "string()",
                                            "string(@i)",
                                            "name()",
                                            "local-name()",
                                            "name(..)",
                                            "concat(@i, 'x', @n)",
                                            "substring(., 2, 1)",
                                            "substring('12345', 1.5, 2.6)",
                                            "substring('1234', 0)",
                                            "substring-before(., ' ')",
                                            "substring-after(., 'x')",
                                            "normalize-space(' a  b ')",
                                            "normalize-space()",
                                            "translate(., 'x1', 'y')",
                                            "string(1 div 3)",
                                            "string(-0.25)",
                                            "string(count(//*) * 100)",
                                            "string(starts-with(., '1'))",
                                            "string(contains(., 'y'))",
                                            "string(0.1 + 0.2)"};
        return any(texts);
    }

    std::mt19937 random_;
};

struct Free {
    void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
    void operator()(xmlXPathContextPtr context) const { xmlXPathFreeContext(context); }
    void operator()(xmlXPathObjectPtr result) const { xmlXPathFreeObject(result); }
};

const xmlChar* chars(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

class Model {
public:
    explicit Model(const std::string& source)
        : document_(xmlReadMemory(source.data(), static_cast<int>(source.size()), nullptr, nullptr,
                                  XML_PARSE_NOCDATA)),
          context_(xmlXPathNewContext(document_.get())) {
        xmlXPathRegisterNs(context_.get(), chars("p"), chars("urn:p"));
    }

    // The numbers of the elements found in order, "-" for any other node.
    std::string answer(const std::string& from, const std::string& query) {
        context_->node = xmlDocGetRootElement(document_.get());
        const std::unique_ptr<xmlXPathObject, Free> start(
            xmlXPathEval(chars(from), context_.get()));
        context_->node = start->nodesetval->nodeTab[0];
        const std::unique_ptr<xmlXPathObject, Free> found(
            xmlXPathEval(chars(query), context_.get()));
        if (!found || found->type != XPATH_NODESET) return "refused";
        std::string text;
        xmlXPathNodeSetSort(found->nodesetval);
        const int size = found->nodesetval ? found->nodesetval->nodeNr : 0;
        for (int i = 0; i < size; ++i) {
            const xmlNodePtr node = found->nodesetval->nodeTab[i];
            xmlChar* number =
                node->type == XML_ELEMENT_NODE ? xmlGetNoNsProp(node, chars("n")) : nullptr;
            text += number ? " " + std::string(reinterpret_cast<const char*>(number)) : " -";
            xmlFree(number);
        }
        return text;
    }

private:
    std::unique_ptr<xmlDoc, Free> document_;
    std::unique_ptr<xmlXPathContext, Free> context_;
};

std::string answer(const QorXMLNode& from, const std::string& query) {
    const CStringW wide = CStringW::FromUtf8(query);
    std::string text;
    try {
        const ListPtr found(from.GetNodeList(wide));
        for (QorLong i = 0; i < found->GetSize(); ++i) {
            const QorXMLNode& node = *(*found)[i];
            CStringW number(u"-");
            if (!node.GetNodeName().IsEmpty()) node.GetAttributeValue(u"n", number);
            text += " " + number.ToUtf8();
        }
    } catch (const _com_error&) {
        return "refused";
    }
    const NodePtr first(from.GetNodeFromXPath(wide));
    EXPECT_EQ(first != nullptr, !text.empty()) << query;
    if (first && !first->GetNodeName().IsEmpty()) {
        CStringW number;
        first->GetAttributeValue(u"n", number);
        EXPECT_EQ(text.substr(0, text.find(' ', 1)), " " + number.ToUtf8()) << query;
    }
    return text;
}

TEST(XPathModel, AnswersLikeTheParsersOwnEvaluator) {
    int answered = 0;
    for (unsigned seed = 0; seed < 60; ++seed) {
        Source source(seed);
        const std::string text = "<!--0--><p:r xmlns:p='urn:p' n='0'>" + source.element(4) + "1" +
                                 source.element(3) + "</p:r><?e f?>";
        QorXMLDocument document;
        const QorXMLNode* root = load(document, CStringW::FromUtf8(text));
        ASSERT_NE(root, nullptr) << text;
        Model model(text);
        for (int i = 0; i < 40; ++i) {
            const std::string number =
                std::to_string(source.below(static_cast<std::size_t>(source.elements) + 1));
            const std::string from = "//*[@n='" + number + "']";
            const NodePtr start(root->SelectSingleNode(CStringW::FromUtf8(from)));
            ASSERT_NE(start, nullptr);
            const std::string query = source.path(2);
            const std::string expected = model.answer(from, query);
            answered += !expected.empty();
            ASSERT_EQ(answer(*start, query), expected) << query << " at " << number << "\n" << text;
        }
    }
    EXPECT_GT(answered, 500);
}

}  // namespace
