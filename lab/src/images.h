// Finding the firmware image file that a download command names.
#pragma once

#include <cstdint>
#include <string>

#include "scenario.h"

namespace lab {

struct ImageLookup {
    const Image* image = nullptr;  // set when the file can be used
    std::uintmax_t size = 0;
    std::string problem;  // why not, in the tool's words
};

// The file is looked for relative to the working directory, as the tools
// do; it must exist and be one of the scenario's images.
ImageLookup find_image(const Scenario& scenario, const std::string& cwd,
                       const std::string& argument);

}  // namespace lab
