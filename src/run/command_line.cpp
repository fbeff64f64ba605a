#include "run/command_line.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"
#include "run/run_state.h"

#include <iostream>

namespace {

std::uint32_t wait_seconds_from(const std::string& text)
{
    const std::int32_t seconds = parse_int32(text);
    if (seconds < 0 || seconds > MAX_WAIT_SECONDS) {
        logMessage("wait seconds out of range, no wait");
        return 0;
    }
    return static_cast<std::uint32_t>(seconds);
}

}  // namespace

std::int32_t parseArgs(int argc, char* argv[], ProgramOptions& options)
{
    logBegin("parseArgs");
    std::int32_t missing = 0;
    if (argc == 1)
        return 1;

    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool has_value = i + 1 < argc;
        if (argument == "-d") {
            options.debug = 1;
        } else if (argument == "-32i" || argument == "-36i") {
            // Accepted for the scripts that pass them; they change nothing.
        } else if (argument == "-V") {
            options.verbose = 1;
        } else if (argument == "-T") {
            options.test = true;
        } else if (argument == "-f") {
            options.force = true;
        } else if (argument == "-l") {
            if (has_value)
                options.log_file = argv[i + 1];
            else {
                ++missing;
                logMessage("Log file name paramters are lost");
            }
            ++i;
        } else if (argument == "-p") {
            if (has_value)
                options.profile_file = argv[i + 1];
            else {
                ++missing;
                logMessage("Profile name paramters are lost");
            }
            ++i;
        } else if (argument == "-s") {
            if (has_value) {
                WAIT_SECONDS = wait_seconds_from(argv[i + 1]);
                logValue("param, wait seconds:%d", WAIT_SECONDS);
            }
            ++i;
        } else if (argument == PSOC_SWITCH) {
            if (has_value) {
                PSOC_UPDATE_FLAG = parse_int32(argv[i + 1]) != 0;
                logValue("psoc update:%d", PSOC_UPDATE_FLAG);
            }
            ++i;
        } else if (argument == FORCE_ACTIVATE_SWITCH) {
            FORCE_ACTIVATE_FLAG = true;
            logValue("set FORCE_ACTIVATE_FLAG: %d", FORCE_ACTIVATE_FLAG);
        }
    }
    logValue("force", options.force);
    return missing;
}

void show_banner()
{
    const std::string stars(39, '*');
    std::cout << std::endl
              << stars << std::endl
              << " Tarvex Expander Firmware Update Utilty" << std::endl
              << " Version:" << PROGRAM_VERSION << "[" << PROGRAM_DATE << "]" << std::endl
              << stars << std::endl
              << std::endl;
}

void show_usage()
{
    std::cout << "Usage:" << std::endl
              << "sasfwctl.exe -p profile.txt [-32i] [-36i] [ -l logfile]" << std::endl;
}
