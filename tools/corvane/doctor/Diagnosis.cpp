#include "doctor/Diagnosis.h"

#include <algorithm>

#include "Text.h"
#include "doctor/Places.h"
#include "language/Messages.h"

namespace {

/// Between the word in front and what it is about.
constexpr std::size_t kGap = 2;

constexpr std::size_t kIndent = 2;
constexpr std::size_t kWidestSubject = 30;

CStringW blanks(std::size_t columns) {
    return CStringW(u' ', static_cast<int>(columns));
}

/// Columns of the longest word in front, with the gap after it.
std::size_t gradeColumns() {
    return std::max({displayWidth(tr("ok")), displayWidth(tr("wrong")), displayWidth(tr("note"))}) +
           kGap;
}

}  // namespace

void Diagnosis::section(std::u16string_view title) {
    lines_.push_back({Grade::Title, title, {}, {}});
}

void Diagnosis::good(const CStringW& subject, const CStringW& text) {
    lines_.push_back({Grade::Good, fitted(harmless(subject), kWidestSubject), text, {}});
}

void Diagnosis::note(const CStringW& subject, const CStringW& text) {
    ++notes_;
    lines_.push_back({Grade::Note, fitted(harmless(subject), kWidestSubject), text, {}});
}

void Diagnosis::wrong(const CStringW& subject, const CStringW& text, const CStringW& remedy) {
    ++faults_;
    lines_.push_back({Grade::Wrong, fitted(harmless(subject), kWidestSubject), text, remedy});
}

void Diagnosis::noteRelative(const CStringW& subject, const CStringW& path) {
    if (!path.IsEmpty() && placeOf(shownPath(path)).is_relative())
        note(subject, tr("{0} is no full path and depends on the working folder", path));
}

void Diagnosis::print(Console& console) const {
    std::size_t columns = 0;
    for (const Line& line : lines_)
        if (line.grade != Grade::Title) columns = std::max(columns, displayWidth(line.subject));
    for (const Line& line : lines_)
        printLine(line, columns, console);
    console.endLine();
    printSum(console);
}

void Diagnosis::printLine(const Line& line, std::size_t columns, Console& console) const {
    if (line.grade == Grade::Title) {
        if (&line != &lines_.front()) console.endLine();
        console.writeLine(line.subject, Tone::Heading);
        return;
    }
    const bool good = line.grade == Grade::Good;
    const bool wrong = line.grade == Grade::Wrong;
    const CStringW grade = good ? tr("ok") : wrong ? tr("wrong") : tr("note");
    console.write(blanks(kIndent));
    console.write(grade, good ? Tone::Good : wrong ? Tone::Bad : Tone::Doubtful);
    console.write(blanks(gradeColumns() - displayWidth(grade)));
    console.write(line.subject);
    console.write(blanks(columns - displayWidth(line.subject) + kIndent));
    console.writeLine(line.text);
    if (!line.remedy.IsEmpty())
        console.writeLine(blanks(kIndent + gradeColumns() + columns + kIndent) +
                          tr("to mend: {0}", line.remedy));
}

void Diagnosis::printSum(Console& console) const {
    const CStringW notes =
        notes_ > 0 ? tr(", ") + trCount({"{0} note", "{0} notes"}, notes_) : CStringW();
    if (isHealthy())
        console.writeLine(tr("Nothing is wrong") + notes, Tone::Good);
    else
        console.writeLine(trCount({"{0} fault", "{0} faults"}, faults_) + notes, Tone::Bad);
}
