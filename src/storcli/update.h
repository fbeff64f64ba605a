// One expander's way through the version decision and the downloads.
#pragma once

#include "storcli/StorcliExpander.h"

#include <cstdint>

// Shows the expander, decides by version and -f, writes the main image and
// then the PSoC image (retried once in its second form), and leaves
// needDownload and flashState behind. Gives 163 when up to date, 0 when
// both images were written, otherwise the failing command's status.
std::int32_t update(StorcliExpander& expander);
