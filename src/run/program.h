// The order of a run, from the banner to the exit code.
#pragma once

#include <cstdint>

// The whole run; its result is the process exit code.
std::int32_t run_program(int argc, char* argv[]);

// Frees everything discovered: expanders before controllers, in both families.
void cleanup();
