// Edits and queries by the interface, many of them on one tree. The times of two sizes show how an
// operation grows: near ten times as long for ten times as many.
#include <benchmark/benchmark.h>
#include <memory>
#include <string>
#include <vector>

#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/QorXMLNode.h>
#include <corvane/xml/QorXMLNodeList.h>

#ifdef CORVANE_BENCH_PUGIXML
#include <pugixml.hpp>
#endif

namespace {

using Node = std::unique_ptr<QorXMLNode>;

CStringW numbered(const char16_t* name, std::int64_t number) {
    CStringW text(name);
    text.AppendFormat(u"%d", static_cast<int>(number));
    return text;
}

Node query(const Node& node, const char16_t* path) {
    return Node(node->SelectSingleNode(path));
}

constexpr int kParametersOfRule = 3;

// A rule with a name and parameters with one value each.
void appendRule(const Node& root, QorXMLDocument& document, std::int64_t number) {
    const Node rule(root->AppendNode(u"Rule", &document));
    rule->AddAttribute(u"Name", numbered(u"Wall ", number));
    for (int i = 0; i < kParametersOfRule; ++i) {
        const Node parameter(rule->AppendNode(u"Parameter", &document));
        Node(parameter->AppendNode(u"Value", &document))->SetNodeValue(u"2.5");
    }
}

Node rules(QorXMLDocument& document, std::int64_t count) {
    Node root(document.CreateNode(u"Rules"));
    document.AppendNode(root.get());
    for (std::int64_t i = 0; i < count; ++i)
        appendRule(root, document, i);
    return root;
}

// Each rule is asked for what it has, and changed.
void queryAndChange(benchmark::State& state) {
    for (auto _ : state) {
        QorXMLDocument document;
        const Node root = rules(document, state.range(0));
        const std::unique_ptr<QorXMLNodeList> list(root->GetChildNodes());
        for (QorLong i = 0; i < list->GetSize(); ++i) {
            const std::unique_ptr<QorXMLNodeList> values(
                (*list)[i]->GetNodeList(u"Parameter/Value[. > 2]"));
            (*values)[0]->SetNodeValue(u"3");
            (*list)[i]->AddAttribute(u"Status", u"1");
        }
    }
}

// The same from the document's top, which stops at the first match.
void queryFromTop(benchmark::State& state) {
    for (auto _ : state) {
        QorXMLDocument document;
        const Node root = rules(document, state.range(0));
        for (std::int64_t i = 0; i < state.range(0); ++i)
            query(root, u"/Rules/Rule/Parameter[Value]")->AddAttribute(u"Status", u"1");
    }
}

void queryFreeElement(benchmark::State& state) {
    QorXMLDocument document;
    const Node root(document.CreateNode(u"Rules"));
    for (std::int64_t i = 0; i < state.range(0); ++i)
        appendRule(root, document, i);
    for (auto _ : state) {
        for (std::int64_t i = 0; i < state.range(0); ++i)
            benchmark::DoNotOptimize(query(root, u"Rule/Parameter/Value"));
    }
}

void addAttributes(benchmark::State& state) {
    QorXMLDocument document;
    for (auto _ : state) {
        const Node element(document.CreateNode(u"Rule"));
        for (std::int64_t i = 0; i < state.range(0); ++i)
            element->AddAttribute(numbered(u"Attribute", i), u"12.5");
    }
}

void getAttributes(benchmark::State& state) {
    QorXMLDocument document;
    const Node element(document.CreateNode(u"Rule"));
    for (std::int64_t i = 0; i < state.range(0); ++i)
        element->AddAttribute(numbered(u"Attribute", i), u"12.5");
    CStringW value;
    for (auto _ : state) {
        for (std::int64_t i = 0; i < state.range(0); ++i)
            benchmark::DoNotOptimize(element->GetAttributeValue(numbered(u"Attribute", i), value));
    }
}

// Written by the interface: the names of a source are limited, those of a tree are not.
void distinctNames(benchmark::State& state) {
    for (auto _ : state) {
        QorXMLDocument document;
        const Node root(document.CreateNode(u"Rules"));
        for (std::int64_t i = 0; i < state.range(0); ++i)
            Node(root->AppendNode(numbered(u"Name", i), &document));
    }
}

#ifdef CORVANE_BENCH_PUGIXML
void appendRule(pugi::xml_node root, std::int64_t number) {
    pugi::xml_node rule = root.append_child("Rule");
    rule.append_attribute("Name") = ("Wall " + std::to_string(number)).c_str();
    for (int i = 0; i < kParametersOfRule; ++i)
        rule.append_child("Parameter").append_child("Value").text() = "2.5";
}

pugi::xml_node rules(pugi::xml_document& document, std::int64_t count) {
    pugi::xml_node root = document.append_child("Rules");
    for (std::int64_t i = 0; i < count; ++i)
        appendRule(root, i);
    return root;
}

void queryAndChangePugixml(benchmark::State& state) {
    for (auto _ : state) {
        pugi::xml_document document;
        const pugi::xml_node root = rules(document, state.range(0));
        for (pugi::xml_node rule : root.children()) {
            const pugi::xpath_node_set values = rule.select_nodes("Parameter/Value[. > 2]");
            values[0].node().text() = "3";
            rule.append_attribute("Status") = "1";
        }
    }
}

void queryFromTopPugixml(benchmark::State& state) {
    for (auto _ : state) {
        pugi::xml_document document;
        const pugi::xml_node root = rules(document, state.range(0));
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            pugi::xml_node found = root.select_node("/Rules/Rule/Parameter[Value]").node();
            if (!found.attribute("Status")) found.append_attribute("Status") = "1";
        }
    }
}

void addAttributesPugixml(benchmark::State& state) {
    for (auto _ : state) {
        pugi::xml_document document;
        pugi::xml_node element = document.append_child("Rule");
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            const std::string name = "Attribute" + std::to_string(i);
            if (!element.attribute(name.c_str())) element.append_attribute(name.c_str()) = "12.5";
        }
    }
}
#endif

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(queryAndChange)->Name("query and change in turn:corvane")->Apply(sizes);
BENCHMARK(queryFromTop)->Name("first match from the top:corvane")->Apply(sizes);
BENCHMARK(queryFreeElement)->Name("query a free element:corvane")->Apply(sizes);
BENCHMARK(addAttributes)->Name("add attributes:corvane")->Apply(sizes);
BENCHMARK(getAttributes)->Name("get attributes:corvane")->Apply(sizes);
BENCHMARK(distinctNames)
    ->Name("distinct names:corvane")
    ->Arg(30'000)
    ->Arg(300'000)
    ->Unit(benchmark::kMicrosecond);
#ifdef CORVANE_BENCH_PUGIXML
BENCHMARK(queryAndChangePugixml)->Name("query and change in turn:pugixml")->Apply(sizes);
// It finds all matches before it gives the first one: ten times as many take minutes.
BENCHMARK(queryFromTopPugixml)
    ->Name("first match from the top:pugixml")
    ->Arg(1'000)
    ->Iterations(1)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(addAttributesPugixml)->Name("add attributes:pugixml")->Apply(sizes);
#endif

}  // namespace
