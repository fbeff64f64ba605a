// The storcli64.exe stand-in: the commands it understands and what they do.
#pragma once

#include <string>
#include <vector>

#include "lab.h"
#include "reply.h"

namespace lab {

Reply storcli_answer(Lab& lab, const std::string& cwd, const std::vector<std::string>& args);

// The tool's failure report for a command that failed with this status.
Reply storcli_injected_failure(const std::vector<std::string>& args, int status,
                               const std::string& description);

}  // namespace lab
