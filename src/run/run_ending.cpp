#include "run/run_ending.h"

#include <iostream>

RunEnding show_ending(const UpdateTally& tally)
{
    if (tally.needed == 0) {
        std::cout << "All expanders' firmware are up-to-date." << std::endl;
        return RunEnding::up_to_date;
    }
    if (tally.failed == 0) {
        std::cout << "All expander(s) firmware download success." << std::endl;
        std::cout << "System power cycle is required to activate the download firmware images"
                  << std::endl;
        return RunEnding::all_written;
    }
    std::cout << tally.failed << " expander(s) firmware download fail." << std::endl;
    if (tally.succeeded > 0)
        std::cout << tally.succeeded << " expander(s) firmware download success." << std::endl;
    return RunEnding::some_failed;
}
