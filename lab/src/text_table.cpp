#include "text_table.h"

#include <algorithm>
#include <numeric>

#include "text.h"

namespace lab {

TextTable::TextTable(std::vector<Column> columns) : columns_(std::move(columns))
{
}

void TextTable::add_row(const std::vector<std::string>& cells)
{
    rows_.push_back(cells);
}

std::vector<std::size_t> TextTable::widths() const
{
    std::vector<std::size_t> widths;
    for (const Column& column : columns_)
        widths.push_back(column.heading.size());
    for (const auto& row : rows_)
        for (std::size_t i = 0; i < row.size() && i < widths.size(); ++i)
            widths[i] = std::max(widths[i], row[i].size());
    return widths;
}

std::string TextTable::format_row(const std::vector<std::string>& cells) const
{
    std::vector<std::size_t> width = widths();
    std::string line;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        std::string cell = i < cells.size() ? cells[i] : std::string();
        line +=
            (columns_[i].rightAligned ? pad_left(cell, width[i]) : pad_right(cell, width[i])) + ' ';
    }
    return line;
}

std::string TextTable::rule() const
{
    std::vector<std::size_t> width = widths();
    return std::string(std::accumulate(width.begin(), width.end(), width.size()), '-');
}

std::vector<std::string> TextTable::lines() const
{
    std::vector<std::string> headings;
    for (const Column& column : columns_)
        headings.push_back(column.heading);
    std::vector<std::string> lines = {rule(), format_row(headings), rule()};
    for (const auto& row : rows_)
        lines.push_back(format_row(row));
    lines.push_back(rule());
    return lines;
}

}  // namespace lab
