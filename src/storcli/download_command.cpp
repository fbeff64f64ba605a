#include "storcli/download_command.h"

#include "diagnostics/log.h"
#include "run/run_state.h"

namespace {

// The PSoC mode that carries forced activation always and no "offline".
const std::string ACTIVATING_MODE = "5";
const std::string OFFLINE_MODE = "E";

// Two blanks stand between the program name and "/c" here.
std::string command_head(const StorcliExpander& expander)
{
    return std::string(".\\storcli64.exe ") + " /c" + expander.adapterIndex + "/e" +
           expander.enclosureId + " download src=";
}

// The profile's mode is left behind in the PSoC retry form: "E" for "5",
// "5" for anything else.
std::string psoc_mode(const SupportProfile& profile, std::int32_t retry_form)
{
    if (retry_form == 0)
        return profile.mode;
    return profile.mode == ACTIVATING_MODE ? OFFLINE_MODE : ACTIVATING_MODE;
}

std::string main_image_tail(const StorcliExpander& expander)
{
    std::string tail = expander.profile->fwImage;
    if (expander.adapter->adapterType == ADAPTER_TYPE_HBA) {
        logPrintf("HBA adapter, add mode E");
        tail += " mode=E offline bufferid=0";
    }
    return tail;
}

std::string psoc_image_tail(const SupportProfile& profile, std::int32_t retry_form)
{
    const std::string mode = psoc_mode(profile, retry_form);
    if (mode == ACTIVATING_MODE)
        return profile.psocImage + " forceActivate mode=" + mode + " bufferid=" + profile.bufferID;
    std::string tail = profile.psocImage + " mode=" + mode + " offline";
    if (FORCE_ACTIVATE_FLAG)
        tail += " forceActivate";
    return tail + " bufferid=" + profile.bufferID;
}

}  // namespace

std::string build_download_command(const StorcliExpander& expander, std::int32_t psoc_image,
                                   std::int32_t retry_form)
{
    if (psoc_image == 0)
        return command_head(expander) + main_image_tail(expander);
    return command_head(expander) + psoc_image_tail(*expander.profile, retry_form);
}
