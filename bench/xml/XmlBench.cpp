// Load and serialise of this layer beside bare libxml2 on the same bytes.
#include <benchmark/benchmark.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <string>

#include <corvane/xml/QorXMLDocument.h>

#include "xml/Access.h"
#include "xml/Document.h"
#include "xml/ElementAccess.h"
#include "xml/Serializer.h"

namespace {

constexpr int kParametersOfRule = 8;

std::string ruleFile(std::int64_t rules) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Rules>\n";
    for (std::int64_t i = 0; i < rules; ++i) {
        const std::string number = std::to_string(i);
        text += "  <Rule Name=\"Wall thickness " + number +
                "\" Status=\"0\" LifeStatus=\"1\" Description=\"Checks thin walls &amp; ribs\" "
                "Source=\"wallrules\" Module=\"Walls\" File=\"wallrules.dll\" Severity=\"2\" "
                "Category=\"Plastics\">\n";
        for (int k = 0; k < kParametersOfRule; ++k) {
            const std::string type = std::to_string(5000 + k);
            text += "    <Parameter Name=\"Minimum wall " + type + "\" Type=\"" + type +
                    "\" Status=\"1\">\n      <Operator>2</Operator>\n"
                    "      <ParameterType>0</ParameterType>\n      <Value>2.500000</Value>\n"
                    "      <Value>Stahl, geh\xC3\xA4rtet</Value>\n"
                    "      <Remarks>as agreed with the supplier</Remarks>\n    </Parameter>\n";
        }
        text += "  </Rule>\n";
    }
    return text + "</Rules>\n";
}

// A rule file on the disk, gone with the benchmark.
class Source {
public:
    explicit Source(std::int64_t rules)
        : bytes_(ruleFile(rules)),
          path_(std::filesystem::temp_directory_path() /
                ("corvane-bench-" + std::to_string(rules) + ".xml")) {
        std::ofstream(path_, std::ios::binary)
            .write(bytes_.data(), static_cast<std::streamsize>(bytes_.size()));
    }
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source() { std::filesystem::remove(path_); }

    const std::string& bytes() const { return bytes_; }
    CStringW path() const { return CStringW::FromUtf8(path_.string()); }
    void count(benchmark::State& state) const {
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes_.size()));
    }

private:
    std::string bytes_;
    std::filesystem::path path_;
};

struct XmlDocDeleter {
    void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
};
using XmlDoc = std::unique_ptr<xmlDoc, XmlDocDeleter>;

XmlDoc bareTree(const std::string& bytes) {
    return XmlDoc(xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr,
                                XML_PARSE_HUGE | XML_PARSE_NONET));
}

void loadFile(benchmark::State& state) {
    const Source source(state.range(0));
    for (auto _ : state) {
        QorXMLDocument document;
        benchmark::DoNotOptimize(document.LoadFromFile(source.path()));
    }
    source.count(state);
}

void loadBare(benchmark::State& state) {
    const Source source(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(bareTree(source.bytes()));
    }
    source.count(state);
}

void serialise(benchmark::State& state) {
    const Source source(state.range(0));
    QorXMLDocument document;
    document.LoadFromFile(source.path());
    for (auto _ : state) {
        std::size_t size = 0;
        corvane::xml::serializeFile(corvane::xml::Access::document(document)->tree(),
                                    [&size](std::string_view piece) {
                                        size += piece.size();
                                        return true;
                                    });
        benchmark::DoNotOptimize(size);
    }
    source.count(state);
}

void serialiseBare(benchmark::State& state) {
    const Source source(state.range(0));
    const XmlDoc document = bareTree(source.bytes());
    for (auto _ : state) {
        xmlChar* text = nullptr;
        int length = 0;
        xmlDocDumpMemory(document.get(), &text, &length);
        benchmark::DoNotOptimize(text);
        xmlFree(text);
    }
    source.count(state);
}

// What a reader of rules does: every parameter by its number, every value.
void walk(benchmark::State& state) {
    const Source source(state.range(0));
    QorXMLDocument document;
    const corvane::xml::ElementView root(*document.LoadFromFile(source.path()));
    std::u16string buffer;
    for (auto _ : state) {
        std::size_t units = 0;
        for (const auto rule : corvane::xml::ChildrenNamed(root, u"Rule")) {
            for (const auto parameter : corvane::xml::ChildrenNamed(rule, u"Parameter")) {
                units += parameter.attribute(u"Type")->size();
                for (const auto value : corvane::xml::ChildrenNamed(parameter, u"Value"))
                    units += value.text(buffer).size();
            }
        }
        benchmark::DoNotOptimize(units);
    }
    source.count(state);
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10)->Arg(1'000)->Arg(20'000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(loadFile)->Name("load a file:corvane")->Apply(sizes);
BENCHMARK(loadBare)->Name("load a file:libxml2")->Apply(sizes);
BENCHMARK(serialise)->Name("serialise:corvane")->Apply(sizes);
BENCHMARK(serialiseBare)->Name("serialise:libxml2")->Apply(sizes);
BENCHMARK(walk)->Name("walk:corvane")->Apply(sizes);

}  // namespace
