#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>

#include "Text.h"
#include "doctor/Checks.h"
#include "lint/LintFile.h"
#include "lint/LintWorker.h"

namespace {

/// What the checks of the index do not look at.
bool isOfText(const lint::Code* code) {
    const std::array codes{&lint::kScriptSyntax, &lint::kUnknownGlobal, &lint::kScriptEncoding,
                           &lint::kUnknownParam, &lint::kBadLibrary};
    return std::ranges::find(codes, code) != codes.end();
}

CStringW placeOf(const lint::Problem& problem) {
    CStringW text = CStringW::FromUtf8(problem.file);
    if (problem.place.line > 0) text.AppendFormat(u":%d", static_cast<int>(problem.place.line));
    return text;
}

void tell(Diagnosis& diagnosis, const CStringW& place, const lint::Problem& problem) {
    const std::string mend = problem.mend.empty() ? trUtf8(problem.code->mend) : problem.mend;
    diagnosis.wrong(lastName(place), place + u": " + CStringW::FromUtf8(problem.message),
                    CStringW::FromUtf8(mend));
}

}  // namespace

void checkScriptTexts(Diagnosis& diagnosis, const std::vector<CStringW>& moduleFolders) {
    for (const lint::Problem& problem : lint::Linter::checkSettings())
        diagnosis.wrong(tr("limits of scripts"),
                        tr("{0} and so counts as not set", problem.message),
                        CStringW::FromUtf8(problem.mend));
    std::vector<std::string> folders;
    std::ranges::transform(moduleFolders, std::back_inserter(folders), &CStringW::ToUtf8);
    for (const lint::Problem& problem : lint::LintProcess(std::move(folders), {}).checkIndex())
        if (isOfText(problem.code)) tell(diagnosis, placeOf(problem), problem);
}
