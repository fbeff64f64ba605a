#include "arcconf/run_loop.h"

#include "arcconf/ARCCONF_UTL.h"
#include "arcconf/flash_fw_mchp.h"
#include "diagnostics/log.h"
#include "run/exit_codes.h"
#include "run/run_ending.h"
#include "run/run_state.h"

#include <iostream>

namespace {

const std::string DASH_LINE = "------------------------------------";

// Up to date moves no counter; any result but written is a failure.
void count(UpdateTally& tally, std::int32_t flash_result)
{
    if (flash_result == MCHP_FLASH_UP_TO_DATE)
        return;
    ++tally.needed;
    if (flash_result == MCHP_FLASH_WRITTEN)
        ++tally.succeeded;
    else
        ++tally.failed;
}

// The first row whose product id is the whole model, case and all.
const SupportProfile* matching_profile(const std::string& model)
{
    for (const SupportProfile& profile : Profiles) {
        if (profile.productId == model)
            return &profile;
    }
    return nullptr;
}

// Updates each device that a profile row names; says whether any did.
bool update_devices(UpdateTally& tally)
{
    bool matched = false;
    for (MCHP_DEVICE* device : ARCCONF_UTL::expanders) {
        const SupportProfile* profile = matching_profile(device->model);
        if (profile == nullptr)
            continue;
        matched = true;
        count(tally, flash_fw_mchp(device, profile));
    }
    return matched;
}

// Any failure makes the run's result 1.
std::int32_t summarize(const UpdateTally& tally)
{
    return show_ending(tally) == RunEnding::some_failed ? RESULT_SOME_FAILED : RESULT_OK;
}

std::int32_t discover_and_update()
{
    ARCCONF_UTL::getExpanderList();
    logValue("Expander number", static_cast<std::uint64_t>(ARCCONF_UTL::expanders.size()));
    if (ARCCONF_UTL::expanders.empty())
        return RESULT_NO_EXPANDER;

    UpdateTally tally;
    const bool matched = update_devices(tally);
    std::cout << DASH_LINE << std::endl << std::endl;
    return matched ? summarize(tally) : RESULT_NO_EXPANDER;
}

}  // namespace

std::int32_t ProcessArcconfAdapters()
{
    logBegin("Process");
    // An unusable profile ends the family's run with the reader's code.
    std::int32_t result = read_profiles(Options.profile_file);
    if (result != 0)
        std::cout << "Profile information is not supported." << std::endl;
    else
        result = discover_and_update();
    logValue("result", result);
    logEnd("Process");
    return result;
}
