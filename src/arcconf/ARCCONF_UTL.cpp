#include "arcconf/ARCCONF_UTL.h"

#include "diagnostics/log.h"
#include "diagnostics/tool_runner.h"

std::vector<MCHP_ADAPTER*> ARCCONF_UTL::adapters;
std::vector<MCHP_DEVICE*> ARCCONF_UTL::expanders;
bool ARCCONF_UTL::test_mode = false;

std::int32_t ARCCONF_UTL::exec_cmd(std::string command, std::string output_file)
{
    const std::string line = command + " > " + output_file + " 2>&1";
    logValue("Command:", line);
    const std::int32_t status = run_tool_line(line, test_mode);
    logValue("Result:", static_cast<std::uint32_t>(status));
    return status;
}

void ARCCONF_UTL::clear()
{
    logBegin("ARCCONF_UTL::clear");
    for (MCHP_DEVICE* device : expanders)
        delete device;
    for (MCHP_ADAPTER* adapter : adapters)
        delete adapter;
    logEnd("ARCCONF_UTL::clear");
}
