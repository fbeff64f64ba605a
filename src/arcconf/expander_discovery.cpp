#include "arcconf/ARCCONF_UTL.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"
#include "platform/platform.h"

#include <memory>

namespace {

const std::string CHANNEL_KEY = "Channel #";
const std::string DEVICE_KEY = "Device #";
const std::string EXPANDER_MARKER = "Device is an Enclosure Services Device";
const std::string LOCATION_KEY = "Reported Location";

// The plain fields of a device's block, in the order they are tested: the
// keys are substrings, so an earlier key wins on a line that holds two.
struct FieldKey {
    const char* key;
    std::string MCHP_DEVICE::*member;
};

const FieldKey FIELD_KEYS[] = {
    {"Model", &MCHP_DEVICE::model},       {"Disk Name", &MCHP_DEVICE::diskName},
    {"Firmware", &MCHP_DEVICE::firmware}, {"Vendor", &MCHP_DEVICE::vendor},
    {"State", &MCHP_DEVICE::state},       {"Expander ID", &MCHP_DEVICE::expanderId},
};

bool contains(const std::string& line, const std::string& key)
{
    return line.find(key) != std::string::npos;
}

// Only the one character behind the key counts, so "Device #12" gives "1".
std::string character_behind(const std::string& line, const std::string& key)
{
    return line.substr(line.find(key) + key.size(), 1);
}

void fill_field(MCHP_DEVICE& device, const std::string& line)
{
    for (const FieldKey& field : FIELD_KEYS) {
        if (contains(line, field.key)) {
            device.*field.member = ARCCONF_UTL::get_value(line);
            return;
        }
    }
    if (contains(line, LOCATION_KEY))
        device.connectorId = ARCCONF_UTL::get_connectorid(ARCCONF_UTL::get_value(line));
}

// Walks one physical device report. A device's block runs from its
// "Device #" line to the next one; only an enclosure services device, told
// by the line right behind its "Device #" line, becomes a record whose
// fields the block fills.
class DeviceReportReader {
public:
    DeviceReportReader(platform::TextFile& report, MCHP_ADAPTER* adapter)
        : report_(report), adapter_(adapter)
    {
    }

    void read()
    {
        std::string line;
        while (report_.read_line(line)) {
            logValue("line", line);
            if (contains(line, CHANNEL_KEY))
                take_channel(line);
            else if (contains(line, DEVICE_KEY))
                take_device(line);
            else if (in_block_)
                fill_field(*current_, line);
        }
    }

private:
    void take_channel(const std::string& line)
    {
        channel_ = character_behind(line, CHANNEL_KEY);
        logValue("channel number line. channel", channel_);
    }

    // The marker line is consumed here and never read for fields. A fresh
    // text for it means a read at the end of the report finds no marker.
    void take_device(const std::string& line)
    {
        device_ = character_behind(line, DEVICE_KEY);
        logValue("device id", device_);
        std::string next;
        report_.read_line(next);
        in_block_ = contains(next, EXPANDER_MARKER);
        if (in_block_)
            add_expander();
    }

    void add_expander()
    {
        logMessage("an expected device");
        auto device = std::make_unique<MCHP_DEVICE>(channel_, device_, "expander");
        device->adapter = adapter_;
        ARCCONF_UTL::expanders.push_back(device.get());
        current_ = device.release();
    }

    platform::TextFile& report_;
    MCHP_ADAPTER* adapter_;
    std::string channel_;
    std::string device_;
    MCHP_DEVICE* current_ = nullptr;
    bool in_block_ = false;
};

}  // namespace

void ARCCONF_UTL::getExpanderList()
{
    logBegin("ARCCONF_UTL::getExpanderList");
    for (MCHP_ADAPTER* adapter : adapters) {
        const std::string report = "getconfigpd_" + adapter->adapterIndex;
        if (exec_cmd(ARCCONF_TOOL + " getconfig " + adapter->adapterIndex + " PD", report) == 0)
            parse_getconfig_pd(adapter, report);
    }
    logEnd("ARCCONF_UTL::getExpanderList");
}

void ARCCONF_UTL::parse_getconfig_pd(MCHP_ADAPTER* adapter, std::string file)
{
    logBegin("ARCCONF_UTL::parse_getconfig_pd");
    platform::TextFile report(file);
    if (report.is_open())
        DeviceReportReader(report, adapter).read();
    else
        logMessage("Open log file fail.");
    logEnd("ARCCONF_UTL::parse_getconfig_pd");
}

std::string ARCCONF_UTL::get_value(std::string line)
{
    logBegin("ARCCONF_UTL::get_value");
    std::string value;
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos)
        logMessage("ERROR line, no : charachter");
    else
        value = trim(line.substr(colon + 1));
    logEnd("ARCCONF_UTL::get_value");
    return value;
}

std::string ARCCONF_UTL::get_connectorid(std::string location)
{
    logBegin("ARCCONF_UTL::get_connectorid");
    std::string id;
    const std::size_t comma = location.find(',');
    if (comma != std::string::npos) {
        const std::string head = location.substr(0, comma);
        const std::size_t blank = head.find(' ');
        if (blank != std::string::npos) {
            id = trim(head.substr(blank + 1));
            logValue("connecter id", id);
        }
    }
    logEnd("ARCCONF_UTL::get_connectorid");
    return id;
}
