#include "arcconf/flash_fw_mchp.h"

#include "diagnostics/log.h"
#include "diagnostics/text.h"
#include "profile/version.h"
#include "run/run_state.h"

#include <algorithm>
#include <iostream>

namespace {

// One byte more than the inquiry fills, so the data always ends in a zero.
constexpr std::size_t INQUIRY_BUFFER_SIZE = 513;
constexpr std::size_t VERSION_OFFSET = 36;
constexpr std::size_t VERSION_LENGTH = 20;

std::size_t text_length(const unsigned char* bytes, std::size_t limit)
{
    return static_cast<std::size_t>(std::find(bytes, bytes + limit, 0) - bytes);
}

// Bytes 36 to 55 read as text up to the first zero byte, trimmed.
std::string inquiry_version(const unsigned char* inquiry)
{
    const unsigned char* version = inquiry + VERSION_OFFSET;
    return trim(
        std::string(reinterpret_cast<const char*>(version), text_length(version, VERSION_LENGTH)));
}

void show_versions(const MCHP_DEVICE& device, const SupportProfile& profile)
{
    std::cout << " Expander Product ID:" << device.model << std::endl;
    std::cout << " Installed FW Vesion:" << device.installedVersion << std::endl;
    std::cout << " Target FW Version  :" << profile.targetVersion << std::endl;
}

bool needs_download(const MCHP_DEVICE& device, const SupportProfile& profile)
{
    return Options.force || compare_version(device.installedVersion, profile.targetVersion) < 0;
}

// The PSoC image follows the main image after the wait of -s.
std::int32_t download_psoc_image(MCHP_DEVICE& device, const SupportProfile& profile)
{
    sleep_seconds(WAIT_SECONDS);
    std::cout << " Start to download psoc firmware image..." << std::endl;
    if (device.scsi_write_buffer(profile.psocImage, profile.mode, profile.bufferID) != 0) {
        std::cout << " PSOC image download Fail." << std::endl;
        return MCHP_FLASH_PSOC_FAILED;
    }
    std::cout << " PSOC image download success." << std::endl;
    return MCHP_FLASH_WRITTEN;
}

// The images' own statuses stay here; only the result codes leave.
std::int32_t download_images(MCHP_DEVICE& device, const SupportProfile& profile)
{
    std::cout << " Start to download expander firmware image..." << std::endl;
    if (device.download_fw(profile.fwImage, "expander", profile.mode) != 0) {
        std::cout << " Firmware image download Fail." << std::endl;
        return MCHP_FLASH_MAIN_FAILED;
    }
    std::cout << " Firmware image download success." << std::endl;
    const std::int32_t result =
        PSOC_UPDATE_FLAG ? download_psoc_image(device, profile) : MCHP_FLASH_WRITTEN;
    if (result == MCHP_FLASH_WRITTEN)
        std::cout << " Power cycle system is required to activate downloaded FW." << std::endl;
    return result;
}

// Shows the versions and downloads what the decision asks for.
std::int32_t update_device(MCHP_DEVICE& device, const SupportProfile& profile)
{
    show_versions(device, profile);
    if (needs_download(device, profile))
        return download_images(device, profile);
    std::cout << " FW version is up-to-date." << std::endl;
    return MCHP_FLASH_UP_TO_DATE;
}

}  // namespace

std::int32_t flash_fw_mchp(MCHP_DEVICE* device, const SupportProfile* profile)
{
    logBegin("flash_fw_mchp");
    unsigned char inquiry[INQUIRY_BUFFER_SIZE] = {};
    std::string installed = device->firmware;
    std::int32_t result = device->scsi_inquery(inquiry);
    if (result != 0) {
        logMessage("Fail to get inquery data");
    } else {
        logValue("inq data length",
                 static_cast<std::uint64_t>(text_length(inquiry, INQUIRY_BUFFER_SIZE)));
        // fwLocation only says where the version is; it is no offset.
        if (profile->fwLocation != 0) {
            installed = inquiry_version(inquiry);
            logValue("installed version:", installed);
        }
        device->installedVersion = installed;
        result = update_device(*device, *profile);
    }
    logEnd("flash_fw_mchp");
    return result;
}
