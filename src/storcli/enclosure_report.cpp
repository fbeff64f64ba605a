#include "storcli/StorcliExpander.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"
#include "platform/platform.h"
#include "run/run_state.h"

#include <memory>
#include <vector>

namespace {

const std::string PROPERTIES_KEY = "Properties :";
const std::string RULE = "----------";
// The table starts behind the second rule after "Properties :".
constexpr std::uint32_t RULES_BEFORE_TABLE = 2;

enum class TableState { before_table, between_rules, in_table, finished };

// Walks the report line by line and keeps the rows of the enclosure table.
class TableReader {
public:
    void read(const std::string& line)
    {
        switch (state_) {
        case TableState::before_table:
            before_table(line);
            break;
        case TableState::between_rules:
            between_rules(line);
            break;
        case TableState::in_table:
            in_table(line);
            break;
        case TableState::finished:
            break;
        }
    }

    bool finished() const { return state_ == TableState::finished; }
    const std::vector<std::string>& rows() const { return rows_; }

private:
    void before_table(const std::string& line)
    {
        logValue("line:", line);
        if (line.find(PROPERTIES_KEY) != std::string::npos)
            state_ = TableState::between_rules;
    }

    // A rule is found anywhere in its line here; the counter is never reset,
    // so a second "Properties :" can never lead into a table again.
    void between_rules(const std::string& line)
    {
        logValue("after properties, line:", line);
        if (line.find(RULE) == std::string::npos)
            return;
        ++rules_;
        if (rules_ == RULES_BEFORE_TABLE) {
            logMessage("enclouser line starts");
            state_ = TableState::in_table;
        }
    }

    // The closing rule must start in column 0; an indented or short one is
    // a row like any other.
    void in_table(const std::string& line)
    {
        logValue("line:", line);
        if (line.find(PROPERTIES_KEY) != std::string::npos) {
            state_ = TableState::between_rules;
        } else if (line.compare(0, RULE.size(), RULE) == 0) {
            logMessage("enclouser line end");
            state_ = TableState::finished;
        } else {
            rows_.push_back(line);
        }
    }

    TableState state_ = TableState::before_table;
    std::uint32_t rules_ = 0;
    std::vector<std::string> rows_;
};

// The first profile row whose product id occurs in the table row.
SupportProfile* matching_profile(const std::string& row)
{
    for (SupportProfile& profile : Profiles) {
        if (row.find(profile.productId) != std::string::npos)
            return &profile;
    }
    return nullptr;
}

void add_expander(const std::string& row, SupportProfile& profile, StorcliAdapter* adapter)
{
    logValue(" find ", profile.productId);
    const std::size_t version_start = row.find(profile.productId) + profile.productId.size();
    auto expander = std::make_unique<StorcliExpander>();
    expander->productId = profile.productId;
    expander->installedVersion = trim(row.substr(version_start));
    expander->profile = &profile;
    expander->adapterIndex = adapter->adapterIndex;
    expander->adapter = adapter;
    parse_expanderinfo_line(row, *expander);
    Expanders.push_back(expander.release());
}

}  // namespace

std::int32_t parse_eall_output(std::string file, StorcliAdapter* adapter)
{
    logBegin("parse_eall_output");
    logValue("Open file", file);
    platform::TextFile report(file);
    if (!report.is_open()) {
        logValue("open file fail file = ", file);
        logEnd("parse_eall_output");
        return 1;
    }

    TableReader table;
    std::string line;
    while (!table.finished() && report.read_line(line))
        table.read(line);

    logValue("expander lines num", static_cast<std::uint64_t>(table.rows().size()));
    for (const std::string& row : table.rows()) {
        logValue("Vector line:", row);
        if (SupportProfile* profile = matching_profile(row))
            add_expander(row, *profile, adapter);
    }
    logValue("Expander found:", static_cast<std::uint64_t>(Expanders.size()));
    logEnd("parse_eall_output");
    return 0;
}

void parse_expanderinfo_line(std::string line, StorcliExpander& expander)
{
    logBegin("parse_expanderinfo_line");
    line = trim(line);
    const std::size_t blank = line.find(' ');
    logValue("tmpPstr", static_cast<std::uint64_t>(blank));
    expander.enclosureId = trim(line.substr(0, blank));
    logEnd("parse_expanderinfo_line.");
}
