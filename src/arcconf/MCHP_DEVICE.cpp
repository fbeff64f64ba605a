#include "arcconf/MCHP_DEVICE.h"

#include "diagnostics/log.h"

MCHP_DEVICE::MCHP_DEVICE(std::string channel, std::string deviceIndex, std::string deviceType)
    : channel(std::move(channel)), deviceIndex(std::move(deviceIndex)), deviceType(std::move(deviceType))
{
    logBegin("MCHP_DEVICE::MCHP_DEVICE");
    logValue("Device Channel", this->channel);
    logValue("Device index", this->deviceIndex);
    logEnd("MCHP_DEVICE::MCHP_DEVICE");
}

MCHP_DEVICE::~MCHP_DEVICE()
{
    logMessage("destruct device");
}
