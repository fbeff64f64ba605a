// Where a composed command becomes a process. Each tool family has its own
// runner (exec_command here, ARCCONF_UTL::exec_cmd beside its family); both
// add a redirection of the tool's output into a file, log the line, and hand
// back the command's exit status.
#pragma once

#include <cstdint>
#include <string>

// Runs "command >output_file 2>&1" for the storcli family; held back by -T,
// when it runs nothing and gives 0.
std::int32_t exec_command(std::string command, std::string output_file);

// The shell call that both runners share: 0 without a process when held back.
std::int32_t run_tool_line(const std::string& line, bool held_back);
