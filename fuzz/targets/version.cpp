// The version comparison: the installed version up to the first zero byte,
// the target behind it. The ordering must be antisymmetric and reflexive.
#include "support.h"

#include "profile/version.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::enter_scratch("version");
    const std::string installed = fuzz::head(data, size);
    const std::string target = fuzz::tail(data, size);
    const std::int32_t result = compare_version(installed, target);
    fuzz::check(result >= -1 && result <= 1);
    fuzz::check(compare_version(target, installed) == -result);
    fuzz::check(compare_version(installed, installed) == 0);
    fuzz::reset_run_state();
    return 0;
}
