#include "doctor/Diagnosis.h"

#include <algorithm>

#include "Text.h"
#include "doctor/Places.h"

namespace {

// Columns of the longest word in front, "wrong", with the gap behind it.
constexpr std::size_t kGradeColumns = 7;
constexpr std::size_t kIndent = 2;
constexpr std::size_t kWidestSubject = 30;

CStringW blanks(std::size_t columns) {
    return CStringW(u' ', static_cast<int>(columns));
}

CStringW counted(int count, const char16_t* one, const char16_t* many) {
    CStringW text;
    text.Format(u"%d %s", count, count == 1 ? one : many);
    return text;
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
        note(subject, path + u" is no full path and depends on the working folder");
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
    const CStringW grade = good ? u"ok" : wrong ? u"wrong" : u"note";
    console.write(blanks(kIndent));
    console.write(grade, good ? Tone::Good : wrong ? Tone::Bad : Tone::Doubtful);
    console.write(blanks(kGradeColumns - displayWidth(grade)));
    console.write(line.subject);
    console.write(blanks(columns - displayWidth(line.subject) + kIndent));
    console.writeLine(line.text);
    if (!line.remedy.IsEmpty())
        console.writeLine(blanks(kIndent + kGradeColumns + columns + kIndent) + u"to mend: " +
                          line.remedy);
}

void Diagnosis::printSum(Console& console) const {
    const CStringW notes = notes_ > 0 ? u", " + counted(notes_, u"note", u"notes") : CStringW();
    if (isHealthy())
        console.writeLine(u"Nothing is wrong" + notes, Tone::Good);
    else
        console.writeLine(counted(faults_, u"fault", u"faults") + notes, Tone::Bad);
}
