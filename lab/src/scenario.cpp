#include "scenario.h"

#include <fstream>
#include <functional>
#include <map>
#include <sstream>

#include "lab_error.h"
#include "statement.h"
#include "text.h"

namespace lab {

namespace {

// The inquiry data holds 20 bytes for the firmware version.
constexpr std::size_t INQUIRY_VERSION_BYTES = 20;

// A version is one word; left out or empty, the enclosure shows none.
std::string optional_version(Attributes& attrs, const std::string& key)
{
    return attrs.optional(key).empty() ? std::string() : attrs.required_word(key);
}

void read_line_ends(Scenario& scenario, const Statement& statement)
{
    Attributes attrs(statement, scenario.file);
    bool crlf = attrs.flag("crlf");
    bool lf = attrs.flag("lf");
    if (crlf == lf)
        attrs.fail("say either 'crlf' or 'lf'");
    attrs.finish();
    scenario.crlf = crlf;
}

void read_storcli_controller(Scenario& scenario, const Statement& statement)
{
    Attributes attrs(statement, scenario.file);
    StorcliController controller;
    controller.productName = attrs.required("product");
    controller.subVendorId = attrs.required_word("subvendor");
    controller.subDeviceId = attrs.required_word("subdevice");
    controller.driverName = attrs.required("driver");
    attrs.finish();
    scenario.storcli.push_back(controller);
}

void read_enclosure(Scenario& scenario, const Statement& statement)
{
    Attributes attrs(statement, scenario.file);
    if (scenario.storcli.empty())
        attrs.fail("needs a storcli-controller line above it");
    StorcliEnclosure enclosure;
    enclosure.eid = attrs.required_number("eid");
    enclosure.productId = attrs.required_word("product");
    enclosure.mainVersion = optional_version(attrs, "version");
    enclosure.psocVersion = optional_version(attrs, "psoc");
    enclosure.psocMode = attrs.optional("psoc-mode");
    enclosure.state = attrs.optional("state", enclosure.state);
    enclosure.slots = attrs.optional_number("slots", enclosure.slots);
    enclosure.pd = attrs.optional_number("pd", enclosure.pd);
    enclosure.ps = attrs.optional_number("ps", enclosure.ps);
    enclosure.fans = attrs.optional_number("fans", enclosure.fans);
    enclosure.tss = attrs.optional_number("tss", enclosure.tss);
    enclosure.alms = attrs.optional_number("alms", enclosure.alms);
    enclosure.sim = attrs.optional_number("sim", enclosure.sim);
    enclosure.port = attrs.optional("port", enclosure.port);
    attrs.finish();
    for (const StorcliEnclosure& other : scenario.storcli.back().enclosures)
        if (other.eid == enclosure.eid)
            attrs.fail("enclosure id " + enclosure.eid + " is already used on this controller");
    scenario.storcli.back().enclosures.push_back(enclosure);
}

void read_arcconf_controller(Scenario& scenario, const Statement& statement)
{
    Attributes attrs(statement, scenario.file);
    ArcconfController controller;
    controller.model = attrs.required("model");
    controller.serial =
        attrs.optional("serial", "8A" + std::to_string(4711000 + scenario.arcconf.size()));
    attrs.finish();
    scenario.arcconf.push_back(controller);
}

std::string default_sas_address(std::size_t controller, const ArcconfDevice& device)
{
    std::ostringstream text;
    text << "5f23a10e" << std::hex
         << (0x10000000 + controller * 0x10000 + device.channel * 0x100 + device.device);
    return text.str();
}

// Fields that every kind of arcconf device has.
ArcconfDevice read_device_basics(Attributes& attrs, DeviceKind kind)
{
    ArcconfDevice device;
    device.kind = kind;
    device.channel = attrs.required_int("channel");
    device.device = attrs.required_int("device");
    device.vendor = attrs.required("vendor");
    device.model = attrs.required("model");
    device.firmware = attrs.required("firmware");
    device.state = attrs.optional("state", device.state);
    device.diskName = attrs.optional("disk");
    device.sasAddress = attrs.optional("sas-address");
    return device;
}

void read_expander_fields(Attributes& attrs, ArcconfDevice& device)
{
    device.inquiryVersion = attrs.optional("inquiry", device.firmware);
    if (device.inquiryVersion.size() > INQUIRY_VERSION_BYTES)
        attrs.fail("'inquiry' holds more than 20 characters");
    device.psocVersion = optional_version(attrs, "psoc");
    device.connector = attrs.required("connector");
    device.expanderId = attrs.required("expander-id");
}

void add_device(Scenario& scenario, Attributes& attrs, ArcconfDevice device)
{
    attrs.finish();
    ArcconfController& controller = scenario.arcconf.back();
    for (const ArcconfDevice& other : controller.devices)
        if (other.channel == device.channel && other.device == device.device)
            attrs.fail("channel " + std::to_string(device.channel) + " device " +
                       std::to_string(device.device) + " is already used on this controller");
    if (device.sasAddress.empty())
        device.sasAddress = default_sas_address(scenario.arcconf.size(), device);
    controller.devices.push_back(device);
}

void read_device(Scenario& scenario, const Statement& statement, DeviceKind kind)
{
    Attributes attrs(statement, scenario.file);
    if (scenario.arcconf.empty())
        attrs.fail("needs an arcconf-controller line above it");
    ArcconfDevice device = read_device_basics(attrs, kind);
    if (kind == DeviceKind::Expander)
        read_expander_fields(attrs, device);
    if (kind == DeviceKind::VirtualEnclosure)
        device.connector = attrs.optional("connector");
    if (kind == DeviceKind::HardDrive)
        device.size = attrs.optional("size", "1144641 MB");
    device.inquiryVersion =
        device.inquiryVersion.empty() ? device.firmware.substr(0, 20) : device.inquiryVersion;
    add_device(scenario, attrs, device);
}

void read_image(Scenario& scenario, const Statement& statement)
{
    Attributes attrs(statement, scenario.file);
    Image image;
    image.file = attrs.required_word("file");
    image.version = attrs.required_word("version");
    std::string kind = attrs.optional("kind", "main");
    if (kind != "main" && kind != "psoc")
        attrs.fail("'kind' must be main or psoc");
    image.kind = kind == "psoc" ? ImageKind::Psoc : ImageKind::Main;
    image.missing = attrs.flag("missing");
    attrs.finish();
    scenario.images.push_back(image);
}

void read_failure_tool(Attributes& attrs, FailureRule& rule)
{
    std::string tool = attrs.optional("tool", "any");
    if (tool != "any" && tool != "storcli" && tool != "arcconf")
        attrs.fail("'tool' must be storcli, arcconf or any");
    rule.anyTool = tool == "any";
    rule.tool = tool == "arcconf" ? Tool::Arcconf : Tool::Storcli;
}

void read_failure(Scenario& scenario, const Statement& statement)
{
    Attributes attrs(statement, scenario.file);
    FailureRule rule;
    rule.line = statement.line;
    read_failure_tool(attrs, rule);
    rule.pattern = attrs.required("match");
    std::string status = attrs.optional_number("status", "1");
    if (status.size() > 3 || std::stoi(status) < 1 || std::stoi(status) > 255)
        attrs.fail("'status' must be 1 to 255");
    rule.status = std::stoi(status);
    rule.once = attrs.flag("once");
    if (attrs.flag("always") && rule.once)
        attrs.fail("say either 'once' or 'always'");
    rule.message = attrs.optional("message", "Operation failed");
    attrs.finish();
    scenario.failures.push_back(rule);
}

using Reader = std::function<void(Scenario&, const Statement&)>;

const std::map<std::string, Reader>& readers()
{
    static const std::map<std::string, Reader> table = {
        {"line-ends", read_line_ends},
        {"storcli-controller", read_storcli_controller},
        {"enclosure", read_enclosure},
        {"arcconf-controller", read_arcconf_controller},
        {"expander",
         [](Scenario& s, const Statement& st) { read_device(s, st, DeviceKind::Expander); }},
        {"drive",
         [](Scenario& s, const Statement& st) { read_device(s, st, DeviceKind::HardDrive); }},
        {"virtual-enclosure",
         [](Scenario& s, const Statement& st) {
             read_device(s, st, DeviceKind::VirtualEnclosure);
         }},
        {"image", read_image},
        {"fail", read_failure},
    };
    return table;
}

}  // namespace

Scenario parse_scenario(const std::string& text, const std::string& file)
{
    Scenario scenario;
    scenario.file = file;
    std::istringstream lines(text);
    std::string line;
    Statement statement;
    for (int number = 1; std::getline(lines, line); ++number) {
        if (!parse_statement(line, number, file, statement))
            continue;
        auto reader = readers().find(statement.keyword);
        if (reader == readers().end())
            throw LabError(file, number, "unknown keyword '" + statement.keyword + "'");
        reader->second(scenario, statement);
    }
    return scenario;
}

Scenario load_scenario(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw LabError(path, 0, "cannot open the scenario file");
    std::ostringstream text;
    text << in.rdbuf();
    return parse_scenario(text.str(), path);
}

}  // namespace lab
