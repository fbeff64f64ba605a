#include "run/run_state.h"

ProgramOptions Options;

std::uint32_t ADAPTER_COUNT = 0;
std::uint32_t WAIT_SECONDS = 0;
bool PSOC_UPDATE_FLAG = false;
bool FORCE_ACTIVATE_FLAG = false;

const std::string PROGRAM_VERSION = "2.3";
const std::string PROGRAM_DATE = "April 6th, 2022";
const std::string FW_DOWNLOAD_LOG = "fw_download_log";
const std::string PSOC_DOWNLOAD_LOG = "psoc_download_log";
const std::string PSOC_SWITCH = "--psoc";
const std::string FORCE_ACTIVATE_SWITCH = "--FA";

std::vector<SupportProfile> Profiles;
std::vector<StorcliAdapter*> Adapters;
std::vector<StorcliExpander*> Expanders;
