#include "arcconf/ARCCONF_UTL.h"
#include "arcconf/MCHP_DEVICE.h"

#include "diagnostics/log.h"

std::int32_t MCHP_DEVICE::download_fw(std::string image, std::string target, std::string mode)
{
    logBegin("MCHP_DEVICE::download_fw");
    // The enclosure is addressed by connector, channel and device, in that order.
    const std::string command = ARCCONF_TOOL + " expanderupgrade " + adapter->adapterIndex +
                                " enclosure " + connectorId + " " + channel + " " + deviceIndex +
                                (target == "expander" ? " expander " : " cpld ") + image + " " +
                                mode + " noprompt";
    const std::int32_t result = ARCCONF_UTL::exec_cmd(command, output_file("expanderupgrade_"));
    logEnd("MCHP_DEVICE::download_fw");
    return result;
}
