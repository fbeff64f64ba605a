// Standard output without line-end translation, so that reports keep the
// line ends the scenario chose on every platform.
#pragma once

namespace lab {

void set_stdout_binary();

}  // namespace lab
