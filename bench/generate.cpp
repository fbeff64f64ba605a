// Writes the output files of a large simulated server into a directory, as
// the vendor tools would have left them, for the utility to replay under -T:
//   bench_generate storcli DIR CONTROLLERS ENCLOSURES_PER_CONTROLLER PROFILE_ROWS
//   bench_generate arcconf DIR CONTROLLERS DEVICES_PER_CONTROLLER PROFILE_ROWS
// plus profile.txt. Every other expander is one version behind its profile
// row, so the run decides both ways and composes download commands.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

namespace {

struct Size {
    unsigned controllers;
    unsigned per_controller;  // enclosure rows or physical devices
    unsigned profile_rows;
};

// Product ids of one length with distinct numbers, so that no id occurs
// inside another or elsewhere in a row.
std::string product_id(unsigned row)
{
    char id[16];
    std::snprintf(id, sizeof id, "TVX%04uE", row);
    return id;
}

std::string target_version(unsigned row)
{
    return "4.2." + std::to_string(row % 50 + 1);
}

// Behind the target for odd expanders, equal to it for even ones.
std::string installed_version(unsigned row, unsigned expander)
{
    return "4.2." + std::to_string(row % 50 + 1 - expander % 2);
}

const char* const REPORT_HEADER = "CLI Version = 002.0600.0000.0000 Sep 12, 2026\n"
                                  "Operating system = Windows Server 2022\n";

void write_profile(const std::string& dir, const Size& size, unsigned location)
{
    std::ofstream profile(dir + "/profile.txt");
    for (unsigned row = 0; row < size.profile_rows; ++row) {
        const std::string id = product_id(row);
        profile << id << ",aux," << target_version(row) << "," << id << "_fw.rom,aux," << id
                << "_psoc.rom,E,2," << location << "\n";
    }
}

void write_storcli_count(const std::string& dir, unsigned controllers)
{
    std::ofstream(dir + "/ctrlcount.rst")
        << REPORT_HEADER << "Status Code = 0\nStatus = Success\n"
        << "Description = None\n\nController Count = " << controllers << "\n";
}

void write_controller_report(const std::string& dir, unsigned controller)
{
    std::ofstream(dir + "/show_" + std::to_string(controller) + "_log")
        << "Generating detailed summary of the adapter, it may take a while to complete.\n\n"
        << REPORT_HEADER << "Controller = " << controller << "\nStatus = Success\n"
        << "Description = None\n\nProduct Name = Tarvex TX-1600 HBA\n"
        << "Serial Number = TVX04e1f" << controller << "\nFW Version = 3.14.2.0\n"
        << "Driver Name = tvsas3\nDriver Version = 3.2.1.0\nVendor Id = 0x7A3F\n"
        << "Device Id = 0x0016\nSubVendor Id = 0x1F3A\nSubDevice Id = 0x4110\n"
        << "Host Interface = PCI-E\nPhysical Drives = 20\n";
}

void write_enclosure_report(const std::string& dir, unsigned controller, const Size& size)
{
    const std::string rule(73, '-');
    std::ofstream report(dir + "/show_eall_" + std::to_string(controller) + "_log");
    report << REPORT_HEADER << "Controller = " << controller << "\nStatus = Success\n"
           << "Description = None\n\nProperties :\n============\n\n"
           << rule
           << "\nEID State Slots PD PS Fans TSs Alms SIM Port#      ProdID VendorSpecific \n"
           << rule << "\n";
    for (unsigned e = 0; e < size.per_controller; ++e) {
        const unsigned row = (controller * size.per_controller + e) % size.profile_rows;
        char line[128];
        std::snprintf(line, sizeof line,
                      "%3u OK       36 12  2    4   3    0   0 C0 & C1 x8 %s %-14s", e + 2,
                      product_id(row).c_str(), installed_version(row, e).c_str());
        report << line << "\n";
    }
    report << rule
           << "\n\nEID=Enclosure Device ID | PD=Physical drive count | PS=Power Supply count\n";
}

void write_storcli(const std::string& dir, const Size& size)
{
    write_profile(dir, size, 0);
    write_storcli_count(dir, size.controllers);
    for (unsigned c = 0; c < size.controllers; ++c) {
        write_controller_report(dir, c);
        write_enclosure_report(dir, c, size);
    }
}

void write_listing(const std::string& dir, unsigned controllers)
{
    const std::string rule(70, '-');
    std::ofstream listing(dir + "/arrconf_list.log");
    listing << "Controllers found: " << controllers << "\n"
            << rule << "\nController information\n"
            << rule << "\n";
    for (unsigned c = 1; c <= controllers; ++c)
        listing << "   Controller " << c << ":             : Optimal, Slot " << c
                << ", HBA, Tarvex TX-2100 HBA, 8A47" << c << ", 5F23A10E00010000\n";
    listing << "\nCommand completed successfully.\n";
}

// The device's place: channels of ten devices, one digit each, as the
// report's keys allow.
unsigned channel_of(unsigned device)
{
    return device / 10;
}
unsigned device_of(unsigned device)
{
    return device % 10;
}

void write_expander_block(std::ofstream& report, unsigned device, unsigned row, unsigned expander)
{
    report << "         Device #" << device_of(device) << "\n"
           << "            Device is an Enclosure Services Device\n"
           << "            Reported Channel,Device(T:L)       : " << channel_of(device) << ","
           << device_of(device) << "(0:0)\n"
           << "            Enclosure Type                     : SES2 expander\n"
           << "            State                              : Ready\n"
           << "            Vendor                             : TARVEX\n"
           << "            Model                              : " << product_id(row) << "\n"
           << "            Firmware                           : "
           << installed_version(row, expander) << "\n"
           << "            Expander ID                        : " << device << "\n"
           << "            Reported Location                  : Connector " << channel_of(device)
           << ", Device " << device_of(device) << "\n";
}

void write_drive_block(std::ofstream& report, unsigned device)
{
    report << "         Device #" << device_of(device) << "\n"
           << "            Device is a Hard drive\n"
           << "            State                              : Ready\n"
           << "            Block Size                         : 512 Bytes\n"
           << "            Vendor                             : TARVEX\n"
           << "            Model                              : TXD-12T\n"
           << "            Firmware                           : N4A1\n"
           << "            Total Size                         : 1144641 MB\n"
           << "            Disk Name                          : PhysicalDrive" << device << "\n";
}

// The inquiry answer: a line, then 512 bytes as hex tokens with the
// installed version at bytes 36 to 55, no line end after them.
void write_inquiry(const std::string& dir, unsigned controller, unsigned device,
                   const std::string& version)
{
    unsigned char bytes[512] = {0x0d, 0x00, 0x06, 0x02};
    for (std::size_t i = 0; i < 20; ++i)
        bytes[36 + i] = i < version.size() ? static_cast<unsigned char>(version[i]) : ' ';
    std::ofstream answer(dir + "/inq_" + std::to_string(controller) + "_" +
                         std::to_string(channel_of(device)) + "_" +
                         std::to_string(device_of(device)));
    answer << "Passthrough command sent to channel " << channel_of(device) << ", device "
           << device_of(device) << ", 512 bytes returned.\n";
    char token[4];
    for (std::size_t i = 0; i < sizeof bytes; ++i) {
        std::snprintf(token, sizeof token, i == 0 ? "%02x" : " %02x", bytes[i]);
        answer << token;
    }
}

// Even devices are expanders, odd ones hard drives between them.
void write_device_report(const std::string& dir, unsigned controller, const Size& size)
{
    const std::string rule(70, '-');
    std::ofstream report(dir + "/getconfigpd_" + std::to_string(controller));
    report << "Controllers found: 1\n" << rule << "\nPhysical Device information\n" << rule << "\n";
    for (unsigned device = 0; device < size.per_controller; ++device) {
        if (device_of(device) == 0)
            report << "      Channel #" << channel_of(device) << ":\n";
        if (device % 2 != 0) {
            write_drive_block(report, device);
            continue;
        }
        const unsigned expander = ((controller - 1) * size.per_controller + device) / 2;
        const unsigned row = expander % size.profile_rows;
        write_expander_block(report, device, row, expander);
        write_inquiry(dir, controller, device, installed_version(row, expander));
    }
    report << "\nCommand completed successfully.\n";
}

void write_arcconf(const std::string& dir, const Size& size)
{
    write_profile(dir, size, 1);
    // The storcli family serves no controller, so the arcconf family is asked.
    write_storcli_count(dir, 0);
    write_listing(dir, size.controllers);
    for (unsigned c = 1; c <= size.controllers; ++c)
        write_device_report(dir, c, size);
}

unsigned number(const char* text)
{
    return static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

}  // namespace

int main(int argc, char* argv[])
{
    if (argc != 6) {
        std::cerr << "usage: bench_generate storcli|arcconf DIR CONTROLLERS PER_CONTROLLER "
                     "PROFILE_ROWS\n";
        return 2;
    }
    const std::string family = argv[1];
    const Size size{number(argv[3]), number(argv[4]), number(argv[5])};
    if (size.profile_rows == 0 || size.per_controller > 100) {
        std::cerr << "bench_generate: at least one profile row, at most 100 devices a controller\n";
        return 2;
    }
    if (family == "storcli")
        write_storcli(argv[2], size);
    else if (family == "arcconf")
        write_arcconf(argv[2], size);
    else
        return 2;
    return 0;
}
