// What happened to the expanders a family's run loop worked on, and the
// closing lines that sum it up on the console. Both families end alike;
// each decides its own result from the ending.
#pragma once

#include <cstdint>

struct UpdateTally {
    std::int32_t needed = 0;  // a download was tried
    std::int32_t failed = 0;
    std::int32_t succeeded = 0;  // written completely
};

enum class RunEnding { up_to_date, all_written, some_failed };

// Prints the ending's lines and says which it was.
RunEnding show_ending(const UpdateTally& tally);
