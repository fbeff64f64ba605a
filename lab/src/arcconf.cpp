#include "arcconf.h"

#include "arcconf_reports.h"
#include "images.h"
#include "text.h"

namespace lab {

namespace {

constexpr int FAILURE = 1;
constexpr std::size_t INQUIRY_BLOCK = 6;
constexpr std::size_t WRITE_BUFFER_BLOCK = 10;

// A device addressed by controller, channel and device number.
struct Target {
    std::size_t controller = 0;  // from 1
    const ArcconfDevice* device = nullptr;
    std::string problem;
};

std::size_t controller_number(const Lab& lab, const std::string& word)
{
    if (!is_decimal(word) || word.size() > 4)
        return 0;
    std::size_t number = std::stoul(word);
    return number <= lab.scenario.arcconf.size() ? number : 0;
}

Target find_target(const Lab& lab, const std::string& controller, const std::string& channel,
                   const std::string& device)
{
    Target target;
    target.controller = controller_number(lab, controller);
    if (target.controller == 0) {
        target.problem = "Invalid controller number.";
        return target;
    }
    for (const ArcconfDevice& d : lab.scenario.arcconf[target.controller - 1].devices)
        if (std::to_string(d.channel) == channel && std::to_string(d.device) == device)
            target.device = &d;
    if (!target.device)
        target.problem = "No device found at channel " + channel + ", device " + device + ".";
    return target;
}

// The bytes of a command block written as "[ 12 00 ... ]" from args[first] on.
bool read_block(const std::vector<std::string>& args, std::size_t first, std::size_t count,
                std::vector<int>& bytes)
{
    if (args.size() < first + count + 2 || args[first] != "[" || args[first + count + 1] != "]")
        return false;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string& token = args[first + 1 + i];
        if (token.size() != 2 ||
            token.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
            return false;
        bytes.push_back(std::stoi(token, nullptr, 16));
    }
    return true;
}

// PASSTHROUGH A C D read N [ 12 00 00 02 00 00 ] rawhex noprompt
Reply inquiry(const Lab& lab, const Target& target, const std::vector<std::string>& args)
{
    std::vector<int> block;
    bool wellFormed = args.size() == 16 && is_decimal(args[5]) && args[5].size() <= 5 &&
                      read_block(args, 6, INQUIRY_BLOCK, block) && equals_ci(args[14], "rawhex") &&
                      equals_ci(args[15], "noprompt");
    if (!wellFormed)
        return arcconf_failure(FAILURE, "Invalid passthrough read command.");
    if (block[0] != 0x12)
        return arcconf_failure(FAILURE, "Only INQUIRY can be read from this device.");
    const ArcconfDevice& d = *target.device;
    std::string version = installed_version(lab, arcconf_key(target.controller, d), ImageKind::Main,
                                            d.inquiryVersion);
    return inquiry_report(d, version, std::stoul(args[5]));
}

std::size_t parameter_length(const std::vector<int>& block)
{
    return static_cast<std::size_t>(block[6]) << 16 | static_cast<std::size_t>(block[7]) << 8 |
           static_cast<std::size_t>(block[8]);
}

// PASSTHROUGH A C D write [ 3B 0M 0B 00 00 00 s1 s2 s3 00 ] FILE noprompt
Reply write_buffer(Lab& lab, const std::string& cwd, const Target& target,
                   const std::vector<std::string>& args)
{
    std::vector<int> block;
    bool wellFormed = args.size() == 19 && read_block(args, 5, WRITE_BUFFER_BLOCK, block) &&
                      equals_ci(args[18], "noprompt");
    if (!wellFormed)
        return arcconf_failure(FAILURE, "Invalid passthrough write command.");
    if (block[0] != 0x3b)
        return arcconf_failure(FAILURE, "Only WRITE BUFFER can be written to this device.");
    if (target.device->kind != DeviceKind::Expander)
        return arcconf_failure(FAILURE, "The device is not an expander.");
    ImageLookup lookup = find_image(lab.scenario, cwd, args[17]);
    if (!lookup.image)
        return arcconf_failure(FAILURE, lookup.problem + ".");
    if (parameter_length(block) != lookup.size)
        return arcconf_failure(FAILURE, "Parameter list length " +
                                            std::to_string(parameter_length(block)) +
                                            " does not match the " + std::to_string(lookup.size) +
                                            " bytes of " + args[17] + ".");
    if (lookup.image->kind != ImageKind::Psoc)
        return arcconf_failure(FAILURE, "Image " + args[17] + " is not a PSoC image.");
    stage_image(lab, arcconf_key(target.controller, *target.device), *lookup.image);
    return arcconf_success(
        {"Passthrough command completed: " + std::to_string(lookup.size) + " bytes written."});
}

Reply passthrough(Lab& lab, const std::string& cwd, const std::vector<std::string>& args)
{
    if (args.size() < 5)
        return arcconf_failure(FAILURE, "Invalid passthrough command.");
    Target target = find_target(lab, args[1], args[2], args[3]);
    if (!target.device)
        return arcconf_failure(FAILURE, target.problem);
    if (equals_ci(args[4], "read"))
        return inquiry(lab, target, args);
    if (equals_ci(args[4], "write"))
        return write_buffer(lab, cwd, target, args);
    return arcconf_failure(FAILURE, "Invalid passthrough command.");
}

// EXPANDERUPGRADE A ENCLOSURE CONN C D EXPANDER FILE MODE NOPROMPT
Reply expander_upgrade(Lab& lab, const std::string& cwd, const std::vector<std::string>& args)
{
    bool wellFormed =
        args.size() == 10 && equals_ci(args[2], "enclosure") && equals_ci(args[9], "noprompt");
    if (!wellFormed)
        return arcconf_failure(FAILURE, "Invalid expanderupgrade command.");
    if (!equals_ci(args[6], "expander"))
        return arcconf_failure(FAILURE, "This enclosure has no " + args[6] + " to upgrade.");
    Target target = find_target(lab, args[1], args[4], args[5]);
    if (!target.device)
        return arcconf_failure(FAILURE, target.problem);
    if (target.device->kind != DeviceKind::Expander)
        return arcconf_failure(FAILURE, "The device is not an expander.");
    if (target.device->connector != args[3])
        return arcconf_failure(FAILURE, "No expander behind connector " + args[3] + ".");
    ImageLookup lookup = find_image(lab.scenario, cwd, args[7]);
    if (!lookup.image)
        return arcconf_failure(FAILURE, lookup.problem + ".");
    if (lookup.image->kind != ImageKind::Main)
        return arcconf_failure(FAILURE, "Image " + args[7] + " is not an expander image.");
    stage_image(lab, arcconf_key(target.controller, *target.device), *lookup.image);
    return arcconf_success({"Upgrading expander firmware in mode " + args[8] + "...",
                            "Expander firmware upgrade complete; a power cycle activates it."});
}

Reply getconfig(const Lab& lab, const std::vector<std::string>& args)
{
    if (args.size() != 3 || !equals_ci(args[2], "PD"))
        return arcconf_failure(FAILURE, "Invalid getconfig command.");
    std::size_t number = controller_number(lab, args[1]);
    if (number == 0)
        return arcconf_failure(FAILURE, "Invalid controller number.");
    return physical_device_report(lab, number);
}

}  // namespace

Reply arcconf_answer(Lab& lab, const std::string& cwd, const std::vector<std::string>& args)
{
    std::string command = args.empty() ? std::string() : to_lower(args[0]);
    if (command == "list" && args.size() == 1)
        return list_report(lab);
    if (command == "getconfig")
        return getconfig(lab, args);
    if (command == "passthrough")
        return passthrough(lab, cwd, args);
    if (command == "expanderupgrade")
        return expander_upgrade(lab, cwd, args);
    return arcconf_failure(FAILURE, "Invalid command.");
}

}  // namespace lab
