// Loads, reads, writes and saves rule files, beside what other parsers do with the same bytes:
// bare, and below code written by hand for the rules of this benchmark.

#include <benchmark/benchmark.h>
#include <filesystem>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <string>
#include <vector>

#include <corvane/rules/CQorRule.h>
#include <corvane/xml/CurrentDocument.h>
#include <corvane/xml/QorXMLDocument.h>
#include <corvane/xml/QorXMLNode.h>
#include <corvane/xml/XMLFault.h>

#include "../Memory.h"
#include "PeerRule.h"

namespace {

class WallRule : public CQorRule {
public:
    WallRule() { WallRule::InitializeParamStorage(); }

    void InitializeParamStorage() override {
        add(Type_Int, 1);
        add(Type_Double, 2);
        add(Type_Bool, 3);
        add(Type_CStringPtr, 4);
        add(Type_ColorRef, 5);
        add(Type_CustomRuleData, 6, QorParamType_Attributes);
    }
    QorLong Execute(QORICadSys*, const CQorData*&, QORResultSet*&) const override { return 0; }
    void PopulateParametersFromXML(QorXMLNode* node) override {
        CQorRule::PopulateParametersFromXML(node);
    }
    QorXMLNode* GetXML() override { return CQorRule::GetXML(); }
    void RunRule() override {}
    void UpdateRule(const RuleUnitSystemStructure*, const RuleUnitSystemStructure*) override {}
    bool UpdateRule(CQorRule* target) override { return CQorRule::UpdateRule(target); }
    void EditRule() override {}

    void setValues(int number) {
        m_csRuleName.Format(u"Minimum wall %d", number);
        m_csRuleDescription = u"Checks that no wall is thinner than the mould & machine allow";
        m_csRuleSource = u"Guideline \"Plastics\", table 4";
        m_csRuleModuleName = u"Injection moulding";
        m_csRuleFileName = u"C:\\Rules\\moulding.dll";
        m_lRuleSeverity = number % 4;
        SetRuleCategory(QORRuleCategory_1);
        GetIntItem(1)->m_Values.Add(number);
        for (int i = 0; i < 3; ++i)
            GetDoubleItem(2)->m_Values.Add(number + i / 8.0);
        GetBoolItem(3)->m_Values.Add(number % 2 == 0);
        GetCStringPtrItem(4)->m_Values.Add(new CStringW(u"Polypropylene"));
        GetCStringPtrItem(4)->m_Values.Add(new CStringW(u"Polyamide 6.6 <GF30>"));
        GetColorRefItem(5)->m_Values.Add(0xFF8000);
        auto record = std::make_unique<QORCustomRuleData>();
        for (const char16_t* const text : {u"upper", u"12.5", u"mm"})
            record->Add(text);
        static_cast<CQorParameter<QORCustomRuleData*>*>(FindParameterInArray(6)->m_pParameter)
            ->m_Values.Add(record.release());
    }

protected:
    void add(Type_e kind, QorLong id, QorParamType_e paramType = QorParamType_Plain) {
        m_Parameters.Add(
            CreateParamStorageObject(kind, id, QorOperator_Default, paramType, true, false));
    }
};

std::string fileName(const char* what) {
    return (std::filesystem::temp_directory_path() / what).string();
}

void makeDocument(QorXMLDocument& document, std::vector<WallRule>& rules) {
    SetXMLDoc(&document);
    const std::unique_ptr<QorXMLNode> root(document.CreateNode(u"Rules"));
    document.AppendNode(root.get());
    for (WallRule& rule : rules)
        root->AppendNode(std::unique_ptr<QorXMLNode>(rule.GetXML()).get());
    SetXMLDoc(nullptr);
}

// A rule file of the size that a benchmark asks for.
class RuleFile {
public:
    explicit RuleFile(const benchmark::State& state)
        : rules(static_cast<std::size_t>(state.range(0))) {
        for (std::size_t i = 0; i < rules.size(); ++i)
            rules[i].setValues(static_cast<int>(i));
        QorXMLDocument document;
        makeDocument(document, rules);
        corvane::SaveXML(document, CStringW::FromUtf8(path));
        bytes = fileBytes(path);
    }
    RuleFile(const RuleFile&) = delete;
    RuleFile& operator=(const RuleFile&) = delete;
    ~RuleFile() { std::filesystem::remove(path); }

