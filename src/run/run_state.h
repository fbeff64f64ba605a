// The global run state: the options, the switches' globals, the program's
// constant texts, and the lists that own everything discovered.
#pragma once

#include "profile/SupportProfile.h"
#include "run/command_line.h"
#include "storcli/StorcliAdapter.h"
#include "storcli/StorcliExpander.h"

#include <cstdint>
#include <string>
#include <vector>

extern ProgramOptions Options;

extern std::uint32_t ADAPTER_COUNT;
extern std::uint32_t WAIT_SECONDS;  // -s
extern bool PSOC_UPDATE_FLAG;       // --psoc
extern bool FORCE_ACTIVATE_FLAG;    // --FA

extern const std::string PROGRAM_VERSION;
extern const std::string PROGRAM_DATE;
extern const std::string FW_DOWNLOAD_LOG;
extern const std::string PSOC_DOWNLOAD_LOG;
extern const std::string PSOC_SWITCH;
extern const std::string FORCE_ACTIVATE_SWITCH;

// Rows by value, in file order; only grows.
extern std::vector<SupportProfile> Profiles;
// Owned by the lists; freed by cleanup().
extern std::vector<StorcliAdapter*> Adapters;
extern std::vector<StorcliExpander*> Expanders;
