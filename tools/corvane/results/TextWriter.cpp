#include "results/TextWriter.h"

#include <unordered_map>
#include <utility>

#include "Table.h"
#include "Text.h"
#include "language/Messages.h"

namespace results {

namespace {

Tone toneOf(Verdict verdict) {
    switch (verdict) {
        case Verdict::Passed:
            return Tone::Good;
        case Verdict::Failed:
        case Verdict::Error:
            return Tone::Bad;
        case Verdict::NotRun:
        case Verdict::Waived:
            break;
    }
    return Tone::Doubtful;
}

CStringW severityText(const Severity& severity) {
    if (!severity.name.empty()) return wide(severity.name);
    CStringW number;
    number.Format(u"%d", static_cast<QorLong>(severity.number));
    return number;
}

/// What comes before a finding's message.
CStringW prefixOf(const Finding& finding) {
    if (finding.isNote) return tr("note: ");
    if (!finding.waiver) return {};
    if (finding.waiver->kind == Waiver::Kind::Baseline) return tr("known before: ");
    return tr("waived until {0} ({1}): ", finding.waiver->expires, finding.waiver->reason);
}

/// The texts of findings in their order, equal ones once with their number: a part has many equal
/// holes.
std::vector<std::pair<CStringW, QorLong>> textsOf(const std::vector<Finding>& findings) {
    std::vector<std::pair<CStringW, QorLong>> texts;
    std::unordered_map<std::string, std::size_t> places;
    for (const Finding& finding : findings) {
        const CStringW text = prefixOf(finding) + wide(finding.message);
        const auto [place, isNew] = places.try_emplace(text.ToUtf8(), texts.size());
        if (isNew)
            texts.emplace_back(text, 1);
        else
            ++texts[place->second].second;
    }
    return texts;
}

Table::Row rowOf(const RuleResult& rule) {
    Table::Row row{
        {wide(rule.name), wide(rule.category), severityText(rule.severity), wordOf(rule.verdict)},
        {},
        toneOf(rule.verdict)};
    for (const auto& [text, count] : textsOf(rule.findings)) {
        CStringW times;
        if (count > 1) times = u" " + tr("({0} times)", count);
        for (const CStringW& line : linesOf(text + times))
            row.lines.push_back(line);
    }
    for (const Remark& reason : rule.reasons)
        row.lines.push_back(wide(reason.shown));
    return row;
}

class TextWriter : public ResultWriter {
public:
    explicit TextWriter(Console& console) : console_(console) {}

    void begin(const RunInfo& info) override {
        severalParts_ = info.parts > 1;
        severalFiles_ = info.ruleFiles.size() > 1;
    }

    void add(const PartResult& part) override {
        if (severalParts_) console_.writeLine(wide(part.path), Tone::Heading);
        for (std::size_t first = 0; first < part.rules.size();)
            first = writeTable(part, first);
        ++parts_;
    }

    void end(const RunEnd& end) override {
        CStringW text;
        if (severalParts_) text = trCount({"{0} part", "{0} parts"}, parts_) + tr(", ");
        text += sumText(end.counts);
        console_.writeLine(end.interrupted ? tr("interrupted after {0}", text) : text);
    }

private:
    /// The rules of one file, from that place on. Gives the place after them.
    std::size_t writeTable(const PartResult& part, std::size_t first) {
        const std::string& file = part.rules[first].ruleFile;
        Table table({tr("Rule"), tr("Category"), tr("Severity"), tr("Result"), tr("Reason")});
        std::size_t at = first;
        for (; at < part.rules.size() && part.rules[at].ruleFile == file; ++at)
            table.add(rowOf(part.rules[at]));
        if (severalFiles_) console_.writeLine(wide(file), Tone::Heading);
        table.print(console_);
        console_.endLine();
        return at;
    }

    Console& console_;
    bool severalParts_ = false;
    bool severalFiles_ = false;
    std::int64_t parts_ = 0;
};

class PlainTextWriter : public ResultWriter {
public:
    explicit PlainTextWriter(std::ostream& out) : console_(out), writer_(console_) {}
    void begin(const RunInfo& info) override { writer_.begin(info); }
    void add(const PartResult& part) override { writer_.add(part); }
    void end(const RunEnd& end) override { writer_.end(end); }

private:
    Console console_;
    TextWriter writer_;
};

}  // namespace

CStringW wordOf(Verdict verdict) {
    constexpr Message kWords[] = {"passed", "failed", "error", "not run", "waived"};
    return tr(kWords[static_cast<int>(verdict)]);
}

CStringW sumText(const Counts& counts) {
    CStringW text = trCount({"{0} rule: ", "{0} rules: "}, counts.all()) +
                    trCount({"{0} passed", "{0} passed"}, counts.passed);
    if (counts.failed > 0) text += tr(", ") + trCount({"{0} failed", "{0} failed"}, counts.failed);
    if (counts.error > 0) text += tr(", ") + trCount({"{0} error", "{0} errors"}, counts.error);
    if (counts.notRun > 0) text += tr(", ") + tr("{0} not run", counts.notRun);
    if (counts.waived > 0) text += tr(", ") + trCount({"{0} waived", "{0} waived"}, counts.waived);
    return text;
}

std::unique_ptr<ResultWriter> makeTextWriter(Console& console) {
    return std::make_unique<TextWriter>(console);
}

std::unique_ptr<ResultWriter> makePlainTextWriter(std::ostream& out) {
    return std::make_unique<PlainTextWriter>(out);
}

}  // namespace results
