// The profile reader, tracing each raw line as under -V.
#include "support.h"

#include "profile/SupportProfile.h"
#include "run/exit_codes.h"
#include "run/run_state.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::enter_scratch("profile");
    fuzz::write_input("profile.txt", data, size);
    Options.verbose = 1;
    const std::int32_t result = read_profiles("profile.txt");
    fuzz::check(result == RESULT_OK || result == RESULT_PROFILE_SHORT_LINE ||
                result == RESULT_PROFILE_EMPTY);
    fuzz::check((result == RESULT_PROFILE_EMPTY) == Profiles.empty());
    fuzz::reset_run_state();
    return 0;
}
