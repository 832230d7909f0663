#include "results/JUnitWriter.h"

#include <iomanip>
#include <ostream>
#include <sstream>
#include <string>

namespace results {

namespace {

/// Text for XML 1.0: what it cannot carry becomes U+FFFD.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char unit : text) {
        const auto byte = static_cast<unsigned char>(unit);
        if (unit == '&')
            result += "&amp;";
        else if (unit == '<')
            result += "&lt;";
        else if (unit == '>')
            result += "&gt;";
        else if (unit == '"')
            result += "&quot;";
        else if (unit == '\n' || unit == '\t')
            result += unit == '\n' ? "&#10;" : "&#9;";
        else if (byte < 0x20)
            result += "\uFFFD";
        else
            result += unit;
    }
    // The two code points of three bytes that are no characters.
    for (const char* none : {"\uFFFE", "\uFFFF"})
        for (std::size_t at; (at = result.find(none)) != result.npos;)
            result.replace(at, 3, "\uFFFD");
    return result;
}

std::string attribute(const char* name, const std::string& text) {
    return std::string(" ") + name + "=\"" + escaped(text) + "\"";
}

std::string secondsText(double seconds) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::fixed << std::setprecision(6) << seconds;
    return text.str();
}

std::vector<std::string> textsOf(const std::vector<Remark>& remarks) {
    std::vector<std::string> texts;
    texts.reserve(remarks.size());
    for (const Remark& remark : remarks)
        texts.push_back(remark.text);
    return texts;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += (text.empty() ? "" : "\n") + line;
    return text;
}

/// What a reader should see of a rule: its findings, then its reasons.
std::vector<std::string> linesOf(const RuleResult& rule, bool withWaived) {
    std::vector<std::string> lines;
    for (const Finding& finding : rule.findings)
        if (withWaived || (!finding.waiver && !finding.isNote)) lines.push_back(finding.message);
    for (const Remark& reason : rule.reasons)
        lines.push_back(reason.text);
    return lines;
}

class JUnitWriter : public ResultWriter {
public:
    explicit JUnitWriter(std::ostream& out) : out_(out) {}

    void begin(const RunInfo& info) override {
        started_ = info.started.substr(0, info.started.find('Z'));
        out_ << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites"
             << attribute("name", info.tool) << ">\n";
    }

    void add(const PartResult& part) override {
        Counts counts;
        counts.add(part);
        double seconds = 0;
        for (const RuleResult& rule : part.rules)
            seconds += rule.seconds;
        out_ << "<testsuite" << attribute("name", part.path.empty() ? "rules" : part.path)
             << attribute("tests", std::to_string(counts.all()))
             << attribute("failures", std::to_string(counts.failed))
             << attribute("errors", std::to_string(counts.error))
             << attribute("skipped", std::to_string(counts.notRun))
             << attribute("time", secondsText(seconds)) << attribute("timestamp", started_)
             << ">\n";
        for (const RuleResult& rule : part.rules)
            write(rule);
        out_ << "</testsuite>\n";
    }

    void end(const RunEnd&) override { out_ << "</testsuites>\n"; }

private:
    void write(const RuleResult& rule) {
        out_ << "<testcase" << attribute("name", rule.name)
             << attribute("classname", rule.category.empty() ? rule.ruleFile : rule.category)
             << attribute("time", secondsText(rule.seconds)) << '>';
        switch (rule.verdict) {
            case Verdict::Failed:
                writeOutcome("failure", rule);
                break;
            case Verdict::Error:
                writeOutcome("error", rule);
                break;
            case Verdict::NotRun:
                out_ << "<skipped" << attribute("message", joined(textsOf(rule.reasons))) << "/>";
                break;
            case Verdict::Passed:
            case Verdict::Waived:
                writeRemarks(rule);
                break;
        }
        out_ << "</testcase>\n";
    }

    void writeOutcome(const char* element, const RuleResult& rule) {
        const std::vector<std::string> lines = linesOf(rule, false);
        out_ << '<' << element << attribute("message", lines.empty() ? "" : lines.front())
             << attribute("type", rule.severity.name.empty() ? std::to_string(rule.severity.number)
                                                             : rule.severity.name)
             << '>' << escaped(joined(lines)) << "</" << element << '>';
    }

    void writeRemarks(const RuleResult& rule) {
        const std::string text = joined(linesOf(rule, true));
        if (!text.empty()) out_ << "<system-out>" << escaped(text) << "</system-out>";
    }

    std::ostream& out_;
    std::string started_;
};

}  // namespace

std::unique_ptr<ResultWriter> makeJUnitWriter(std::ostream& out) {
    return std::make_unique<JUnitWriter>(out);
}

}  // namespace results
