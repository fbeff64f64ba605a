#include "arcconf/MCHP_DEVICE.h"

#include "diagnostics/log.h"

MCHP_DEVICE::MCHP_DEVICE(std::string channel, std::string deviceIndex, std::string deviceType)
    : channel(std::move(channel)), deviceIndex(std::move(deviceIndex)),
      deviceType(std::move(deviceType))
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

std::string MCHP_DEVICE::output_file(const std::string& stem) const
{
    return stem + adapter->adapterIndex + "_" + channel + "_" + deviceIndex;
}
