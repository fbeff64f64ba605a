// The arcconf physical device report of controller 1.
#include "support.h"

#include "arcconf/ARCCONF_UTL.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::enter_scratch("device_report");
    fuzz::write_input("getconfigpd_1", data, size);
    MCHP_ADAPTER adapter(1);
    ARCCONF_UTL::parse_getconfig_pd(&adapter, "getconfigpd_1");
    for (const MCHP_DEVICE* device : ARCCONF_UTL::expanders) {
        // Channel and device are the one character behind their keys.
        fuzz::check(device->channel.size() <= 1 && device->deviceIndex.size() <= 1);
        fuzz::check(device->adapter == &adapter);
    }
    fuzz::reset_run_state();
    return 0;
}
