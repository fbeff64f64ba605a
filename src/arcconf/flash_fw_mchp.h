// One arcconf expander's way through the inquiry, the version decision and
// the main and PSoC images.
#pragma once

#include "arcconf/MCHP_DEVICE.h"
#include "profile/SupportProfile.h"

#include <cstdint>

// Up to date; nothing was downloaded.
constexpr std::int32_t MCHP_FLASH_UP_TO_DATE = 0;
// The main image failed.
constexpr std::int32_t MCHP_FLASH_MAIN_FAILED = 1;
// The main image was written, the PSoC image failed.
constexpr std::int32_t MCHP_FLASH_PSOC_FAILED = 3;
// The main image, and the PSoC image under --psoc, were written.
constexpr std::int32_t MCHP_FLASH_WRITTEN = 4;

// Reads the installed version (from the inquiry data when the profile's
// fwLocation is not 0, else the report's firmware), shows the versions and
// downloads when it is below the target or -f is given. Gives one of the
// results above, or the inquiry's own non-zero status.
std::int32_t flash_fw_mchp(MCHP_DEVICE* device, const SupportProfile* profile);
