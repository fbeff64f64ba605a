// One call of a stand-in, from its arguments to its output and exit status.
#pragma once

#include <string>
#include <vector>

#include "scenario.h"

namespace lab {

struct ToolRun {
    int status = 0;
    std::string output;  // exact bytes, line ends included
};

// Records the call, fires any injected failure, answers the command and
// keeps the state. Throws LabError when the scenario or state is faulty.
ToolRun run_tool(Tool tool, const std::string& scenario, const std::string& cwd,
                 const std::vector<std::string>& args);

// The stand-in's process: scenario from the environment, output to stdout
// byte for byte, lab faults on stderr with status 2.
int tool_main(Tool tool, int argc, char** argv);

}  // namespace lab
