// The arcconf controller listing.
#include "support.h"

#include "arcconf/ARCCONF_UTL.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::enter_scratch("arcconf_list");
    fuzz::write_input("arrconf_list.log", data, size);
    std::uint32_t count = 0;
    ARCCONF_UTL::parse_list("arrconf_list.log", count);
    // A negative count lists nothing rather than billions.
    fuzz::check(count <= static_cast<std::uint32_t>(INT32_MAX));
    fuzz::reset_run_state();
    return 0;
}
