#include "diagnostics/tool_runner.h"

#include "diagnostics/log.h"
#include "platform/platform.h"
#include "run/run_state.h"

#include <iostream>

std::int32_t run_tool_line(const std::string& line, bool held_back)
{
    if (held_back)
        return 0;
    // Whatever the tool writes to the console must follow what we wrote.
    std::cout.flush();
    return platform::run_shell(line);
}

std::int32_t exec_command(std::string command, std::string output_file)
{
    logBegin("exec_command");
    const std::string line = command + " >" + output_file + " 2>&1";
    logValue("Exec Command", line);
    const std::int32_t status = run_tool_line(line, Options.test);
    logValue("Exec result", status);
    logEnd("exec_command");
    return status;
}
