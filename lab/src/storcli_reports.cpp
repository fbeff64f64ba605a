#include "storcli_reports.h"

#include <cstdio>

#include "text_table.h"

namespace lab {

namespace {

std::vector<std::string> header(const std::string& subject, bool success,
                                const std::string& description)
{
    return {"CLI Version = 002.0600.0000.0000 Sep 12, 2026",
            "Operating system = Windows Server 2022",
            subject,
            success ? "Status = Success" : "Status = Failure",
            "Description = " + description,
            ""};
}

std::vector<std::string> section_title(const std::string& title)
{
    return {title + " :", std::string(title.size() + 2, '=')};
}

std::string hex(std::size_t value, int digits)
{
    char text[32];
    std::snprintf(text, sizeof text, "%0*zx", digits, value);
    return text;
}

int physical_drives(const StorcliController& controller)
{
    int drives = 0;
    for (const StorcliEnclosure& enclosure : controller.enclosures)
        drives += std::stoi(enclosure.pd);
    return drives;
}

std::vector<std::string> controller_basics(const StorcliController& c, std::size_t index)
{
    return {"Product Name = " + c.productName,
            "Serial Number = TVX" + hex(0x4e1f00 + index, 7),
            "SAS Address =  5f23a100" + hex(0xa1c000 + index, 8),
            "PCI Address = 00:" + hex(0x3b + index, 2) + ":00:00",
            "FW Package Build = 3.14.2.0",
            "FW Version = 3.14.2.0",
            "BIOS Version = 1.07.00.00_3.14.2.0",
            "Driver Name = " + c.driverName,
            "Driver Version = 3.2.1.0",
            "Bus Number = " + std::to_string(0x3b + index),
            "Device Number = 0",
            "Function Number = 0",
            "Vendor Id = 0x7A3F",
            "Device Id = 0x0016",
            "SubVendor Id = " + c.subVendorId,
            "SubDevice Id = " + c.subDeviceId,
            "Host Interface = PCI-E",
            "Device Interface = SAS-12G",
            "Physical Drives = " + std::to_string(physical_drives(c)),
            ""};
}

TextTable enclosure_table(const Lab& lab, std::size_t index)
{
    TextTable table({{"EID", true},
                     {"State"},
                     {"Slots", true},
                     {"PD", true},
                     {"PS", true},
                     {"Fans", true},
                     {"TSs", true},
                     {"Alms", true},
                     {"SIM", true},
                     {"Port#"},
                     {"ProdID"},
                     {"VendorSpecific"}});
    for (const StorcliEnclosure& e : lab.scenario.storcli[index].enclosures) {
        // The version stands right behind the product id: the utility reads it there.
        std::string version =
            installed_version(lab, storcli_key(index, e.eid), ImageKind::Main, e.mainVersion);
        table.add_row({e.eid, e.state, e.slots, e.pd, e.ps, e.fans, e.tss, e.alms, e.sim, e.port,
                       e.productId, version});
    }
    return table;
}

std::vector<std::string> enclosure_legend()
{
    return {"", "EID=Enclosure Device ID | PD=Physical drive count | PS=Power Supply count",
            "TSs=Temperature sensor count | Alms=Alarm count | SIM=SIM Count | ProdID=Product "
            "Identification",
            ""};
}

}  // namespace

std::string controller_subject(std::size_t controller)
{
    return "Controller = " + std::to_string(controller);
}

std::string status_subject(int status)
{
    return "Status Code = " + std::to_string(status);
}

Reply storcli_failure(const std::string& subject, int status, const std::string& description)
{
    Reply reply;
    reply.status = status;
    reply.add(header(subject, false, description));
    return reply;
}

Reply ctrlcount_report(const Lab& lab)
{
    Reply reply;
    reply.add(header(status_subject(0), true, "None"));
    reply.add("Controller Count = " + std::to_string(lab.scenario.storcli.size()));
    reply.add("");
    return reply;
}

Reply controller_report(const Lab& lab, std::size_t controller)
{
    Reply reply;
    reply.add("Generating detailed summary of the adapter, it may take a while to complete.");
    reply.add("");
    reply.add(header(controller_subject(controller), true, "None"));
    reply.add(controller_basics(lab.scenario.storcli[controller], controller));
    reply.add(section_title("Enclosure LIST"));
    reply.add("");
    reply.add(enclosure_table(lab, controller).lines());
    reply.add(enclosure_legend());
    return reply;
}

Reply enclosure_report(const Lab& lab, std::size_t controller)
{
    Reply reply;
    reply.add(header(controller_subject(controller), true, "None"));
    reply.add(section_title("Properties"));
    reply.add("");
    reply.add(enclosure_table(lab, controller).lines());
    reply.add(enclosure_legend());
    return reply;
}

Reply download_report(std::size_t controller, const std::string& eid, const Image& image)
{
    Reply reply;
    reply.add(header(controller_subject(controller), true, "None"));
    reply.add(section_title("Download Status"));
    reply.add("");
    reply.add("Enclosure " + eid + " : image " + image.file +
              " downloaded; a power cycle activates it.");
    reply.add("");
    return reply;
}

}  // namespace lab
