#pragma once

#include <vector>

#include <corvane/text/CStringW.h>

#include "Console.h"

/// Rows of texts in columns as wide as their widest text. The last column is as wide as it likes
/// and may hold several lines.
class Table {
public:
    struct Row {
        std::vector<CStringW> cells;  ///< All columns but the last.
        std::vector<CStringW> lines;  ///< The last column.
        Tone tone = Tone::Plain;      ///< Of the last cell.
    };

    /// All columns but the last show at most `widestCell` columns of a text.
    explicit Table(std::vector<CStringW> headings, std::size_t widestCell = 40);

    void add(Row row);
    void print(Console& console) const;

private:
    void printLine(Console& console, const std::vector<CStringW>& cells, const CStringW& last,
                   Tone all, Tone lastCell) const;

    std::vector<CStringW> headings_;
    std::size_t widestCell_;
    std::vector<std::size_t> widths_;
    std::vector<Row> rows_;
};
