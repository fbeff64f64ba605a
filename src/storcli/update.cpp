#include "storcli/update.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"
#include "diagnostics/tool_runner.h"
#include "profile/version.h"
#include "run/exit_codes.h"
#include "run/run_state.h"
#include "storcli/download_command.h"

namespace {

std::string output_stem(const std::string& log, const StorcliExpander& expander)
{
    return log + "_" + expander.adapterIndex + "_" + expander.enclosureId;
}

// Without -f only an installed version below the target asks for a download.
bool needs_download(const StorcliExpander& expander)
{
    logValue("force", Options.force);
    if (!Options.force &&
        compare_version(expander.installedVersion, expander.profile->targetVersion) >= 0)
        return false;
    logValue("installed:", expander.installedVersion);
    logValue("target:", expander.profile->targetVersion);
    logMessage("need to download FW");
    return true;
}

// The PSoC image, in its second form straight after a failed first one.
std::int32_t download_psoc_image(const StorcliExpander& expander)
{
    const std::string stem = output_stem(PSOC_DOWNLOAD_LOG, expander);
    std::int32_t status = exec_command(build_download_command(expander, 1, 0), stem + "_t0");
    if (status != 0)
        status = exec_command(build_download_command(expander, 1, 1), stem + "_t1");
    return status;
}

// Both images; the first failure stops and its status is the result.
std::int32_t download_images(StorcliExpander& expander)
{
    expander.show_status(STATUS_MAIN_START);
    std::int32_t status = exec_command(build_download_command(expander, 0, 0),
                                       output_stem(FW_DOWNLOAD_LOG, expander));
    if (status != 0) {
        logMessage("Download fw image fail");
        expander.flashState = FLASH_MAIN_FAILED;
        expander.show_status(STATUS_FAIL);
        return status;
    }
    expander.show_status(STATUS_SUCCESS);
    sleep_seconds(WAIT_SECONDS);

    expander.show_status(STATUS_PSOC_START);
    status = download_psoc_image(expander);
    if (status != 0) {
        sleep_seconds(WAIT_SECONDS);
        logMessage("Download fw image fail");
        expander.flashState = FLASH_PSOC_FAILED;
        expander.show_status(STATUS_FAIL);
        return status;
    }
    expander.flashState = FLASH_WRITTEN;
    expander.show_status(STATUS_SUCCESS);
    return status;
}

}  // namespace

std::int32_t update(StorcliExpander& expander)
{
    logBegin("update");
    expander.show();
    expander.needDownload = needs_download(expander) ? 1 : 0;
    std::int32_t result = RESULT_UP_TO_DATE;
    if (expander.needDownload == 0)
        expander.show_status(STATUS_UP_TO_DATE);
    else
        result = download_images(expander);
    // The sequence has always closed under another name than it opened with.
    logEnd("flash");
    return result;
}
