// The storcli controller report and the classification that follows it.
#include "support.h"

#include "storcli/StorcliAdapter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::enter_scratch("controller_report");
    fuzz::write_input("show_0_log", data, size);
    StorcliAdapter adapter;
    adapter.adapterIndex = "0";
    fuzz::check(parse_adapter_info("show_0_log", adapter) == 0);
    get_adapter_type(adapter);
    fuzz::check(adapter.adapterType == ADAPTER_TYPE_HBA ||
                adapter.adapterType == ADAPTER_TYPE_RAID);
    fuzz::reset_run_state();
    return 0;
}
