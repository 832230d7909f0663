#include "language/Messages.h"
#include "results/HtmlWriter.h"
#include "results/JUnitWriter.h"
#include "results/ResultJson.h"
#include "results/ResultWriter.h"
#include "results/SarifWriter.h"
#include "results/TextWriter.h"

namespace results {

namespace {

std::unique_ptr<ResultWriter> makeReport(std::ostream& out) {
    ReportTexts texts;
    for (const language::Translation& entry : language::kReportTexts)
        texts.emplace(entry.texts[0], language::textOf(entry, {}).ToUtf8());
    return makeHtmlWriter(out, std::move(texts));
}

// In the order of the help.
constexpr Format kFormats[] = {{"text", makePlainTextWriter},
                               {"json", makeJsonWriter},
                               {"sarif", makeSarifWriter},
                               {"junit", makeJUnitWriter},
                               {"html", makeReport, true}};

}  // namespace

std::span<const Format> allFormats() {
    return kFormats;
}

const Format* findFormat(std::string_view name) {
    for (const Format& format : kFormats)
        if (format.name == name) return &format;
    return nullptr;
}

}  // namespace results