    void report(benchmark::State& state) const {
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
        state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(rules.size()));
    }

    std::vector<WallRule> rules;
    const std::string path = fileName("corvane-bench-rules.xml");
    std::string bytes;
};

void Load(benchmark::State& state) {
    const RuleFile file(state);
    for (auto _ : state) {
        QorXMLDocument document;
        benchmark::DoNotOptimize(document.LoadFromFile(CStringW::FromUtf8(file.path)));
    }
    file.report(state);
}

void Read(benchmark::State& state) {
    const RuleFile file(state);
    QorXMLDocument document;
    const QorXMLNode* const root = document.LoadFromFile(CStringW::FromUtf8(file.path));
    const std::unique_ptr<QorXMLNodeList> elements(root->GetChildNodes());
    for (auto _ : state) {
        std::vector<WallRule> rules(file.rules.size());
        for (std::size_t i = 0; i < rules.size(); ++i)
            rules[i].PopulateParametersFromXML((*elements)[static_cast<QorLong>(i)]);
        benchmark::DoNotOptimize(rules.data());
    }
    file.report(state);
}

void Write(benchmark::State& state) {
    RuleFile file(state);
    for (auto _ : state) {
        QorXMLDocument document;
        makeDocument(document, file.rules);
        benchmark::DoNotOptimize(&document);
    }
    file.report(state);
}

void Save(benchmark::State& state) {
    RuleFile file(state);
    QorXMLDocument document;
    makeDocument(document, file.rules);
    for (auto _ : state)
        benchmark::DoNotOptimize(corvane::SaveXML(document, CStringW::FromUtf8(file.path)));
    file.report(state);
}

xmlDocPtr parse(const std::string& bytes) {
    return xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr,
                         XML_PARSE_NONET | XML_PARSE_NOBLANKS | XML_PARSE_HUGE);
}

void LibxmlParse(benchmark::State& state) {
    const RuleFile file(state);
    for (auto _ : state)
        xmlFreeDoc(parse(file.bytes));
    file.report(state);
}

void LibxmlSerialise(benchmark::State& state) {
    const RuleFile file(state);
    const xmlDocPtr document = parse(file.bytes);
    for (auto _ : state) {
        xmlChar* text = nullptr;
        int size = 0;
        xmlDocDumpMemory(document, &text, &size);
        xmlFree(text);
    }
    xmlFreeDoc(document);
    file.report(state);
}

// The number of rules, while they and their document are both there.
std::size_t readRules(const std::string& path) {
    QorXMLDocument document;
    const QorXMLNode* const root = document.LoadFromFile(CStringW::FromUtf8(path));
    const std::unique_ptr<QorXMLNodeList> elements(root->GetChildNodes());
    std::vector<WallRule> rules(static_cast<std::size_t>(elements->GetSize()));
    for (std::size_t i = 0; i < rules.size(); ++i)
        rules[i].PopulateParametersFromXML((*elements)[static_cast<QorLong>(i)]);
    benchmark::DoNotOptimize(rules.data());
    return rules.size();
}

