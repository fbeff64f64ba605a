// The storcli64.exe command that writes one firmware image into one expander.
#pragma once

#include "storcli/StorcliExpander.h"

#include <cstdint>
#include <string>

// The whole command, without redirection; runs nothing. `psoc_image` 0
// selects the main image, anything else the PSoC image; `retry_form`, for
// the PSoC image only, asks for the second spelling of its mode.
std::string build_download_command(const StorcliExpander& expander, std::int32_t psoc_image,
                                   std::int32_t retry_form);
