#include "storcli/StorcliAdapter.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"
#include "platform/platform.h"

namespace {

// One key of the controller report and where its value goes.
struct ReportKey {
    const char* key;
    bool trimmed;
    std::string StorcliAdapter::*member;
    const char* log_name;
};

// Tried in this order; the first key found in a line settles it.
const ReportKey REPORT_KEYS[] = {
    {"Product Name = ", false, &StorcliAdapter::productName, "product name"},
    {"SubVendor Id = ", true, &StorcliAdapter::SVID, "SVID"},
    {"SubDevice Id = ", true, &StorcliAdapter::SDID, "SDID"},
    {"Driver Name =", true, &StorcliAdapter::driverName, "DRIVER_NAME: "},
};

void read_report_line(const std::string& line, StorcliAdapter& adapter)
{
    for (const ReportKey& key : REPORT_KEYS) {
        const std::size_t position = line.find(key.key);
        if (position == std::string::npos)
            continue;
        const std::string value = line.substr(position + std::char_traits<char>::length(key.key));
        adapter.*key.member = key.trimmed ? trim(value) : value;
        logValue(key.log_name, adapter.*key.member);
        return;
    }
}

}  // namespace

std::string build_show_command(std::string adapter_index, std::int32_t all)
{
    std::string command = ".\\storcli64.exe /c" + adapter_index + " show ";
    if (all != 0)
        command += "all ";
    return command;
}

std::int32_t parse_adapter_info(std::string file, StorcliAdapter& adapter)
{
    logBegin("parse_adapter_info");
    logValue("Open file", file);
    platform::TextFile report(file);
    if (!report.is_open()) {
        logValue("open file fail file = ", file);
        logEnd("parse_adapter_info");
        return 1;
    }
    std::string line;
    while (report.read_line(line)) {
        logValue("line:", line);
        read_report_line(line, adapter);
    }
    logEnd("parse_adapter_info");
    return 0;
}

void get_adapter_type(StorcliAdapter& adapter)
{
    logBegin("get_adapter_type");
    adapter.adapterType = ADAPTER_TYPE_RAID;
    std::uint32_t identified = 0;
    if (adapter.productName.find("HBA") != std::string::npos) {
        adapter.adapterType = ADAPTER_TYPE_HBA;
        identified = 1;
    } else if (adapter.productName.find("RAID") != std::string::npos) {
        adapter.adapterType = ADAPTER_TYPE_RAID;
        identified = 1;
    }
    logValue("Identify", identified);
    logValue("Type:", adapter.adapterType);
    logEnd("get_adapter_type");
}