void LoadAndRead(benchmark::State& state) {
    const RuleFile file(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(readRules(file.path));
    file.report(state);
}

void WriteAndSave(benchmark::State& state) {
    RuleFile file(state);
    for (auto _ : state) {
        QorXMLDocument document;
        makeDocument(document, file.rules);
        benchmark::DoNotOptimize(corvane::SaveXML(document, CStringW::FromUtf8(file.path)));
    }
    file.report(state);
}

template <std::size_t (*Read)(const std::string&)>
void memoryOfReading(benchmark::State& state) {
    const RuleFile file(state);
    for (auto _ : state) {
        const double grown = bench::growth([&] { return Read(file.path) == file.rules.size(); });
        if (grown < 0) state.SkipWithError("failed");
        state.SetIterationTime(grown / static_cast<double>(file.rules.size()) / 1e9);
    }
    state.SetLabel("bytes");
}

template <PeerRules (*Read)(const std::string&)>
std::size_t countPeers(const std::string& path) {
    return Read(path).size();
}

class WideRule : public WallRule {
public:
    explicit WideRule(QorLong parameters) {
        for (QorLong id = 100; id < 100 + parameters; ++id)
            add(Type_Int, id);
    }
};

void GetParameters(benchmark::State& state) {
    const auto parameters = static_cast<QorLong>(state.range(0));
    const WideRule rule(parameters);
    for (auto _ : state) {
        for (QorLong id = 100; id < 100 + parameters; ++id)
            benchmark::DoNotOptimize(rule.GetIntItem(id));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The peers read what this library reads: as many rules with as many values.
template <PeerRules (*Read)(const std::string&)>
void PeerRead(benchmark::State& state) {
    const RuleFile file(state);
    for (auto _ : state) {
        const PeerRules rules = Read(file.path);
        if (rules.size() != file.rules.size() || rules.back().thicknesses.size() != 3 ||
            rules.back().records.size() != 1)
            state.SkipWithError("The peer has not read the rules");
        benchmark::DoNotOptimize(rules.data());
    }
    file.report(state);
}

void PeerEvents(benchmark::State& state) {
    const RuleFile file(state);
    for (auto _ : state)
        parseEvents(file.path);
    file.report(state);
}

#ifdef CORVANE_BENCH_PUGIXML
void PugixmlWrite(benchmark::State& state) {
    const RuleFile file(state);
    const PeerRules rules = readByPugixml(file.path);
    for (auto _ : state)
        writeByPugixml(rules, file.path);
    file.report(state);
}
#endif

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (const int rules : {10, 1'000, 20'000})
        benchmark->Arg(rules);
    benchmark->Unit(benchmark::kMillisecond);
}

void largeSizes(benchmark::internal::Benchmark* benchmark) {
    for (const int rules : {1'000, 20'000, 100'000})
        benchmark->Arg(rules);
    benchmark->Unit(benchmark::kMillisecond);
}

void processes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Apply(largeSizes)->UseManualTime()->Iterations(1);
}

BENCHMARK(Load)->Name("load:corvane")->Apply(sizes);
BENCHMARK(LibxmlParse)->Name("load:libxml2")->Apply(sizes);
BENCHMARK(Read)->Name("read the rules:corvane")->Apply(sizes);
BENCHMARK(Write)->Name("write the rules:corvane")->Apply(sizes);
BENCHMARK(Save)->Name("save:corvane")->Apply(sizes);
BENCHMARK(LibxmlSerialise)->Name("save:libxml2")->Apply(sizes);
BENCHMARK(LoadAndRead)->Name("load and read:corvane")->Apply(largeSizes);
BENCHMARK(PeerEvents)->Name("load and read:libxml2-events-only")->Apply(largeSizes);
BENCHMARK(PeerRead<readBySax>)->Name("load and read:libxml2-sax")->Apply(largeSizes);
BENCHMARK(memoryOfReading<readRules>)->Name("memory a rule:corvane")->Apply(processes);
BENCHMARK(memoryOfReading<countPeers<readBySax>>)
    ->Name("memory a rule:libxml2-sax, no tree")
    ->Apply(processes);
BENCHMARK(WriteAndSave)->Name("write and save:corvane")->Apply(sizes);
BENCHMARK(GetParameters)
    ->Name("get each parameter:corvane")
    ->Arg(1'000)
    ->Arg(10'000)
    ->Unit(benchmark::kMicrosecond);
#ifdef CORVANE_BENCH_EXPAT
BENCHMARK(PeerRead<readByExpat>)->Name("load and read:expat")->Apply(largeSizes);
#endif
#ifdef CORVANE_BENCH_PUGIXML
BENCHMARK(PeerRead<readByPugixml>)->Name("load and read:pugixml")->Apply(largeSizes);
BENCHMARK(memoryOfReading<countPeers<readByPugixml>>)
    ->Name("memory a rule:pugixml")
    ->Apply(processes);
BENCHMARK(PugixmlWrite)->Name("write and save:pugixml")->Apply(sizes);
#endif

}  // namespace
