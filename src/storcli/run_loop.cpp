#include "storcli/run_loop.h"

#include "diagnostics/log.h"
#include "diagnostics/tool_runner.h"
#include "profile/SupportProfile.h"
#include "run/exit_codes.h"
#include "run/run_ending.h"
#include "run/run_state.h"
#include "storcli/StorcliAdapter.h"
#include "storcli/StorcliExpander.h"
#include "storcli/update.h"

#include <algorithm>
#include <iostream>
#include <memory>

namespace {

// Controller numbers have always been three-digit texts.
constexpr std::uint32_t MAX_CONTROLLERS = 1000;
const std::string ACCEPTED_SVID = "0x1F3A";
const std::string DASH_LINE = "------------------------------------";

std::uint32_t controllers_to_serve()
{
    if (ADAPTER_COUNT > MAX_CONTROLLERS)
        logMessage("Controller count above 1000, controllers from 1000 on are not served");
    return std::min(ADAPTER_COUNT, MAX_CONTROLLERS);
}

// Runs the controller's report and enclosure commands and keeps the
// controller, with its expanders, when it passes the vendor id gate. Each
// failure only ends the work on this controller, and the log alone says so.
void discover_controller(const std::string& index)
{
    const std::string show_file = "show_" + index + "_log";
    if (exec_command(build_show_command(index, 0), show_file) != 0) {
        logPrintf("get controller info fail");
        return;
    }
    auto adapter = std::make_unique<StorcliAdapter>();
    adapter->adapterIndex = index;
    parse_adapter_info(show_file, *adapter);
    if (adapter->SVID != ACCEPTED_SVID) {
        logPrintf("SVID is not match Tarvex SVID, Not Supported adapter.");
        return;
    }
    get_adapter_type(*adapter);

    const std::string eall_file = "show_eall_" + index + "_log";
    if (exec_command(".\\storcli64.exe /c" + index + "/eall show ", eall_file) != 0) {
        logPrintf("get controller info fail");
        return;
    }
    parse_eall_output(eall_file, adapter.get());
    Adapters.push_back(adapter.release());
}

void discover_expanders()
{
    if (read_profiles(Options.profile_file) != 0)
        std::cout << "Profile information is not supported." << std::endl;
    const std::uint32_t count = controllers_to_serve();
    for (std::uint32_t i = 0; i < count; ++i)
        discover_controller(std::to_string(i));
}

// Updates every expander in list order; the last update's result is kept.
std::int32_t update_expanders(UpdateTally& tally)
{
    std::int32_t result = RESULT_OK;
    for (StorcliExpander* expander : Expanders) {
        std::cout << std::endl << DASH_LINE << std::endl;
        result = update(*expander);
        if (result == RESULT_UP_TO_DATE)
            continue;
        if (expander->needDownload != 0)
            ++tally.needed;
        if (expander->flashState == FLASH_WRITTEN)
            ++tally.succeeded;
        else
            ++tally.failed;
    }
    return result;
}

// With failures and nothing written, the last update's result stands.
std::int32_t summarize(const UpdateTally& tally, std::int32_t last_result)
{
    if (show_ending(tally) != RunEnding::some_failed)
        return RESULT_OK;
    return tally.succeeded == 0 ? last_result : RESULT_SOME_FAILED;
}

}  // namespace

std::int32_t ProcessStorcliAdapters()
{
    logBegin("Process");
    discover_expanders();
    if (Expanders.empty())
        return RESULT_NO_EXPANDER;

    std::cout << Expanders.size() << " Expander(s) Found." << std::endl << std::endl;
    UpdateTally tally;
    const std::int32_t last_result = update_expanders(tally);
    std::cout << DASH_LINE << std::endl << std::endl;
    const std::int32_t result = summarize(tally, last_result);

    logValue("result", result);
    logEnd("Process");
    return result;
}
