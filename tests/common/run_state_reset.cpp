#include "run_state_reset.h"

#include "arcconf/ARCCONF_UTL.h"
#include "diagnostics/log.h"
#include "run/run_state.h"

#include <vector>

namespace {

template <typename Record> void free_all(std::vector<Record*>& records)
{
    for (Record* record : records)
        delete record;
    records.clear();
}

}  // namespace

void reset_run_state()
{
    logAlsoTo("");
    Options = ProgramOptions{};
    ADAPTER_COUNT = 0;
    WAIT_SECONDS = 0;
    PSOC_UPDATE_FLAG = false;
    FORCE_ACTIVATE_FLAG = false;
    // Expanders point into Profiles: they go first.
    free_all(Expanders);
    free_all(Adapters);
    Profiles.clear();
    free_all(ARCCONF_UTL::expanders);
    free_all(ARCCONF_UTL::adapters);
    ARCCONF_UTL::test_mode = false;
}
