// The command line: switches into ProgramOptions and a few run-state globals,
// and the two texts the program prints about itself.
#pragma once

#include <cstdint>
#include <string>

struct ProgramOptions {
    std::int32_t verbose = 0;  // -V: each raw profile line goes to the log
    std::int32_t debug = 0;    // -d: the controller count traces on the console
    bool test = false;         // -T: no tool runs; the output files there are read
    bool force = false;        // -f: download whatever the versions compare to
    std::string profile_file;  // -p
    std::string log_file;      // -l: every log line of the run is also appended here
};

// Fills `options` and the globals WAIT_SECONDS, PSOC_UPDATE_FLAG and
// FORCE_ACTIVATE_FLAG. Gives 0 when the run may go on, 1 for no arguments
// at all or a "-l" or "-p" without its value. Prints nothing.
std::int32_t parseArgs(int argc, char* argv[], ProgramOptions& options);

void show_banner();
void show_usage();

// The largest -s whose milliseconds fit the 32-bit platform wait (about 49
// days). A larger or a negative value asks for no wait at all.
constexpr std::int32_t MAX_WAIT_SECONDS = 4294967;
