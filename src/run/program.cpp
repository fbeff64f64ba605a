#include "run/program.h"

#include "arcconf/ARCCONF_UTL.h"
#include "arcconf/run_loop.h"
#include "diagnostics/log.h"
#include "run/command_line.h"
#include "run/exit_codes.h"
#include "run/log_copy.h"
#include "run/run_state.h"
#include "storcli/adapter_count.h"
#include "storcli/run_loop.h"

#include <iostream>

namespace {

// The arcconf family serves only when the storcli family left nothing to do.
std::int32_t ask_arcconf_family(std::int32_t result)
{
    if (Options.test)
        ARCCONF_UTL::test_mode = true;
    ARCCONF_UTL::getAdapterList();
    logValue("adapters count", static_cast<std::uint64_t>(ARCCONF_UTL::adapters.size()));
    if (!ARCCONF_UTL::adapters.empty())
        result = ProcessArcconfAdapters();
    return result;
}

// The -l name, unless the copy would land in a file of the run; a refused
// name is left untouched, and the log says why.
std::string log_copy_target()
{
    if (Options.log_file.empty())
        return "";
    const std::string refusal = log_copy_refusal(Options.log_file, Options.profile_file);
    if (refusal.empty())
        return Options.log_file;
    logValue(refusal, Options.log_file);
    return "";
}

}  // namespace

std::int32_t run_program(int argc, char* argv[])
{
    show_banner();
    std::int32_t result = parseArgs(argc, argv, Options);
    logAlsoTo(log_copy_target());
    if (result != 0) {
        std::cout << "Parameters are missing or incorrect." << std::endl;
        show_usage();
        return RESULT_BAD_COMMAND_LINE;
    }

    ADAPTER_COUNT = getAdapterCount(Options.test, Options.debug);
    logValue("adapters count", ADAPTER_COUNT);
    if (ADAPTER_COUNT > 0)
        result = ProcessStorcliAdapters();
    if (ADAPTER_COUNT == 0 || result == RESULT_NO_EXPANDER)
        result = ask_arcconf_family(result);

    if (result == RESULT_NO_EXPANDER || (ADAPTER_COUNT == 0 && ARCCONF_UTL::adapters.empty())) {
        result = RESULT_NO_EXPANDER;
        logMessage("No any adapters found.");
        std::cout << "No expander devices found.\n\n" << std::endl;
    }

    cleanup();
    return result;
}

void cleanup()
{
    for (StorcliExpander* expander : Expanders)
        delete expander;
    for (StorcliAdapter* adapter : Adapters)
        delete adapter;
    ARCCONF_UTL::clear();
}
