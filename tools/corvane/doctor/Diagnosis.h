#pragma once

#include <string_view>
#include <vector>

#include <corvane/text/CStringW.h>

#include "Console.h"

/// What was found, in sections, one line for each thing that was looked at.
class Diagnosis {
public:
    /// Begins a section; what follows belongs to it.
    void section(std::u16string_view title);

    /// Something is as it should be.
    void good(const CStringW& subject, const CStringW& text);
    /// Something is not set up, which need not be a fault.
    void note(const CStringW& subject, const CStringW& text);
    /// Something is wrong; `remedy` says how to mend it.
    void wrong(const CStringW& subject, const CStringW& text, const CStringW& remedy);

    /// Notes a path of the user's that depends on the working folder; an empty one does not.
    void noteRelative(const CStringW& subject, const CStringW& path);

    bool isHealthy() const { return faults_ == 0; }
    void print(Console& console) const;

private:
    enum class Grade { Title, Good, Note, Wrong };
    struct Line {
        Grade grade;
        CStringW subject;
        CStringW text;
        CStringW remedy;
    };

    void printLine(const Line& line, std::size_t columns, Console& console) const;
    void printSum(Console& console) const;

    std::vector<Line> lines_;
    int faults_ = 0;
    int notes_ = 0;
};
