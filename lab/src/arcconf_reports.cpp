#include "arcconf_reports.h"

#include <algorithm>
#include <map>

#include "inquiry.h"
#include "text.h"

namespace lab {

namespace {

const std::string RULE(70, '-');

std::vector<std::string> titled(const std::string& title)
{
    return {RULE, title, RULE};
}

// Keys of a device block are padded to one width, as the tool prints them.
std::string field(const std::string& key, const std::string& value)
{
    return "            " + pad_right(key, 35) + ": " + value;
}

std::string channel_device(const ArcconfDevice& d)
{
    return std::to_string(d.channel) + "," + std::to_string(d.device) + "(" +
           std::to_string(d.device) + ":0)";
}

// An expander block holds no other line with the words Model, Firmware,
// Vendor, State, "Device #" or "Channel #": the utility matches them anywhere.
std::vector<std::string> enclosure_block(const Lab& lab, std::size_t controller,
                                         const ArcconfDevice& d, int enclosureId)
{
    bool expander = d.kind == DeviceKind::Expander;
    std::vector<std::string> lines = {
        "            Device is an Enclosure Services Device",
        field("Reported Channel,Device(T:L)", channel_device(d)),
        field("Enclosure ID", std::to_string(enclosureId)),
        field("Enclosure Type", expander ? "SES2 expander" : "Virtual SES"),
        field("State", d.state),
        field("Vendor", d.vendor),
        field("Model", d.model),
        field("Firmware",
              installed_version(lab, arcconf_key(controller, d), ImageKind::Main, d.firmware)),
    };
    if (expander)
        lines.push_back(field("Expander ID", d.expanderId));
    if (expander)
        lines.push_back(field("SAS Address", d.sasAddress));
    if (!d.connector.empty())
        lines.push_back(field("Reported Location",
                              "Connector " + d.connector + ", Device " + std::to_string(d.device)));
    if (!d.diskName.empty())
        lines.push_back(field("Disk Name", d.diskName));
    return lines;
}

std::vector<std::string> drive_block(const ArcconfDevice& d)
{
    std::vector<std::string> lines = {
        "            Device is a Hard drive",
        field("State", d.state),
        field("Block Size", "512 Bytes"),
        field("Transfer Speed", "SAS 12.0 Gb/s"),
        field("Reported Channel,Device(T:L)", channel_device(d)),
        field("Reported Location", "Enclosure 0, Slot " + std::to_string(d.device)),
        field("Vendor", d.vendor),
        field("Model", d.model),
        field("Firmware", d.firmware),
        field("World-wide name", d.sasAddress),
        field("Total Size", d.size),
    };
    if (!d.diskName.empty())
        lines.push_back(field("Disk Name", d.diskName));
    return lines;
}

// Devices by channel, each channel in the scenario's order.
std::map<int, std::vector<const ArcconfDevice*>>
devices_by_channel(const ArcconfController& controller)
{
    std::map<int, std::vector<const ArcconfDevice*>> channels;
    for (const ArcconfDevice& device : controller.devices)
        channels[device.channel].push_back(&device);
    return channels;
}

std::string controller_found_line(const Lab& lab)
{
    return "Controllers found: " + std::to_string(lab.scenario.arcconf.size());
}

}  // namespace

Reply arcconf_failure(int status, const std::string& description)
{
    Reply reply;
    reply.status = status;
    reply.add(description);
    reply.add("");
    reply.add("Command aborted.");
    return reply;
}

Reply arcconf_success(const std::vector<std::string>& lines)
{
    Reply reply;
    reply.add(lines);
    reply.add("");
    reply.add("Command completed successfully.");
    return reply;
}

Reply list_report(const Lab& lab)
{
    std::vector<std::string> lines = {controller_found_line(lab)};
    std::vector<std::string> title = titled("Controller information");
    lines.insert(lines.end(), title.begin(), title.end());
    lines.push_back("   Controller ID             : Status, Slot, Mode, Name, SerialNumber, WWN");
    lines.push_back(RULE);
    for (std::size_t i = 0; i < lab.scenario.arcconf.size(); ++i) {
        const ArcconfController& c = lab.scenario.arcconf[i];
        std::string number = std::to_string(i + 1);
        lines.push_back(pad_right("   Controller " + number + ":", 29) + ": Optimal, Slot " +
                        number + ", HBA, " + c.model + ", " + c.serial + ", 5F23A10E000" + number +
                        "0000");
    }
    return arcconf_success(lines);
}

Reply physical_device_report(const Lab& lab, std::size_t controllerNumber)
{
    std::vector<std::string> lines = {controller_found_line(lab)};
    std::vector<std::string> title = titled("Physical Device information");
    lines.insert(lines.end(), title.begin(), title.end());
    int enclosureId = 0;
    for (const auto& [channel, devices] :
         devices_by_channel(lab.scenario.arcconf[controllerNumber - 1])) {
        lines.push_back("      Channel #" + std::to_string(channel) + ":");
        for (const ArcconfDevice* d : devices) {
            lines.push_back("         Device #" + std::to_string(d->device));
            std::vector<std::string> block =
                d->kind == DeviceKind::HardDrive
                    ? drive_block(*d)
                    : enclosure_block(lab, controllerNumber, *d, enclosureId++);
            lines.insert(lines.end(), block.begin(), block.end());
        }
    }
    return arcconf_success(lines);
}

Reply inquiry_report(const ArcconfDevice& device, const std::string& version, std::size_t length)
{
    std::vector<unsigned char> data = inquiry_data(device, version);
    data.resize(length, 0);
    Reply reply;
    reply.add("Passthrough command sent to channel " + std::to_string(device.channel) +
              ", device " + std::to_string(device.device) + ", " + std::to_string(length) +
              " bytes returned.");
    reply.tail = raw_hex(data);
    return reply;
}

}  // namespace lab
