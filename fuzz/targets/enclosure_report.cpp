// The storcli enclosure report matched against a profile: the input up to
// the first zero byte gives the profile's product ids, one per line (an
// empty line is an empty id, as a profile row starting with a comma gives);
// the rest is the report.
#include "support.h"

#include "run/run_state.h"
#include "storcli/StorcliExpander.h"

#include <sstream>

namespace {

void fill_profiles(const std::string& product_ids)
{
    std::istringstream lines(product_ids);
    std::string id;
    while (std::getline(lines, id)) {
        SupportProfile row;
        row.productId = id;
        row.targetVersion = "1.0";
        Profiles.push_back(row);
    }
}

bool points_into_profiles(const SupportProfile* row)
{
    return !Profiles.empty() && row >= &Profiles.front() && row <= &Profiles.back();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::enter_scratch("enclosure_report");
    fill_profiles(fuzz::head(data, size));
    const std::string report = fuzz::tail(data, size);
    fuzz::write_input("show_eall_0_log", reinterpret_cast<const std::uint8_t*>(report.data()),
                      report.size());
    StorcliAdapter adapter;
    adapter.adapterIndex = "0";
    fuzz::check(parse_eall_output("show_eall_0_log", &adapter) == 0);
    for (const StorcliExpander* expander : Expanders) {
        fuzz::check(points_into_profiles(expander->profile));
        fuzz::check(expander->adapter == &adapter);
    }
    fuzz::reset_run_state();
    return 0;
}
