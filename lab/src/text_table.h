// A table as the storcli tool lays it out: columns as wide as their widest
// cell, a blank after every cell (so rows end in a blank), and rules of
// hyphens exactly as long as a row.
#pragma once

#include <string>
#include <vector>

namespace lab {

struct Column {
    std::string heading;
    bool rightAligned = false;
};

class TextTable {
public:
    explicit TextTable(std::vector<Column> columns);

    void add_row(const std::vector<std::string>& cells);
    std::string rule() const;
    // Rule, headings, rule, rows, rule.
    std::vector<std::string> lines() const;

private:
    std::string format_row(const std::vector<std::string>& cells) const;
    std::vector<std::size_t> widths() const;

    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> rows_;
};

}  // namespace lab
