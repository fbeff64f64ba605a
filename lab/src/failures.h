// Failures that the scenario injects into chosen commands.
#pragma once

#include <string>
#include <vector>

#include "lab.h"

namespace lab {

// The first rule that matches this call, or null. A once-only rule is
// spent by firing and is skipped from then on.
const FailureRule* fire_failure(Lab& lab, Tool tool, const std::vector<std::string>& args);

}  // namespace lab
