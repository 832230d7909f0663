#include "Table.h"

#include <algorithm>
#include <utility>

#include "Text.h"

namespace {

constexpr std::size_t kWidestLine = 400;
constexpr std::size_t kGap = 2;

}  // namespace

Table::Table(std::vector<CStringW> headings, std::size_t widestCell)
    : headings_(std::move(headings)), widestCell_(widestCell) {
    for (CStringW& heading : headings_)
        heading = fitted(harmless(heading), widestCell_);
    for (std::size_t i = 0; i + 1 < headings_.size(); ++i)
        widths_.push_back(displayWidth(headings_[i]));
}

void Table::add(Row row) {
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
        row.cells[i] = fitted(harmless(row.cells[i]), widestCell_);
        widths_[i] = std::max(widths_[i], displayWidth(row.cells[i]));
    }
    for (CStringW& line : row.lines)
        line = fitted(harmless(line), kWidestLine);
    rows_.push_back(std::move(row));
}

void Table::printLine(Console& console, const std::vector<CStringW>& cells, const CStringW& last,
                      Tone all, Tone lastCell) const {
    // Blanks come before a cell and not after it, so that no line ends in blanks.
    std::size_t gap = 0;
    for (std::size_t i = 0; i < widths_.size(); ++i) {
        const CStringW cell = i < cells.size() ? cells[i] : CStringW();
        if (!cell.IsEmpty()) {
            console.write(CStringW(u' ', static_cast<int>(gap)));
            console.write(cell, i + 1 == widths_.size() ? lastCell : all);
            gap = 0;
        }
        gap += widths_[i] - displayWidth(cell) + kGap;
    }
    if (!last.IsEmpty()) {
        console.write(CStringW(u' ', static_cast<int>(gap)));
        console.write(last, all);
    }
    console.endLine();
}

void Table::print(Console& console) const {
    const std::vector<CStringW> names(headings_.begin(), headings_.end() - 1);
    printLine(console, names, headings_.back(), Tone::Heading, Tone::Heading);
    for (const Row& row : rows_) {
        const CStringW first = row.lines.empty() ? CStringW() : row.lines.front();
        printLine(console, row.cells, first, Tone::Plain, row.tone);
        for (std::size_t i = 1; i < row.lines.size(); ++i)
            printLine(console, {}, row.lines[i], Tone::Plain, Tone::Plain);
    }
}
