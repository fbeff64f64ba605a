// The storcli controller count report, read under -T; an odd-sized input
// also traces on the console as under -d.
#include "support.h"

#include "storcli/adapter_count.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::enter_scratch("ctrlcount");
    fuzz::write_input("ctrlcount.rst", data, size);
    getAdapterCount(true, static_cast<std::int32_t>(size % 2));
    fuzz::reset_run_state();
    return 0;
}
